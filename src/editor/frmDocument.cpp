#include "editor/frmDocument.h"

#include <QCloseEvent>
#include <QMdiArea>
#include <algorithm>

#include "base/RunTimeError.h"
#include "base/Text.h"
#include "editor/DocumentFile.h"
#include "editor/DocumentMenu.h"
#include "editor/Highlighter.h"
#include "platform/qt/Guard.h"
#include "platform/qt/TextBox.h"
#include "platform/qt/Twips.h"

namespace editor {

using platform::qt::Guarded;
using platform::qt::MenuSet;
using platform::qt::On;
using platform::qt::ToPixels;

namespace {

constexpr std::chrono::milliseconds statusInterval{1000};

// Entries that a missing folder of the installation takes away.
constexpr const char* partitionerEntries[] = {"mnuZonerex", "mnuRunZrx"};
constexpr const char* utilityEntries[] = {"mnuBackpin", "mnuImport", "mnuVhdl", "mnuRunVhdlCompile",
                                          "mnuRunVhdlAnalysis"};

bool ForwardsToMain(const std::string& name) {
    const auto menu = DocumentMenu();
    return std::any_of(menu.begin(), menu.end(), [&](const platform::MenuRow& row) {
        return name == row.Name && (row.Flags & platform::menuToMain) != 0;
    });
}

}  // namespace

frmDocument::frmDocument(session::App& app) : app_(app) {
    setObjectName("frmDocument");
    setAttribute(Qt::WA_DeleteOnClose);
    text_ = new platform::qt::TextBox(this);
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

frmDocument::~frmDocument() = default;

void frmDocument::BuildMenus() {
    menus_ = std::make_unique<MenuSet>(
        this, DocumentMenu(), [this](const std::string& name, int index) { RunCommand(name, index); });
    FillCommands();
    DisableEntriesWithoutCommand();
    if (app_.State.ZrxDir.empty()) {
        for (const char* name : partitionerEntries) SetMenuVisible(name, false);
    }
    if (app_.State.UtilityDir.empty()) {
        for (const char* name : utilityEntries) SetMenuVisible(name, false);
    }
}

void frmDocument::DisableEntriesWithoutCommand() {
    for (const platform::MenuRow& row : DocumentMenu()) {
        if (menus_->Menu(row.Name) != nullptr || std::string(row.Caption) == "-" || row.Count > 0) continue;
        const bool forwards = ForwardsToMain(row.Name) && app_.Hall.HasMainCommand(row.Name);
        if (!forwards && !commands_.contains(row.Name)) SetMenuEnabled(row.Name, false);
    }
}

void frmDocument::ConnectText() {
    On(text_, &platform::qt::TextBox::Changed, this, [this] {
        Dirty = true;
        ++Revision;
    });
    On(text_, &platform::qt::TextBox::KeyReleased, this, [this](int key) {
        if (IsHighlightKey(app_.State, key)) app_.Hall.HighlightWord(*this);
    });
    On(text_, &platform::qt::TextBox::SelectionToggled, this, [this] { emit SelectionToggled(); });
    On(text_, &platform::qt::TextBox::RightButtonPressed, this,
       [this](const QPoint& at) { menus_->Menu("mnuEdit")->popup(at); });
}

void frmDocument::RunCommand(const std::string& name, int index) {
    const auto command = commands_.find(name);
    if (command != commands_.end()) {
        command->second(index);
    } else if (ForwardsToMain(name)) {
        app_.Hall.MainCommand(name);
    } else {
        throw base::RunTimeError(base::errInvalidCall, "No command " + name);
    }
}

void frmDocument::FillCommands() {
    FillFileCommands();
    FillEditCommands();
    FillRunCommands();
    commands_["mnuViewToolbar"] = [this](int) {
        FlipCheck("mnuViewToolbar");
        app_.Hall.ToggleToolbar();
    };
    commands_["mnuViewStatusBar"] = [this](int) {
        FlipCheck("mnuViewStatusBar");
        app_.Hall.ToggleStatusBar();
    };
    commands_["mnuUtilTool"] = [this](int index) {
        app_.Hall.RunUtility(menus_->Text(MenuSet::ElementName("mnuUtilTool", index)));
    };
    commands_["mnuFont"] = [this](int) { ChooseFont(app_, *this); };
    commands_["mnuViewRefresh"] = [this](int) { app_.Hall.HighlightSyntax(*this); };
}

void frmDocument::FillFileCommands() {
    commands_["mnuNewText"] = [this](int) { app_.Hall.OpenDocument(); };
    commands_["mnuFileClose"] = [this](int) { Unload(); };
    commands_["mnuFileSave"] = [this](int) { mnuFileSave_Click(); };
    commands_["mnuFileSaveAs"] = [this](int) { SaveFileAs(); };
    commands_["mnuFileSaveAll"] = [this](int) { SaveAll(app_); };
    commands_["mnuFilePrintSetup"] = [this](int) { app_.Host.Boxes.SetUpPrinter(); };
    commands_["mnuFileMru"] = [this](int index) { OpenRecent(app_, index); };
    commands_["mnuFileExit"] = [this](int) {
        app_.Hall.SaveSettings();
        app_.Hall.ExitProgram();
    };
}

void frmDocument::FillEditCommands() {
    commands_["mnuEditUndo"] = [this](int) { text_->SendMessage(platform::EM_UNDO); };
    commands_["mnuEditCut"] = [this](int) { mnuEditCut_Click(); };
    commands_["mnuEditCopy"] = [this](int) { mnuEditCopy_Click(); };
    commands_["mnuEditPaste"] = [this](int) { mnuEditPaste_Click(); };
}

void frmDocument::FillRunCommands() {
    commands_["mnuRunDepCompile"] = [this](int) { mnuRunDepCompile_Click(); };
    commands_["mnuRunIndepCompile"] = [this](int) { mnuRunIndepCompile_Click(); };
    commands_["mnuRunDepSimulate"] = [this](int) { mnuRunDepSimulate_Click(); };
    commands_["mnuRunIndepSimulate"] = [this](int) { mnuRunIndepSimulate_Click(); };
    commands_["mnuRunVhdlCompile"] = [this](int) { app_.Hall.RunVhdlCompile(); };
    commands_["mnuRunVhdlAnalysis"] = [this](int) { app_.Hall.RunVhdlAnalysis(); };
}

// Of this window's entry alone: each window marks its own clicks, so a mark may differ from what is seen.
void frmDocument::FlipCheck(const std::string& entry) { SetMenuChecked(entry, !IsMenuChecked(entry)); }

platform::RichTextBox& frmDocument::txtText() { return *text_; }

void frmDocument::SetCaption(const std::string& caption) {
    caption_ = caption;
    setWindowTitle(QString::fromStdString(base::DisplayUtf8(caption)));
}

void frmDocument::SaveFile() { editor::SaveFile(app_, *this); }
void frmDocument::SaveFileAs() { editor::SaveFileAs(app_, *this); }

void frmDocument::UpdateFont(const std::string& name, std::int16_t size, std::int32_t color, bool bold,
                             bool italic) {
    ApplyFont(*text_, {.Name = name, .Size = size, .Bold = bold, .Italic = italic});
    text_->SetSelColor(color);
}

void frmDocument::RefreshProjectList() {
    if (IsMenuChecked("mnuProject")) app_.Hall.UpdateTreeView();
}

void frmDocument::SetMenuEnabled(const std::string& name, bool enabled) {
    menus_->Entry(name).setEnabled(enabled);
}
void frmDocument::SetMenuVisible(const std::string& name, bool visible) {
    menus_->Entry(name).setVisible(visible);
}
void frmDocument::SetMenuChecked(const std::string& name, bool checked) {
    menus_->Entry(name).setChecked(checked);
}
void frmDocument::SetMenuCaption(const std::string& name, const std::string& caption) {
    menus_->SetText(name, caption);
}
bool frmDocument::IsMenuChecked(const std::string& name) const { return menus_->Entry(name).isChecked(); }

bool frmDocument::IsInserting() const { return !text_->IsOvertyping(); }

void frmDocument::Move(float left, float top, float width, float height) {
    setGeometry(ToPixels(left), ToPixels(top), ToPixels(width), ToPixels(height));
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
        Unregister(app_, *this, isRegistered_);
        isUnloaded_ = true;
    });
    if (!isUnloaded_) return;
    StatusBarTimer.reset();
    emit Unloaded();
    QMdiSubWindow::closeEvent(event);
}

void frmDocument::mnuFileSave_Click() { Save(app_, *this); }
void frmDocument::mnuEditCut_Click() { text_->SendMessage(platform::WM_CUT); }
void frmDocument::mnuEditCopy_Click() { text_->SendMessage(platform::WM_COPY); }
void frmDocument::mnuEditPaste_Click() {
    if (app_.Host.Clip.HasText()) text_->SendMessage(platform::WM_PASTE);
}
void frmDocument::mnuRunDepCompile_Click() { app_.Hall.RunDepCompile(*this); }
void frmDocument::mnuRunIndepCompile_Click() { app_.Hall.RunIndepCompile(*this); }
void frmDocument::mnuRunDepSimulate_Click() { app_.Hall.RunDepSimulate(*this); }
void frmDocument::mnuRunIndepSimulate_Click() { app_.Hall.RunIndepSimulate(*this); }

}  // namespace editor
