#pragma once

#include <memory>
#include <optional>

#include "editor/frmDocument.h"
#include "session/App.h"
#include "shell/CompanionTools.h"
#include "shell/Settings.h"
#include "shell/StartUp.h"
#include "shell/ToolbarModel.h"
#include "shell/frmMain.h"
#include "shell/modMain.h"
#include "toolchain/Compiler.h"
#include "toolchain/CompilerOptions.h"
#include "toolchain/ErrorCodes.h"

namespace toolchain {
class frmMessage;
}

namespace shell {

class frmSplash;
class RecoveryKeeper;
class ToolbarView;

// The hall in the flesh: knows every room's windows and carries the calls between them.
class Shell : public session::Commands, public DocumentFactory, public StartUpWindows {
  public:
    // `stateFolder`: a logic path with final backslash, for what outlives a crash.
    Shell(session::Session& state, platform::Host& host, std::string stateFolder);
    ~Shell() override;

    // The program's entry. False if it has to end at once.
    bool Start();

    frmMain& MainWindow() { return *main_; }
    session::App& TheApp() { return app_; }
    toolchain::frmMessage& Messages() { return *messages_; }
    void TickToolbar();  // TBMenuTimer's work

    // session::Commands
    void SetTBMenu(session::Document& document) override;
    void ArrangeWindows() override;
    void SaveSettings() override;
    void UpdateMruMenus() override;
    void SetPanel(int panel, const std::string& text) override { main_->SetPanel(panel, text); }
    std::string Panel(int panel) const override { return main_->Panel(panel); }
    session::Document* ActiveDocument() override { return main_->ActiveDocument(); }
    void ToggleToolbar() override;
    void ToggleStatusBar() override;
    void MainCommand(const std::string& name) override { main_->RunCommand(name); }
    bool HasMainCommand(const std::string& name) const override { return main_->HasCommand(name); }
    void ExitProgram() override { main_->close(); }
    void ShowHelpTopic(const std::string& topic) override;
    void RunUtility(const std::string& caption) override { shell::RunUtility(app_, caption); }
    void LaunchTool(const std::string& tool, const std::string& file) override {
        shell::LaunchTool(app_, tool, file);
    }
    void OpenDocument() override { shell::OpenDocument(app_, *this, std::nullopt); }
    void OpenDocument(const std::string& path) override { shell::OpenDocument(app_, *this, path); }
    void HighlightSyntax(session::Document& document) override;
    void HighlightWord(session::Document& document) override;
    void RunDepCompile(session::Document& document) override { compiler_->RunDepCompile(document); }
    void RunIndepCompile(session::Document& document) override { compiler_->RunIndepCompile(document); }
    void RunDepSimulate(session::Document& document) override { compiler_->RunDepSimulate(document); }
    void RunIndepSimulate(session::Document& document) override { compiler_->RunIndepSimulate(document); }
    void RunVhdlCompile() override { compiler_->RunVhdlCompile(); }
    void RunVhdlAnalysis() override { compiler_->RunVhdlAnalysis(); }
    std::int16_t RunAndWait(const std::string& line) override {
        return toolchain::RunAndWait(app_.Host, line);
    }
    void BringMessagesToFront() override;
    void CloseProject() override {}
    void UpdateTreeView() override {}

    // DocumentFactory
    session::Document& Create() override;
    void Registered(session::Document& document) override;

    // StartUpWindows
    void ShowSplash() override;
    void LoadMain() override;
    void UnloadSplash() override;
    void ShowMain() override;

  private:
    std::map<std::string, frmMain::Command> MainCommands();
    void AddFileCommands(std::map<std::string, frmMain::Command>& commands);
    void AddWindowCommands(std::map<std::string, frmMain::Command>& commands);
    void FlipCheck(const std::string& entry);
    void LoadMainSettings();
    void LoadMessages();
    void PlaceChildren();  // as the program starts with them
    toolchain::frmMessage& ShownMessages();
    session::Placement MainPlacement() const;  // as the settings keep it
    session::Placement MessagePlacement() const;
    void MoveMessages(session::Placement place);
    QMdiSubWindow& MessageWindow() const;
    ToolbarState WithoutMissingCommands() const;
    bool HasHelpFiles() const;  // of the chip maker
    void ShowRecentFiles();
    void CopyRecentFiles(session::Document& document);
    void CloseActiveChild();
    void ProjectOpen();
    void LoadToolbar();
    void ClickToolbar(const std::string& key);
    void ClickChildCommand(const std::string& command);
    void RunTool(const std::string& tip);
    bool QueryUnloadAll();
    editor::frmDocument* DocumentBeside(const std::vector<editor::frmDocument*>& those) const;
    void Unload();
    void SaveConfig();

    session::App app_;
    toolchain::ErrorCodes errors_;
    std::unique_ptr<frmSplash> splash_;
    std::unique_ptr<frmMain> main_;
    toolchain::frmMessage* messages_ = nullptr;        // owned by its window in the MDI area
    std::optional<session::Placement> messagesPlace_;  // for when that is a normal window again
    std::unique_ptr<toolchain::RunWindows> runWindows_;
    std::unique_ptr<toolchain::Compiler> compiler_;
    std::string stateFolder_;
    std::unique_ptr<RecoveryKeeper> recovery_;
    toolchain::CompilerOptions compilerOptions_;  // outlives its window
    ToolbarState toolbar_;
    ToolbarView* toolbarView_ = nullptr;  // owned by the toolbar
    std::unique_ptr<platform::Timer> TBMenuTimer;
    bool configFailed_ = false;
};

}  // namespace shell
