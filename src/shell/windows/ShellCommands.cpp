#include <QMdiSubWindow>
#include <QToolBar>

#include "shell/windows/MdiLayout.h"
#include "shell/windows/Shell.h"
#include "toolchain/frmCompiler.h"

namespace shell {

std::map<std::string, frmMain::Command> Shell::MainCommands() {
    std::map<std::string, frmMain::Command> commands;
    AddFileCommands(commands);
    AddWindowCommands(commands);
    commands["mnuViewToolbar"] = [this](int) {
        FlipCheck("mnuViewToolbar");
        ToggleToolbar();
    };
    commands["mnuViewStatusBar"] = [this](int) {
        FlipCheck("mnuViewStatusBar");
        ToggleStatusBar();
    };
    commands["mnuCompiler"] = [this](int) {
        toolchain::frmCompiler(app_, compilerOptions_, main_.get()).exec();
    };
    return commands;
}

void Shell::AddFileCommands(std::map<std::string, frmMain::Command>& commands) {
    commands["mnuNewText"] = [this](int) { OpenDocument(); };
    commands["mnuFileOpen"] = [this](int) { FileOpen(app_); };
    commands["mnuClose"] = [this](int) { CloseActiveChild(); };
    commands["mnuProjectOpen"] = [this](int) { ProjectOpen(); };
    commands["mnuFilePrintSetup"] = [this](int) { app_.Host.Boxes.SetUpPrinter(); };
    commands["mnuFilePrint"] = [](int) {};  // for its enabled state only: documents print from their own menu
    commands["mnuFileMru"] = [this](int index) {
        OpenDocument(app_.State.RecentFiles.at(static_cast<std::size_t>(index)));
    };
    commands["mnuFileExit"] = [this](int) {
        SaveSettings();
        main_->close();
    };
}

void Shell::AddWindowCommands(std::map<std::string, frmMain::Command>& commands) {
    const struct {
        const char* Entry;
        MdiArrangement Code;
    } arrangements[] = {{"mnuWindowCascade", MdiArrangement::Cascade},
                        {"mnuWindowTileHorizontal", MdiArrangement::TileHorizontal},
                        {"mnuWindowTileVertical", MdiArrangement::TileVertical},
                        {"mnuWindowArrangeIcons", MdiArrangement::ArrangeIcons}};
    for (const auto& row : arrangements) {
        commands[row.Entry] = [this, code = row.Code](int) {
            if (!MessageWindow().isMinimized()) messagesPlace_.reset();  // it gets another now
            Arrange(main_->Area(), code);
        };
    }
    commands["mnuWindowAuto"] = [this](int) { ArrangeWindows(); };
}

void Shell::FlipCheck(const std::string& entry) {
    QAction& action = main_->Menus().Entry(entry);
    action.setChecked(!action.isChecked());
}

void Shell::ProjectOpen() {
    CloseProject();
    shell::ProjectOpen(app_);
}

void Shell::CloseActiveChild() {
    if (auto* document = main_->ActiveDocument()) document->Unload();
}

}  // namespace shell
