#pragma once

#include <memory>
#include <optional>

#include "aids/AidsRoom.h"
#include "devices/DevicesRoom.h"
#include "editor/EditorRoom.h"
#include "partitioner/PartitionerRoom.h"
#include "project/ProjectRoom.h"
#include "session/App.h"
#include "shell/StartUp.h"
#include "shell/ToolbarModel.h"
#include "shell/frmMain.h"
#include "shell/modMain.h"
#include "toolchain/ToolChainRoom.h"

namespace shell {

class Help;
class ToolbarView;
class Welcome;
class frmSplash;

// Composes the rooms, and holds what is nobody's but the main window's: toolbar, settings, tools, help.
class Shell : public session::MainWindow, public session::Utilities, public StartUpWindows {
  public:
    // `stateFolder`: a logic path with final backslash, for what outlives a crash.
    Shell(session::Session& state, platform::Host& host, std::string stateFolder);
    ~Shell() override;

    // The program's entry. False if it has to end at once.
    bool Start();

    frmMain& Main() { return *main_; }
    session::App& TheApp() { return app_; }
    void TickToolbar();  // TBMenuTimer's work

    // session::MainWindow
    void SetPanel(int panel, const std::string& text) override { main_->SetPanel(panel, text); }
    std::string Panel(int panel) const override { return main_->Panel(panel); }
    session::Document* ActiveDocument() override;
    void UpdateMruMenus() override;

    // session::Utilities
    void SetTBMenu(session::Document& document) override;
    void LaunchTool(const std::string& tool, const std::string& file) override;

    // StartUpWindows
    void ShowSplash() override;
    void LoadMain() override;
    void UnloadSplash() override;
    void ShowMain() override;

  private:
    void AddCommands();
    void AddWindowCommands();
    void FlipBar(const std::string& entry);
    void ToggleBar(QWidget& bar);
    void ArrangeWindows();
    void SaveSettings();
    void LoadMainSettings();
    void PlaceChildren();  // as the program starts with them
    platform::qt::ChildPlaces PlacesBeside(const session::Placement& messages) const;
    std::optional<platform::qt::ChildPlaces> PlacesOfNew() const;
    session::Placement MainPlacement() const;  // as the settings keep it
    void BuildHelpList();                      // the chip maker's files, in the menu
    void OpenHelpFile(int index);
    void ShowRecentFiles();
    void OpenHandedOver(const std::string& path);
    void Exit();
    void LoadToolbar();
    void LoadWelcome();
    void ApplyTick(const TickEffects& effects, const platform::qt::MenuSet* ofChild);
    ToolbarState WithoutMissingCommands() const;
    void TileAllTeskTools();
    void ClickToolbar(const std::string& key);
    void ClickChildCommand(const std::string& command);
    void RunTool(const std::string& tip);
    void RedefineMacro(const std::string& tip);
    bool QueryUnloadAll();
    void Unload();
    void SaveConfig();

    session::Hall hall_;
    session::App app_;
    std::string stateFolder_;
    editor::EditorRoom editor_;
    toolchain::ToolChainRoom toolChain_;
    project::ProjectRoom project_;
    devices::DevicesRoom devices_;
    aids::AidsRoom aids_;
    partitioner::PartitionerRoom partitioner_;
    std::unique_ptr<Help> help_;
    std::unique_ptr<frmSplash> splash_;
    std::unique_ptr<frmMain> main_;
    ToolbarState toolbar_;
    ToolbarView* toolbarView_ = nullptr;  // owned by the toolbar
    Welcome* welcome_ = nullptr;          // owned by the area of the children
    std::unique_ptr<platform::Timer> TBMenuTimer;
    bool configFailed_ = false;
};

}  // namespace shell
