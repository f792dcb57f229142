#include "shell/windows/Shell.h"

#include <QApplication>
#include <QMdiSubWindow>
#include <QStatusBar>
#include <QToolBar>
#include <algorithm>
#include <utility>

#include "base/RunTimeError.h"
#include "editor/Highlighter.h"
#include "platform/qt/Guard.h"
#include "platform/qt/Twips.h"
#include "shell/ConfigFile.h"
#include "shell/frmSplash.h"
#include "shell/windows/RecoveryKeeper.h"
#include "toolchain/frmMessage.h"
#include "toolchain/windows/StatusWindows.h"

namespace shell {

using platform::qt::MenuSet;
using platform::qt::On;
using platform::qt::Soon;

namespace {

session::Placement ToTwips(const QRect& place) {
    using platform::qt::ToTwips;
    return {ToTwips(place.x()), ToTwips(place.y()), ToTwips(place.width()), ToTwips(place.height())};
}

QRect ToPixels(const session::Placement& place) {
    using platform::qt::ToPixels;
    return {ToPixels(place.Left), ToPixels(place.Top), ToPixels(place.Width), ToPixels(place.Height)};
}

bool IsIconOrWhole(const QMdiSubWindow& window) { return window.isMinimized() || window.isMaximized(); }

}  // namespace

Shell::Shell(session::Session& state, platform::Host& host, std::string stateFolder)
    : app_{state, host, *this}, stateFolder_(std::move(stateFolder)) {}

Shell::~Shell() {
    app_.Host.Clip.OnChange = nullptr;
    TBMenuTimer.reset();
    recovery_.reset();
    compiler_.reset();
    runWindows_.reset();
    main_.reset();  // the documents go with it: they call the hall until then
}

bool Shell::Start() { return Main(app_.State, app_.Host, errors_, *this); }

void Shell::ShowSplash() {
    InitPictures();
    splash_ = std::make_unique<frmSplash>();
    splash_->ShowAndPaint();
}

void Shell::UnloadSplash() { splash_.reset(); }

void Shell::LoadMain() {
    main_ = std::make_unique<frmMain>();
    main_->SetCommands(MainCommands());
    main_->OnQueryUnload = [this] { return QueryUnloadAll(); };
    main_->OnUnload = [this] { Unload(); };
    main_->OnResize = [this] {
        if (app_.State.AutoArrange) ArrangeWindows();
    };
    if (app_.State.UtilityDir.empty()) {
        for (const char* name : {"mnuImport", "mnuVhdl"}) main_->Menus().Entry(name).setEnabled(false);
    }
    main_->Menus().Entry("mnuCloseProject").setEnabled(false);
    QAction& files = main_->Menus().Entry("mnuHelpOvrel");
    files.setVisible(HasHelpFiles());
    files.setEnabled(main_->HasCommand("mnuHelpOvrelList"));
    LoadMainSettings();
    if (!app_.State.RecentFiles[0].empty()) ShowRecentFiles();
    ReadConfig(app_.State, app_.Host);
    LoadMessages();
    LoadToolbar();
}

void Shell::LoadMainSettings() {
    MainWindowState window{.Place = MainPlacement()};
    LoadSettings(app_.State, app_.Host, window);
    const session::Placement& place = window.Place;
    main_->SetFrame(ToPixels(place));
}

void Shell::LoadMessages() {
    messages_ = new toolchain::frmMessage(app_, errors_);
    QMdiSubWindow& window = main_->AddChild(*messages_);
    window.setAttribute(Qt::WA_DeleteOnClose, false);
    On(&window, &QMdiSubWindow::windowStateChanged, main_.get(), [this] {
        // Soon: when the window has told of its new state it still takes its old place.
        Soon(main_.get(), [this] {
            if (messagesPlace_) MoveMessages(*messagesPlace_);
        });
    });
    window.show();
    runWindows_ = std::make_unique<toolchain::StatusWindows>(
        app_, [this]() -> toolchain::frmMessage& { return ShownMessages(); }, main_.get());
    compiler_ = std::make_unique<toolchain::Compiler>(app_, *runWindows_, stateFolder_ + "outputs");
}

toolchain::frmMessage& Shell::ShownMessages() {
    // The user may have closed it; a run brings it back, the document stays active.
    if (!messages_->parentWidget()->isVisible()) {
        QMdiSubWindow* active = main_->ActiveChild();
        messages_->show();
        messages_->parentWidget()->show();
        if (active != nullptr) main_->Area().setActiveSubWindow(active);
    }
    return *messages_;
}

void Shell::ShowMain() {
    On(main_.get(), &frmMain::Framed, main_.get(), [this] { PlaceChildren(); });
    main_->show();
    PlaceChildren();
    recovery_ = std::make_unique<RecoveryKeeper>(app_, *main_, stateFolder_ + "recovery\\");
    recovery_->OfferCopies();
    recovery_->Start();
}

void Shell::PlaceChildren() {
    const MainMeasures main = main_->Measures();
    MoveMessages(toolchain::frmMessage::InitialPlacement({.Width = main.Width, .Height = main.Height},
                                                         main.InnerHeight));
    if (app_.State.AutoArrange) ArrangeWindows();
}

session::Document& Shell::Create() {
    auto* document = new editor::frmDocument(app_);
    main_->AddDocument(*document);
    document->SetMenuVisible("mnuHelpOvrel", HasHelpFiles());
    if (app_.State.AutoArrange) {
        const session::Placement place = DocumentPlacement(MessagePlacement());
        document->Move(0, 0, place.Width, place.Height);
    }
    document->show();
    return *document;
}

void Shell::Registered(session::Document& document) {
    static_cast<editor::frmDocument&>(document).SetRegistered();
}

session::Placement Shell::MainPlacement() const { return ToTwips(main_->Frame()); }

QMdiSubWindow& Shell::MessageWindow() const {
    return *qobject_cast<QMdiSubWindow*>(messages_->parentWidget());
}

session::Placement Shell::MessagePlacement() const {
    if (IsIconOrWhole(MessageWindow())) return MessageListPlacement(main_->Measures());
    return ToTwips(MessageWindow().geometry());
}

void Shell::ArrangeWindows() {
    if (main_->isMinimized() || messages_ == nullptr) return;
    const platform::HourglassScope hourglass(app_.Host.Desktop);
    const session::Placement messages = MessageListPlacement(main_->Measures());
    MoveMessages(messages);
    const session::Placement place = DocumentPlacement(messages);
    for (session::Document* document : app_.State.Documents.All()) {
        if (document->IsMinimized() || document->IsMaximized()) continue;
        document->Move(place.Left, place.Top, place.Width, place.Height);
    }
}

void Shell::MoveMessages(session::Placement place) {
    messagesPlace_ = place;
    if (IsIconOrWhole(MessageWindow())) return;
    messagesPlace_.reset();
    MessageWindow().setGeometry(ToPixels(place));
}

void Shell::SaveSettings() {
    const bool isWhole = main_->isMaximized() || main_->isFullScreen();
    shell::SaveSettings(app_.State, app_.Host,
                        {.Place = MainPlacement(), .Minimized = main_->isMinimized(), .Maximized = isWhole});
}

bool Shell::HasHelpFiles() const { return !app_.Host.Files.List(app_.State.OvrelHelpDir + "*.*").empty(); }

void Shell::ShowRecentFiles() {
    for (int i = 0; i < 6; ++i) {
        const std::string& path = app_.State.RecentFiles[static_cast<std::size_t>(i)];
        if (path.empty()) continue;
        const std::string name = MenuSet::ElementName("mnuFileMru", i);
        main_->Menus().SetText(name, path);
        main_->Menus().Entry(name).setVisible(true);
    }
    main_->Menus().Entry("mnuFileBar4").setVisible(true);
}

void Shell::UpdateMruMenus() {
    ShowRecentFiles();
    for (session::Document* document : app_.State.Documents.All()) CopyRecentFiles(*document);
}

void Shell::CopyRecentFiles(session::Document& document) {
    for (int i = 0; i < 6; ++i) {
        const std::string name = MenuSet::ElementName("mnuFileMru", i);
        document.SetMenuCaption(name, main_->Menus().Text(name));
        document.SetMenuVisible(name, main_->Menus().Entry(name).isVisible());
    }
    document.SetMenuVisible("mnuFileBar4", true);
}

void Shell::ToggleToolbar() { main_->ToolBar().setVisible(main_->ToolBar().isHidden()); }
void Shell::ToggleStatusBar() { main_->statusBar()->setVisible(main_->statusBar()->isHidden()); }

void Shell::HighlightSyntax(session::Document& document) { editor::HighlightSyntax(app_, document); }
void Shell::HighlightWord(session::Document& document) { editor::HighlightWord(app_, document); }

void Shell::BringMessagesToFront() {
    QMdiSubWindow& window = MessageWindow();
    window.show();
    messages_->show();
    main_->Area().setActiveSubWindow(&window);
    window.raise();
}

void Shell::ShowHelpTopic(const std::string& topic) {
    app_.Host.Boxes.MessageBox({.Text = "No help is installed for the topic " + topic + ".",
                                .Picture = platform::Icon::Information});
}

// All are asked before the first one closes: a refusal leaves every text in its window. A text that is saved
// under a new name comes up in a further window.
bool Shell::QueryUnloadAll() {
    std::vector<editor::frmDocument*> asked;
    while (editor::frmDocument* document = DocumentBeside(asked)) {
        if (!document->QueryUnload()) return false;
        asked.push_back(document);
    }
    for (editor::frmDocument* document : asked) document->UnloadUnasked();
    return true;
}

// One that is not among these, or null; the active one first.
editor::frmDocument* Shell::DocumentBeside(const std::vector<editor::frmDocument*>& those) const {
    const auto isNew = [&those](editor::frmDocument* document) {
        return document != nullptr && std::find(those.begin(), those.end(), document) == those.end();
    };
    if (isNew(main_->ActiveDocument())) return main_->ActiveDocument();
    for (QMdiSubWindow* window : main_->Area().subWindowList()) {
        auto* document = qobject_cast<editor::frmDocument*>(window);
        if (isNew(document)) return document;
    }
    return nullptr;
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
