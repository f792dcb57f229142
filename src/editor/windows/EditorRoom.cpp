#include "editor/EditorRoom.h"

#include "editor/DocumentFile.h"
#include "editor/Highlighter.h"
#include "editor/OpenDocument.h"
#include "editor/PrintDocument.h"
#include "editor/SheetPaste.h"
#include "editor/frmDocument.h"
#include "editor/frmFindText.h"
#include "editor/frmKorvane.h"
#include "editor/frmReplace.h"
#include "editor/windows/DocumentWindows.h"
#include "editor/windows/RecoveryKeeper.h"

namespace editor {
namespace {

using session::Document;

void Send(Document& document, platform::EditMessage message) { document.txtText().SendMessage(message); }

std::vector<session::MainCommand> CommandsOfMain(session::App& app) {
    return {
        {"mnuNewText", [&app](int) { app.Hall.Editor->OpenDocument(); }},
        {"mnuFileOpen",
         [&app](int) {
             FileOpen(app, app.State.LastPath.empty() ? app.State.ExamplesDir : app.State.LastPath);
         }},
        {"OpenExample", [&app](int) { FileOpen(app, app.State.ExamplesDir); }},  // of no menu
        {"mnuFileMru",
         [&app](int index) {
             app.Hall.Editor->OpenDocument(app.State.RecentFiles.at(static_cast<std::size_t>(index)));
         }},
        {"mnuFilePrintSetup", [&app](int) { app.Host.Paper.Choose(platform::PrintSetup); }},
    };
}

std::vector<session::DocumentCommand> FileCommands(session::App& app) {
    return {
        {"mnuImportPLA", [&app](Document&, int) { app.Hall.MainCommands.Run("mnuImportPla", -1); }},
        {"mnuNewText", [&app](Document&, int) { app.Hall.Editor->OpenDocument(); }},
        {"mnuFileClose", [](Document& document, int) { document.Unload(); }},
        {"mnuFileSave", [&app](Document& document, int) { Save(app, document); }},
        {"mnuFileSaveAs", [&app](Document& document, int) { SaveFileAs(app, document); }},
        {"mnuFileSaveAll", [&app](Document&, int) { SaveAll(app); }},
        {"mnuFilePrintSetup", [&app](Document&, int) { app.Host.Paper.Choose(platform::PrintSetup); }},
        {"mnuFilePrint", [&app](Document& document, int) { FilePrint(app, document); }},
        {"mnuFileMru", [&app](Document&, int index) { OpenRecent(app, index); }},
    };
}

std::vector<session::DocumentCommand> TextCommands(session::App& app) {
    return {
        {"mnuEditUndo", [](Document& document, int) { Send(document, platform::EM_UNDO); }},
        {"mnuEditCut", [](Document& document, int) { Send(document, platform::WM_CUT); }},
        {"mnuEditCopy", [](Document& document, int) { Send(document, platform::WM_COPY); }},
        {"mnuEditPaste", [&app](Document& document, int) { EditPaste(app, document); }},
        {"mnuMacroSym", [&app](Document& document, int) { ReadSymbolsAgain(app, document); }},
        {"mnuFont", [&app](Document& document, int) { ChooseFont(app, document); }},
        {"mnuViewRefresh", [&app](Document& document, int) { HighlightSyntax(app, document); }},
    };
}

}  // namespace

EditorRoom::EditorRoom(session::App& app) : app_(app) {
    app.Hall.Editor = this;
    app.Hall.MainCommands.Add(CommandsOfMain(app));
    app.Hall.DocumentCommands.Add(FileCommands(app));
    app.Hall.DocumentCommands.Add(TextCommands(app));
    app.Hall.MainCommands.Add({{"mnuKorvane", [this](int) { ShowSettings(); }}});
    AddSearchCommands();
}

EditorRoom::~EditorRoom() = default;

void EditorRoom::ShowSettings() {
    platform::qt::Modal(new frmKorvane(app_, &frame_->Window())).Run();
    for (Document* document : app_.State.Documents.All()) app_.Hall.Utilities->SetTBMenu(*document);
}

void EditorRoom::AddSearchCommands() {
    app_.Hall.DocumentCommands.Add({
        {"mnuFind",
         [this](Document& document, int) {
             platform::qt::Modal dialog(new frmFindText(search_, &frame_->Window()));
             if (dialog.Run()) FindFirst(app_, document, search_);
         }},
        {"mnuNext", [this](Document& document, int) { FindNext(app_, document, search_); }},
        {"mnuReplace",
         [this](Document& document, int) {
             platform::qt::Modal dialog(new frmReplace(search_, &frame_->Window()));
             if (dialog.Run()) Replace(app_, document, search_);
         }},
    });
}

void EditorRoom::LoadWindows(platform::qt::MdiFrame& frame) {
    frame_ = &frame;
    windows_ = std::make_unique<DocumentWindows>(app_, frame);
}

void EditorRoom::UnloadWindows() {
    recovery_.reset();
    windows_.reset();
}

void EditorRoom::StartRecovery(const std::string& folder) {
    recovery_ = std::make_unique<RecoveryKeeper>(app_, *windows_, folder);
    recovery_->OfferCopies();
    recovery_->Start();
}

Document* EditorRoom::OpenDocument() { return editor::OpenDocument(app_, *windows_, std::nullopt); }
Document* EditorRoom::OpenDocument(const std::string& path) {
    return editor::OpenDocument(app_, *windows_, path);
}
void EditorRoom::UpdateMru(const std::string& path) { editor::UpdateMru(app_, path); }
void EditorRoom::HighlightSyntax(Document& document) { editor::HighlightSyntax(app_, document); }
void EditorRoom::HighlightRange(Document& document, std::int32_t start, std::int32_t end) {
    editor::HighlightSyntax(app_, document, start, end);
}

}  // namespace editor
