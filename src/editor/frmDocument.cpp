#include "editor/frmDocument.h"

#include <QCloseEvent>
#include <QMdiArea>
#include <algorithm>

#include "base/RunTimeError.h"
#include "editor/DocumentFile.h"
#include "editor/DocumentMenu.h"
#include "editor/Highlighter.h"
#include "platform/qt/Captions.h"
#include "platform/qt/Guard.h"
#include "platform/qt/TextBox.h"

namespace editor {

using platform::qt::Guarded;
using platform::qt::MenuSet;
using platform::qt::On;

namespace {

constexpr std::chrono::milliseconds statusInterval{1000};

// Entries that a missing folder of the installation takes away.
constexpr const char* partitionerEntries[] = {"mnuZonerex", "mnuRunZrx"};
constexpr const char* utilityEntries[] = {"mnuBackpin", "mnuImport", "mnuVhdl", "mnuRunVhdlCompile",
                                          "mnuRunVhdlAnalysis"};

const platform::MenuRow* FindRow(const std::string& name) {
    const auto menu = DocumentMenu();
    const auto row = std::find_if(menu.begin(), menu.end(),
                                  [&](const platform::MenuRow& each) { return name == each.Name; });
    return row == menu.end() ? nullptr : &*row;
}

bool HasFlag(const std::string& name, unsigned flag) {
    const platform::MenuRow* row = FindRow(name);
    return row != nullptr && (row->Flags & flag) != 0;
}

}  // namespace

frmDocument::frmDocument(session::App& app) : app_(app) {
    setObjectName("frmDocument");
    setAttribute(Qt::WA_DeleteOnClose);
    text_ = new platform::qt::TextBox(this);
    text_->setAccessibleName("Text");
    text_->setObjectName("txtText");
    text_->setProperty("tag", "INS");
    setWidget(text_);
    setFocusProxy(text_);
    BuildMenus();
    ApplyFont(*text_, app_.State.EditorFont);
    ConnectText();
    StatusBarTimer =
        app_.Host.Time.Every(statusInterval, [this] { UpdatePosition(app_, *text_, positionCache_); });
}

frmDocument::~frmDocument() {
    // The control goes later, and tells of its selection as it does.
    text_->disconnect(this);
}

void frmDocument::BuildMenus() {
    menus_ = std::make_unique<MenuSet>(
        this, DocumentMenu(), [this](const std::string& name, int index) { RunCommand(name, index); });
    EnableEntries();
    for (const platform::MenuRow& row : DocumentMenu()) {
        QMenu* menu = menus_->Menu(row.Name);
        if (menu != nullptr) On(menu, &QMenu::aboutToShow, this, [this] { EnableEntries(); });
    }
    const auto hide = [this](const char* name) { menus_->Entry(name).setVisible(false); };
    BuildHelpList();
    if (app_.State.ZrxDir.empty()) std::for_each_n(partitionerEntries, std::size(partitionerEntries), hide);
    if (app_.State.UtilityDir.empty()) std::for_each_n(utilityEntries, std::size(utilityEntries), hide);
}

void frmDocument::BuildHelpList() {
    const auto files = app_.Host.Files.List(app_.State.OvrelHelpDir + "*.*");
    menus_->ShowElements("mnuHelpOvrelList", files);
    menus_->Entry("mnuHelpOvrel").setVisible(!files.empty());
}

// An entry without a command stays disabled; where its command does not say when, others may decide.
void frmDocument::EnableEntries() {
    for (const platform::MenuRow& row : DocumentMenu()) {
        if (menus_->Menu(row.Name) != nullptr || std::string(row.Caption) == "-" || row.Count > 0) continue;
        const auto* own = app_.Hall.DocumentCommands.Find(row.Name);
        const auto* forwarded =
            (row.Flags & platform::menuToMain) != 0 ? app_.Hall.MainCommands.Find(row.Name) : nullptr;
        const bool isOpen = own != nullptr ? own->IsEnabled == nullptr
                                           : forwarded != nullptr && forwarded->IsEnabled == nullptr;
        if (!isOpen) menus_->Entry(row.Name).setEnabled(HasCommand(row.Name));
    }
}

bool frmDocument::HasCommand(const std::string& name) const {
    if (app_.Hall.DocumentCommands.Find(name) != nullptr) return app_.Hall.DocumentCommands.IsEnabled(name);
    return HasFlag(name, platform::menuToMain) && app_.Hall.MainCommands.IsEnabled(name);
}

void frmDocument::FindText(const std::string& text, std::int32_t start, std::int32_t end,
                           std::int32_t options) {
    text_->Find(text, start, end, options);
}

void frmDocument::ConnectText() {
    On(text_, &platform::qt::TextBox::Changed, this, [this] { TextChanged(); });
    On(text_, &platform::qt::TextBox::KeyReleased, this, [this](int key) {
        if (IsHighlightKey(app_.State, key)) HighlightWord(app_, *this);
    });
    On(text_, &platform::qt::TextBox::SelectionToggled, this, [this] { emit SelectionToggled(); });
    On(text_, &platform::qt::TextBox::RightButtonPressed, this,
       [this](const QPoint& at) { menus_->Menu("mnuEdit")->popup(at); });
}

void frmDocument::RunCommand(const std::string& name, int index) {
    // Of this window's entry alone: each window marks its own clicks, so a mark may differ from what is seen.
    if (HasFlag(name, platform::menuChecked)) {
        QAction& entry = menus_->Entry(name);
        entry.setChecked(!entry.isChecked());
    }
    const bool forwards = HasFlag(name, platform::menuToMain);
    if (forwards && app_.Hall.DocumentCommands.Find(name) == nullptr) {
        app_.Hall.MainCommands.Run(name, index);
    } else {
        app_.Hall.DocumentCommands.Run(name, *this, index);
    }
}

void frmDocument::UpdateMenus() {
    ShowRecentFiles();
    ShowTools();
    menus_->Entry("mnuProject").setChecked(ShowsProject());
    EnableEntries();
}

void frmDocument::ShowRecentFiles() {
    menus_->ShowElements("mnuFileMru", app_.State.ShownRecentFiles());
    menus_->Entry("mnuFileBar4").setVisible(!app_.State.RecentFiles[0].empty());
}

void frmDocument::ShowTools() {
    for (int i = 1; i < static_cast<int>(Tools.Places.size()); ++i) {
        const session::ToolMenu::Place& place = Tools.Places[static_cast<std::size_t>(i)];
        const std::string name = MenuSet::ElementName("mnuUtilTool", i);
        menus_->SetText(name, place.Caption);
        menus_->Entry(name).setVisible(place.IsVisible);
    }
    menus_->Entry("mnuUtilClearMacro").setVisible(Tools.HasMacro);
    menus_->Entry("mnuUtilBarBottom").setVisible(Tools.HasTools);
}

platform::RichTextBox& frmDocument::txtText() { return *text_; }

void frmDocument::ShowCaption() { setWindowTitle(platform::qt::Shown(Caption())); }

std::int32_t frmDocument::SelLength() const { return text_->SelLength(); }
bool frmDocument::IsInserting() const { return !text_->IsOvertyping(); }

std::optional<QRect> frmDocument::PlaceIn(const platform::qt::ChildPlaces& places) const {
    return isMinimized() || isMaximized() ? std::nullopt : places.Documents;
}

void frmDocument::BringToFront() {
    if (isMinimized()) showNormal();
    if (mdiArea() != nullptr) mdiArea()->setActiveSubWindow(this);
    raise();
}

bool frmDocument::Unload() {
    if (!isUnloaded_) close();
    return isUnloaded_;
}

bool frmDocument::QueryUnload() { return isUnloaded_ || editor::QueryUnload(app_, *this); }

void frmDocument::UnloadUnasked() {
    isAsked_ = true;
    Unload();
}

void frmDocument::closeEvent(QCloseEvent* event) {
    event->ignore();  // what the question throws leaves the text open
    Guarded([this] {
        if (isUnloaded_ || !(isAsked_ || QueryUnload())) return;
        if (isUnloaded_) return;  // saved under another name, which closed the project and this text with it
        Unregister(app_, *this, isRegistered_);
        isUnloaded_ = true;
    });
    if (!isUnloaded_) return;
    StatusBarTimer.reset();
    emit Unloaded();
    QMdiSubWindow::closeEvent(event);
}

}  // namespace editor
