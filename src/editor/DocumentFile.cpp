#include "editor/DocumentFile.h"

#include "base/Number.h"
#include "base/RunTimeError.h"
#include "base/Text.h"
#include "session/Saving.h"

namespace editor {
namespace {

using base::RunTimeError;

constexpr const char* untitled = "Untitled";
// The last entry lacks its bar: kept as it has always stood.
constexpr const char* saveFilter =
    "PLD Files (*.pld)|*.pld|Simulation File (*.si)|*.si|Doc Files (*.doc)|*.doc|All Files (*.*)*.*";

void ReportSaveFailure(session::App& app, const RunTimeError& error) {
    const bool inUse = error.Number() == base::errPathFileAccess;
    app.Host.Boxes.MessageBox(
        {.Text = inUse ? "Cannot save file, it is in use by another application" : error.Description(),
         .Title = "Save File Error"});
}

}  // namespace

DocumentKind KindOf(const std::string& path) {
    const auto dot = path.rfind('.');
    const std::string extension = dot == path.npos ? "" : path.substr(dot + 1);
    if (extension == "PLD") return DocumentKind::Design;
    if (extension == "SI") return DocumentKind::SimulatorInput;
    if (extension == "VHD") return DocumentKind::Vhdl;
    return DocumentKind::Plain;
}

void SaveFile(session::App& app, session::Document& document) {
    try {
        session::WriteText(app, document, document.Caption());
    } catch (const RunTimeError& error) {
        ReportSaveFailure(app, error);
    }
}

bool SaveFileAs(session::App& app, session::Document& document) {
    const auto name = app.Host.Boxes.SaveFile({.Filter = saveFilter,
                                               .FileName = document.FileName(),
                                               .Flags = platform::OverwritePrompt | platform::PathMustExist});
    if (!name || name->empty()) {
        app.Host.Desktop.SetHourglass(false);
        return true;
    }
    try {
        app.Host.Files.WriteFile(*name, document.txtText().TextView());
    } catch (const RunTimeError& error) {
        ReportSaveFailure(app, error);
        return false;
    }
    app.Hall.Project->CloseProject();
    app.Hall.Editor->OpenDocument(*name);
    return true;
}

bool Save(session::App& app, session::Document& document) {
    if (base::Contains(document.Caption(), untitled)) return SaveFileAs(app, document);
    SaveFile(app, document);
    return !document.Dirty();
}

void SaveAll(session::App& app) {
    for (session::Document* document : app.State.Documents.All()) SaveFile(app, *document);
}

bool QueryUnload(session::App& app, session::Document& document) {
    if (!document.Dirty()) return true;
    const auto answer = app.Host.Boxes.MessageBox({.Text = "Save changes to " + document.Caption() + "?",
                                                   .Title = "Save File",
                                                   .Choice = platform::Buttons::YesNoCancel,
                                                   .Picture = platform::Icon::Question});
    if (answer == platform::Answer::Cancel) return false;
    // A cancel in the Save dialog does not refuse the close; a text that could not be written does.
    return answer == platform::Answer::No || Save(app, document);
}

void Unregister(session::App& app, const session::Document& document, bool isRegistered) {
    if (isRegistered) app.State.Documents.Remove(std::to_string(document.ID));
    --app.State.UntitledCount;
    if (--app.State.DocumentCount == 0) app.State.sProject.clear();
}

void OpenRecent(session::App& app, int index) {
    const std::string path = app.State.RecentFiles.at(static_cast<std::size_t>(index));
    for (session::Document* document : app.State.Documents.All()) {
        if (base::EqualNoCase(document->FileName(), path)) {
            document->BringToFront();
            app.Host.Boxes.Say("File already open in editor. ");
            return;
        }
    }
    app.Hall.Editor->OpenDocument(path);
}

std::string PositionText(platform::RichTextBox& text) {
    const auto line = text.SendMessage(platform::EM_LINEFROMCHAR, -1);
    const auto lineStart = text.SendMessage(platform::EM_LINEINDEX, -1);
    // The line is the caret's, the column counts from its start to that of the selection: below zero if that
    // is in a line above. Of the start the message holds 16 bits; the control's own value counts.
    const std::intptr_t start = text.SelStart();
    std::intptr_t column = start - lineStart;
    if (column == 0) column = 1;
    return " Line:" + std::to_string(line + 1) + " Col:" + std::to_string(column) + " ";
}

void UpdatePosition(session::App& app, platform::RichTextBox& text, std::string& cache) {
    const std::string position = PositionText(text);
    if (position != cache) {
        cache = position;
        app.Hall.Main->SetPanel(2, position);
    }
    if (app.Hall.Main->Panel(1) == "Macro recording stopped.") app.Hall.Main->SetPanel(1, "");
}

void ChooseFont(session::App& app, session::Document& document) {
    platform::RichTextBox& text = document.txtText();
    const platform::CharFormat format = text.SelFormat();
    const auto choice = app.Host.Boxes.ChooseFont({.Name = text.SelFontName(),
                                                   .Size = text.SelFontSize(),
                                                   .Bold = format.Bold,
                                                   .Italic = format.Italic,
                                                   .Underline = format.Underline,
                                                   .Color = app.State.DefaultTextColor});
    if (!choice) {
        app.Host.Desktop.SetHourglass(false);
        return;
    }
    UpdateFont(text, ToFontRecord(*choice));
    app.Hall.Editor->HighlightSyntax(document);
}

session::FontRecord ToFontRecord(const platform::FontChoice& choice) {
    return {.Name = choice.Name,
            .Size = base::RoundToInt16(choice.Size),
            .Bold = choice.Bold,
            .Italic = choice.Italic,
            .ForeColor = choice.Color};
}

void UpdateFont(platform::RichTextBox& text, const session::FontRecord& font) {
    ApplyFont(text, font);
    text.SetSelColor(font.ForeColor);
}

void ApplyFont(platform::RichTextBox& text, const session::FontRecord& font) {
    const platform::HiddenScope hidden(text);
    text.SetDefaultFont(font.Name, font.Size);
    text.SetSelStart(0);
    text.SetSelLength(text.TextLength());
    text.SetSelFontName(font.Name);
    text.SetSelFontSize(font.Size);
    text.SetSelBold(font.Bold);
    text.SetSelItalic(font.Italic);
}

}  // namespace editor
