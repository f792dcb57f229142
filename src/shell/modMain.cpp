#include "shell/modMain.h"

#include "base/Number.h"
#include "base/RunTimeError.h"
#include "base/Text.h"
#include "base/modLib.h"
#include "editor/DocumentFile.h"

namespace shell {
namespace {

constexpr float twipsPerPixel = 15;  // TX and TY

void OpenUntitled(session::App& app, session::Document& document) {
    ++app.State.UntitledCount;
    document.SetCaption("Untitled " + std::to_string(app.State.UntitledCount));
}

void EnterProject(session::App& app, const std::string& path) {
    if (app.State.sProject.empty()) app.State.sProject = path.substr(0, path.rfind('.'));
}

void OpenFile(session::App& app, session::Document& document, const std::string& path) {
    document.SetCaption(path);
    document.FileName = path;
    document.Unread = app.Host.Files.FileExists(path);
    document.txtText().SetText(app.Host.Files.ReadFile(path));
    document.Unread = false;
    app.State.DefaultTextColor = document.txtText().SelFormat().Color;
    const editor::DocumentKind kind = editor::KindOf(path);
    if (kind == editor::DocumentKind::Design) app.Hall.HighlightSyntax(document);
    if (kind != editor::DocumentKind::Plain) EnterProject(app, path);
    UpdateMru(app, path);
}

// The comparison is exact: a path chosen in mixed case opens a second window.
void OpenUnlessOpen(session::App& app, const std::string& name) {
    for (const session::Document* document : app.State.Documents.All()) {
        if (document->Caption() == name) {
            app.Host.Boxes.Say("File already open in editor. ");
            return;
        }
    }
    app.Hall.OpenDocument(name);
}

}  // namespace

void OpenDocument(session::App& app, DocumentFactory& factory, const std::optional<std::string>& path) {
    const std::string upper = base::Upper(path.value_or(""));
    try {
        const platform::HourglassScope hourglass(app.Host.Desktop);
        session::Document& document = factory.Create();
        ++app.State.DocumentCount;
        document.ID = base::ToInt16(app.State.DocumentCount);
        app.State.Documents.Add(document);
        factory.Registered(document);
        app.Hall.SetTBMenu(document);
        if (path) {
            OpenFile(app, document, upper);
        } else {
            OpenUntitled(app, document);
        }
        document.Dirty = false;
    } catch (const base::RunTimeError&) {
        // Whatever the error was, a missing file is the one that a user can do something about.
        if (path) app.Host.Boxes.Say("The file " + upper + " doesn't exist. New File assumed");
    }
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
    if (!recent[0].empty()) app.Hall.UpdateMruMenus();
}

void EnterWorkDir(session::App& app) {
    const std::string& folder = app.State.WorkDir;
    if (!folder.empty() && app.Host.Files.DirectoryExists(folder)) app.Host.Files.SetCurrentDirectory(folder);
}

void FileOpen(session::App& app) {
    EnterWorkDir(app);
    const session::Session& state = app.State;
    const auto name = app.Host.Boxes.OpenFile(
        {.Filter = "PLD Files (*.pld)|*.pld|VHDL Files (*.vhd)|*.vhd|Simulation File (*.si)|*.si|Doc Files "
                   "(*.doc)|*.doc|All Files (*.*)|*.*",
         .InitialFolder = state.LastPath.empty() ? state.ExamplesDir : state.LastPath});
    if (name && !name->empty()) OpenUnlessOpen(app, *name);
}

void ProjectOpen(session::App& app) {
    app.State.sProject.clear();
    EnterWorkDir(app);
    const auto name =
        app.Host.Boxes.OpenFile({.Filter = "PLD Files (*.pld)|*.pld", .InitialFolder = app.State.WorkDir});
    if (!name || name->empty()) return;
    if (base::FileExtension(*name) != "PLD") {
        app.Host.Boxes.Say("Only design files with .PLD as the file extension can be opened as a project.");
        return;
    }
    OpenUnlessOpen(app, *name);
}

session::Placement MessageListPlacement(const MainMeasures& main) {
    session::Placement place;
    place.Height = main.Height * 0.2F - twipsPerPixel;
    place.Width = main.Width * 0.75F;
    place.Top = main.InnerHeight - place.Height - twipsPerPixel;
    place.Left = 0;
    return place;
}

session::Placement ProjectPlacement(const MainMeasures& main, const session::Placement& messages) {
    session::Placement place;
    place.Height = messages.Top + messages.Height;
    place.Width = main.Width - messages.Width - 15 * twipsPerPixel;
    place.Top = 0;
    place.Left = messages.Width + twipsPerPixel;
    return place;
}

session::Placement DocumentPlacement(const session::Placement& messages) {
    return {.Left = 0, .Top = 0, .Width = messages.Width, .Height = messages.Top - twipsPerPixel};
}

}  // namespace shell
