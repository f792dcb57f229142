#include "editor/OpenDocument.h"

#include "base/Number.h"
#include "base/RunTimeError.h"
#include "base/Text.h"
#include "editor/DocumentFile.h"
#include "editor/Highlighter.h"
#include "editor/SymbolTable.h"
#include "session/Opening.h"

namespace editor {
namespace {

void OpenUntitled(session::App& app, session::Document& document) {
    ++app.State.UntitledCount;
    document.SetCaption("Untitled " + std::to_string(app.State.UntitledCount));
}

void EnterProject(session::App& app, session::Document& document, const std::string& path) {
    if (app.State.sProject.empty()) app.State.sProject = path.substr(0, path.rfind('.'));
    app.Hall.Project->ShowProject();
    document.MarkProject(true);
    document.BringToFront();
}

SymbolDesk DeskOf(session::App& app) {
    return {app.Host.Desktop, app.Host.Boxes,
            [&app](const std::string& text) { app.Hall.Main->SetPanel(1, text); }};
}

void OpenFile(session::App& app, session::Document& document, const std::string& path) {
    document.SetFile(path, path);
    if (app.Host.Files.FileExists(path)) document.MarkUnread();
    document.txtText().SetText(app.Host.Files.ReadFile(path));
    document.MarkSaved();
    app.State.DefaultTextColor = document.txtText().SelFormat().Color;
    EnterByKind(app, document, path);
    UpdateMru(app, path);
}

}  // namespace

session::Document* OpenDocument(session::App& app, DocumentFactory& factory,
                                const std::optional<std::string>& path) {
    const std::string upper = base::Upper(path.value_or(""));
    session::Document* opened = nullptr;
    try {
        const platform::HourglassScope hourglass(app.Host.Desktop);
        session::Document& document = factory.Create();
        ++app.State.DocumentCount;
        document.ID = base::ToInt16(app.State.DocumentCount);
        app.State.Documents.Add(document);
        opened = &document;
        factory.Registered(document);
        app.Hall.Utilities->SetTBMenu(document);
        if (path) {
            OpenFile(app, document, upper);
        } else {
            OpenUntitled(app, document);
        }
        document.MarkSaved();
    } catch (const base::RunTimeError&) {
        // Whatever the error was, a missing file is the one that a user can do something about.
        if (path) app.Host.Boxes.Say("The file " + upper + " doesn't exist. New File assumed");
    }
    return opened;
}

void EnterByKind(session::App& app, session::Document& document, const std::string& path) {
    const DocumentKind kind = KindOf(path);
    if (kind == DocumentKind::Design) {
        ReadSymbols(app, document);
        HighlightSyntax(app, document);
    }
    if (kind != DocumentKind::Plain) EnterProject(app, document, path);
}

void ReadSymbols(session::App& app, session::Document& document) {
    LoadSymbols(DeskOf(app), document.txtText().Text(), document.Symbols);
}

void ReadSymbolsAgain(session::App& app, session::Document& document) {
    ResetSymbols(DeskOf(app), document.txtText().Text(), document.Symbols);
}

void UpdateMru(session::App& app, const std::string& path) {
    auto& recent = app.State.RecentFiles;
    const auto slash = path.rfind('\\');
    app.State.LastPath = path.substr(0, slash == path.npos ? 1 : slash + 1);
    for (std::size_t i = 0; i <= 5; ++i) {
        if (recent[i] != path) continue;
        for (std::size_t j = i; j <= 4; ++j) recent[j] = recent[j + 1];
        break;
    }
    for (std::size_t i = 5; i >= 1; --i) recent[i] = recent[i - 1];
    recent[0] = path;
    if (!recent[0].empty()) app.Hall.Main->UpdateMruMenus();
}

void FileOpen(session::App& app, const std::string& folder) {
    session::EnterWorkDir(app);
    const auto name = app.Host.Boxes.OpenFile(
        {.Filter = "PLD Files (*.pld)|*.pld|VHDL Files (*.vhd)|*.vhd|Simulation File (*.si)|*.si|Doc Files "
                   "(*.doc)|*.doc|All Files (*.*)|*.*",
         .InitialFolder = folder});
    if (name && !name->empty()) session::OpenUnlessOpen(app, *name);
}

}  // namespace editor
