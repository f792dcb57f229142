#include "editor/Options.h"

#include "base/Number.h"
#include "base/modLib.h"
#include "editor/DocumentFile.h"

namespace editor {
namespace {

void ShowFonts(session::App& app) {
    app.Hall.ToolChain->ResetMessageFont();
    if (!app.State.sProject.empty()) app.Hall.Project->ResetProjectFont();
    for (session::Document* document : app.State.Documents.All()) {
        UpdateFont(document->txtText(), app.State.EditorFont);
        if (base::FileExtension(document->Caption()) == "PLD") app.Hall.Editor->HighlightSyntax(*document);
    }
}

// The first custom tool with the name of a standard one.
const session::CustomUtility* ReservedName(const session::Session& state, const Options& options) {
    for (const session::CustomUtility& tool : options.CustUtils) {
        for (const session::CustomUtility& standard : state.StdUtils) {
            if (!tool.Program.empty() && tool.Name == standard.Name) return &tool;
        }
    }
    return nullptr;
}

void TakeTools(session::Session& state, const Options& options) {
    for (std::size_t i = 0; i < state.StdUtils.size(); ++i) {
        state.StdUtils[i].Menu = options.StdUtils[i].Menu;
        state.StdUtils[i].Toolbar = options.StdUtils[i].Toolbar;
    }
    state.CustUtils = options.CustUtils;
}

}  // namespace

bool ApplyOptions(session::App& app, const Options& options) {
    session::Session& state = app.State;
    state.WorkDir = options.WorkDir;
    state.SchematicTool = options.SchematicTool;
    state.AutoArrange = options.AutoArrange;
    state.AutoSymbolUpdate = options.AutoSymbolUpdate;
    state.EditorFont = options.EditorFont;
    state.MessageFont = options.MessageFont;
    state.ProjectFont = options.ProjectFont;
    ShowFonts(app);  // kept: before the keywords, whose new colours show at the next repaint
    state.Keywords = options.Keywords;
    if (const session::CustomUtility* tool = ReservedName(state, options)) {
        app.Host.Boxes.Say("The custom utility " + tool->Name +
                           " must be changed, this is a reserved name for a standard utility.");
        return false;
    }
    TakeTools(state, options);
    return true;
}

std::string FontDescription(const session::FontRecord& font) {
    return font.Name + "-" + std::to_string(font.Size) + "pt" + (font.Bold ? " Bold" : "") +
           (font.Italic ? " Italic" : "");
}

bool ChooseFont(platform::Dialogs& boxes, session::FontRecord& font) {
    const auto choice = boxes.ChooseFont({.Name = font.Name,
                                          .Size = static_cast<double>(font.Size),
                                          .Bold = font.Bold,
                                          .Italic = font.Italic,
                                          .Color = font.ForeColor});
    if (choice) font = ToFontRecord(*choice);
    return choice.has_value();
}

}  // namespace editor
