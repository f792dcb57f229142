#include "shell/windows/Shell.h"

#include <QApplication>
#include <algorithm>
#include <utility>

#include "base/RunTimeError.h"
#include "base/Text.h"
#include "platform/qt/Guard.h"
#include "platform/qt/Twips.h"
#include "shell/CompanionTools.h"
#include "shell/ConfigFile.h"
#include "shell/Settings.h"
#include "shell/frmSplash.h"
#include "shell/windows/Help.h"
#include "shell/windows/Welcome.h"

namespace shell {

using platform::qt::MdiChild;
using platform::qt::MenuSet;
using platform::qt::On;

namespace {

session::Placement ToTwips(const QRect& place) {
    using platform::qt::ToTwips;
    return {ToTwips(place.x()), ToTwips(place.y()), ToTwips(place.width()), ToTwips(place.height())};
}

QRect ToPixels(const session::Placement& place) {
    using platform::qt::ToPixels;
    return {ToPixels(place.Left), ToPixels(place.Top), ToPixels(place.Width), ToPixels(place.Height)};
}

}  // namespace

Shell::Shell(session::Session& state, platform::Host& host, std::string stateFolder)
    : app_{state, host, hall_},
      stateFolder_(std::move(stateFolder)),
      editor_(app_),
      toolChain_(app_, stateFolder_ + "outputs"),
      project_(app_),
      devices_(app_),
      aids_(app_),
      partitioner_(app_) {
    hall_.Main = this;
    hall_.Utilities = this;
    help_ = std::make_unique<Help>(app_);
    help_->AddCommands();
    AddCommands();
    AddWindowCommands();
}

Shell::~Shell() {
    app_.Host.Clip.OnChange = nullptr;
    app_.Host.Desktop.OnOpenFile = nullptr;
    TBMenuTimer.reset();
    editor_.UnloadWindows();
    project_.UnloadWindows();
    toolChain_.UnloadWindows();
    main_.reset();  // the children go with it: they call the hall until then
}

bool Shell::Start() { return shell::Main(app_.State, app_.Host, toolChain_.Errors(), *this); }

void Shell::ShowSplash() {
    InitPictures();
    splash_ = std::make_unique<frmSplash>();
    splash_->ShowAndPaint();
}

void Shell::UnloadSplash() { splash_.reset(); }

void Shell::LoadMain() {
    main_ = std::make_unique<frmMain>(hall_.MainCommands);
    main_->OnQueryUnload = [this] { return QueryUnloadAll(); };
    main_->OnUnload = [this] { Unload(); };
    main_->OnResize = [this] {
        if (app_.State.AutoArrange) ArrangeWindows();
    };
    if (app_.State.UtilityDir.empty()) main_->Menus().Entry("mnuImport").setEnabled(false);
    BuildHelpList();
    LoadMainSettings();
    ShowRecentFiles();
    ReadConfig(app_.State, app_.Host);
    LoadWelcome();
    toolChain_.LoadWindows(*main_);
    main_->OnPlaces = [this] { return PlacesOfNew(); };
    project_.LoadWindows(*main_);
    devices_.LoadWindows(*main_);
    aids_.LoadWindows(*main_);
    partitioner_.LoadWindows(*main_);
    editor_.LoadWindows(*main_);
    LoadToolbar();
}

void Shell::LoadMainSettings() {
    MainWindowState window{.Place = MainPlacement()};
    LoadSettings(app_.State, app_.Host, window);
    main_->SetFrame(ToPixels(window.Place));
}

void Shell::LoadWelcome() {
    welcome_ = new Welcome(main_->Area(),
                           {{"OpenExample", "Open an example", "F9 compiles it, F7 simulates it"},
                            {"mnuNewDesign", "New design", "asks for its header and its pins"},
                            {"mnuHelpContents", "Read the guide", "F1 in a dialog opens its page"}},
                           [this](const std::string& command) { main_->RunCommand(command); });
}

void Shell::ShowMain() {
    On(main_.get(), &frmMain::Framed, main_.get(), [this] { PlaceChildren(); });
    main_->show();
    PlaceChildren();
    editor_.StartRecovery(stateFolder_ + "recovery\\");
    app_.Host.Desktop.OnOpenFile = [this](const std::string& path) { OpenHandedOver(path); };
}

void Shell::OpenHandedOver(const std::string& path) {
    for (session::Document* document : app_.State.Documents.All())
        if (base::EqualNoCase(document->FileName(), path)) return document->BringToFront();
    hall_.Editor->OpenDocument(path);
}

void Shell::PlaceChildren() {
    main_->ArrangeChildren({.Messages = ToPixels(FirstMessageListPlacement(main_->Measures()))});
    if (app_.State.AutoArrange) ArrangeWindows();
}

session::Document* Shell::ActiveDocument() { return dynamic_cast<session::Document*>(main_->ActiveChild()); }

session::Placement Shell::MainPlacement() const { return ToTwips(main_->Frame()); }

platform::qt::ChildPlaces Shell::PlacesBeside(const session::Placement& messages) const {
    return {.Messages = ToPixels(messages),
            .Project = ToPixels(ProjectPlacement(main_->Measures(), messages)),
            .Documents = ToPixels(DocumentPlacement(messages))};
}

std::optional<platform::qt::ChildPlaces> Shell::PlacesOfNew() const {
    if (!app_.State.AutoArrange) return std::nullopt;
    const auto messages = toolChain_.MessagesFrame();
    return PlacesBeside(messages ? ToTwips(*messages) : MessageListPlacement(main_->Measures()));
}

void Shell::ArrangeWindows() {
    if (main_->isMinimized()) return;
    const platform::HourglassScope hourglass(app_.Host.Desktop);
    main_->ArrangeChildren(PlacesBeside(MessageListPlacement(main_->Measures())));
}

void Shell::SaveSettings() {
    const bool isWhole = main_->isMaximized() || main_->isFullScreen();
    shell::SaveSettings(app_.State, app_.Host,
                        {.Place = MainPlacement(), .Minimized = main_->isMinimized(), .Maximized = isWhole});
}

void Shell::BuildHelpList() {
    const auto files = app_.Host.Files.List(app_.State.OvrelHelpDir + "*.*");
    main_->Menus().ShowElements("mnuHelpOvrelList", files);
    main_->Menus().Entry("mnuHelpOvrel").setVisible(!files.empty());
}

void Shell::ShowRecentFiles() {
    main_->Menus().ShowElements("mnuFileMru", app_.State.ShownRecentFiles());
    main_->Menus().Entry("mnuFileBar4").setVisible(!app_.State.RecentFiles[0].empty());
}

void Shell::UpdateMruMenus() {
    ShowRecentFiles();
    for (session::Document* document : app_.State.Documents.All()) document->UpdateMenus();
}

void Shell::LaunchTool(const std::string& tool, const std::string& file) {
    shell::LaunchTool(app_, tool, file);
}

void Shell::TileAllTeskTools() {
    const platform::ScreenSize half = HalfScreen(app_.Host.Screen);
    if (main_->isMinimized() || main_->isMaximized() || main_->isFullScreen()) main_->showNormal();
    main_->SetFrame(ToPixels({.Width = half.Width, .Height = half.Height}));
    TileCompanions(app_);
    main_->activateWindow();
}

// All are asked before the first one closes: a refusal leaves every text in its window. A text that is saved
// under a new name comes up in a further window.
bool Shell::QueryUnloadAll() {
    std::vector<MdiChild*> asked;
    const auto next = [&]() -> MdiChild* {
        for (MdiChild* child : main_->Children()) {
            if (std::find(asked.begin(), asked.end(), child) == asked.end()) return child;
        }
        return nullptr;
    };
    while (MdiChild* child = next()) {
        if (!child->QueryUnload()) return false;
        asked.push_back(child);
    }
    for (MdiChild* child : asked) child->UnloadUnasked();
    return true;
}

void Shell::Unload() {
    SaveSettings();
    SaveConfig();
    CloseTools(app_);
    QApplication::quit();
}

// Nothing guards this write: its error keeps the program running. Where the next try fails too it is told
// once more, but a folder that can never be written to must not hold the program for good.
void Shell::SaveConfig() {
    try {
        WriteConfig(app_.State, app_.Host);
    } catch (const base::RunTimeError& error) {
        if (!std::exchange(configFailed_, true)) throw;
        app_.Host.Boxes.Say("KORVANE.CFG cannot be written: " + std::string(error.Description()));
    }
}

}  // namespace shell
