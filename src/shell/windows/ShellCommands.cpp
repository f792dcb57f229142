#include <QMdiSubWindow>
#include <QStatusBar>
#include <QToolBar>

#include "shell/CompanionTools.h"
#include "shell/Imports.h"
#include "shell/frmAbout.h"
#include "shell/windows/MdiLayout.h"
#include "shell/windows/Shell.h"

namespace shell {

using session::Document;

void Shell::AddCommands() {
    hall_.MainCommands.Add({
        {"mnuClose",
         [this](int) {
             platform::qt::MdiChild* child = main_->ActiveChild();
             if (child != nullptr && child->CanClose()) child->Frame().close();
         }},
        {"mnuFilePrint", [](int) {}},  // for its enabled state only: documents print from their own menu
        {"mnuFileExit", [this](int) { Exit(); }},
        {"mnuHelpAbout", [this](int) { platform::qt::Modal(new frmAbout(app_.Host, main_.get())).Run(); }},
        {"mnuHelpOvrelList", [this](int index) { OpenHelpFile(index); }},
        {"mnuViewToolbar",
         [this](int) {
             FlipBar("mnuViewToolbar");
             ToggleBar(main_->ToolBar());
         }},
        {"mnuViewStatusBar",
         [this](int) {
             FlipBar("mnuViewStatusBar");
             ToggleBar(*main_->statusBar());
         }},
    });
    hall_.MainCommands.Add(ImportCommands(app_));
    hall_.DocumentCommands.Add({
        {"mnuFileExit", [this](Document&, int) { Exit(); }},
        {"mnuViewToolbar", [this](Document&, int) { ToggleBar(main_->ToolBar()); }},
        {"mnuViewStatusBar", [this](Document&, int) { ToggleBar(*main_->statusBar()); }},
        {"mnuAllTeskTools", [this](Document&, int) { TileAllTeskTools(); }},
        {"mnuUtilTool",
         [this](Document& document, int index) {
             RunUtility(app_, document, document.Tools.Places.at(static_cast<std::size_t>(index)).Caption);
         }},
    });
}

void Shell::AddWindowCommands() {
    const struct {
        const char* Entry;
        MdiArrangement Code;
    } arrangements[] = {{"mnuWindowCascade", MdiArrangement::Cascade},
                        {"mnuWindowTileHorizontal", MdiArrangement::TileHorizontal},
                        {"mnuWindowTileVertical", MdiArrangement::TileVertical},
                        {"mnuWindowArrangeIcons", MdiArrangement::ArrangeIcons}};
    for (const auto& row : arrangements) {
        hall_.MainCommands.Add({{row.Entry, [this, code = row.Code](int) {
                                     main_->ForgetPlaces();
                                     Arrange(main_->Area(), code);
                                 }}});
    }
    hall_.MainCommands.Add({{"mnuWindowAuto", [this](int) { ArrangeWindows(); }}});
}

void Shell::Exit() {
    SaveSettings();
    main_->close();
}

// Kept: both texts behind the file are the digit zero.
void Shell::OpenHelpFile(int index) {
    const std::string name =
        main_->Menus().Text(platform::qt::MenuSet::ElementName("mnuHelpOvrelList", index));
    app_.Host.Programs.ShellExecute("open", app_.State.OvrelHelpDir + name, "0", "0");
}

void Shell::FlipBar(const std::string& entry) {
    QAction& action = main_->Menus().Entry(entry);
    action.setChecked(!action.isChecked());
}

void Shell::ToggleBar(QWidget& bar) { bar.setVisible(bar.isHidden()); }

}  // namespace shell
