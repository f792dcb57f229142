#include <QMdiSubWindow>
#include <QToolBar>

#include "shell/windows/MdiLayout.h"
#include "shell/windows/Shell.h"
#include "toolchain/frmCompiler.h"

namespace shell {

std::map<std::string, frmMain::Command> Shell::MainCommands() {
    std::map<std::string, frmMain::Command> commands;
    commands["mnuNewText"] = [this](int) { OpenDocument(); };
    commands["mnuFileOpen"] = [this](int) { FileOpen(app_); };
    commands["mnuClose"] = [this](int) { CloseActiveChild(); };
    commands["mnuFilePrintSetup"] = [this](int) { app_.Host.Boxes.SetUpPrinter(); };
    commands["mnuFilePrint"] = [](int) {};  // for its enabled state only: documents print from their own menu
    commands["mnuFileMru"] = [this](int index) {
        OpenDocument(app_.State.RecentFiles.at(static_cast<std::size_t>(index)));
    };
    commands["mnuFileExit"] = [this](int) {
        SaveSettings();
        main_->close();
    };
    commands["mnuViewToolbar"] = [this](int) {
        const bool on = !main_->Menus().Entry("mnuViewToolbar").isChecked();
        main_->Menus().Entry("mnuViewToolbar").setChecked(on);
        ToggleToolbar(on);
    };
    commands["mnuViewStatusBar"] = [this](int) {
        const bool on = !main_->Menus().Entry("mnuViewStatusBar").isChecked();
        main_->Menus().Entry("mnuViewStatusBar").setChecked(on);
        ToggleStatusBar(on);
    };
    const struct {
        const char* Entry;
        MdiArrangement Code;
    } arrangements[] = {{"mnuWindowCascade", MdiArrangement::Cascade},
                        {"mnuWindowTileHorizontal", MdiArrangement::TileHorizontal},
                        {"mnuWindowTileVertical", MdiArrangement::TileVertical},
                        {"mnuWindowArrangeIcons", MdiArrangement::ArrangeIcons}};
    for (const auto& row : arrangements) {
        commands[row.Entry] = [this, code = row.Code](int) { Arrange(main_->Area(), code); };
    }
    commands["mnuCompiler"] = [this](int) {
        toolchain::frmCompiler(app_, compilerOptions_, main_.get()).exec();
    };
    commands["mnuProjectOpen"] = [this](int) { ProjectOpen(); };
    commands["mnuWindowAuto"] = [this](int) { ArrangeWindows(); };
    return commands;
}

void Shell::ProjectOpen() {
    CloseProject();
    shell::ProjectOpen(app_);
}

void Shell::CloseActiveChild() {
    if (auto* document = main_->ActiveDocument()) document->Unload();
}

}  // namespace shell
