#include "aids/MacroCommands.h"

#include "aids/MacroGrammar.h"
#include "base/Text.h"
#include "base/modLib.h"

namespace aids {

std::string FolderOf(session::App& app, const session::Document& document) {
    if (document.FileName().empty()) return app.Host.Files.CurrentDirectory() + "\\";
    return base::DirectoryPart(document.FileName());
}

void InsertDefinition(session::App& app, session::Document& document) {
    constexpr std::string_view include = "$INCLUDE";
    constexpr std::size_t lineEnd = 2;
    const std::string text = app.Host.Clip.Text();
    if (base::StartsWith(text, include) && text.size() >= include.size() + lineEnd) {
        const std::string name(TrimBlanks(
            std::string_view(text).substr(include.size(), text.size() - include.size() - lineEnd)));
        const std::string target = FolderOf(app, document) + name;
        if (!app.Host.Files.FileExists(target))
            app.Host.Files.CopyFile(app.State.InstallRoot + "\\MACRO\\" + name, target);
    }
    PasteMacro(app, document);
}

void PasteMacro(session::App& app, session::Document& document) {
    if (!app.Host.Clip.HasText()) return;
    platform::RichTextBox& box = document.txtText();
    const std::int32_t start = box.SelStart();
    box.SendMessage(platform::WM_PASTE);
    const std::int32_t end = box.SelStart();
    app.Hall.Editor->HighlightRange(document, start, end);
    box.SetSelStart(end);
}

std::vector<std::string> SymbolNames(session::App& app, session::Document& document) {
    constexpr std::string_view none = "NC";
    if (app.State.AutoSymbolUpdate) app.Hall.DocumentCommands.Run("mnuMacroSym", document, -1);
    std::vector<std::string> names;
    for (std::size_t i = 1; i <= document.Symbols.Count(); ++i) names.push_back(document.Symbols.Item(i));
    const std::size_t slot = document.Symbols.FindSymbolSlot(none);
    if (slot == 0 || !base::EqualNoCase(document.Symbols.Item(slot), none)) names.emplace_back(none);
    return names;
}

}  // namespace aids
