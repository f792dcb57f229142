#include "aids/MacroLibrary.h"

#include <algorithm>

#include "aids/MacroGrammar.h"
#include "base/Text.h"
#include "base/modLib.h"

namespace aids {
namespace {

std::int32_t ColorOf(const std::vector<session::KeywordRec>& keywords, std::string_view word) {
    const auto entry = std::find_if(keywords.begin(), keywords.end(), [&](const session::KeywordRec& each) {
        return base::EqualNoCase(each.Name, word);
    });
    return entry == keywords.end() ? session::Magenta : entry->Color;
}

bool IsChosen(std::string_view chosen, const MacroRecord& macro) {
    return !chosen.empty() && base::Contains(chosen, macro.Name);
}

platform::FormatRun Run(std::size_t start, std::size_t end, std::int32_t color) {
    return {static_cast<std::int32_t>(start), static_cast<std::int32_t>(end - start), {.Color = color}};
}

}  // namespace

std::string LibraryPath(const std::string& installRoot, const std::string& name) {
    return installRoot + "\\MACRO\\" + name + ".MAC";
}

std::vector<std::string> LibraryNames(const platform::FileSystem& files, const std::string& installRoot) {
    std::vector<std::string> names;
    for (const std::string& file : files.List(LibraryPath(installRoot, "*")))
        names.push_back(base::StripExtension(file));
    return names;
}

void LoadMacroFile(const platform::FileSystem& files, const std::string& path, MacroTable& table) {
    const std::string text = files.ReadFile(path);
    MacroGrammar grammar(table, MacroGrammar::State::Outside);
    std::string_view rest = text;
    while (!rest.empty()) grammar.Take(TrimBlanks(base::TakeLine(rest)));
}

void AppendToLibrary(platform::FileSystem& files, const std::string& path, const std::string& macro) {
    const std::string old = files.FileExists(path) ? files.ReadFile(path) : "";
    files.WriteFile(path, old + " \r\n" + macro + "\r\n");
}

std::string AddedMacro(std::string_view chosen, const MacroRecord& macro) {
    if (IsChosen(chosen, macro)) return {};
    return "$MACRO " + macro.Name + " " + macro.Args + "\r\n" + macro.Definition + "$MEND\r\n \r\n";
}

std::string AddedHeader(std::string_view chosen, const MacroRecord& macro) {
    if (IsChosen(chosen, macro)) return {};
    return "$MACRO " + macro.Name + " " + macro.Args + " \r\n";
}

std::string NewMacroText(const std::string& name, const std::vector<std::string>& arguments) {
    std::string text = "$MACRO " + name;
    for (const std::string& argument : arguments) text += " " + argument;
    return text + "\r\n\r\n\r\n\r\n$MEND";
}

std::vector<platform::FormatRun> NewMacroFormats(std::string_view text,
                                                 const std::vector<session::KeywordRec>& keywords) {
    constexpr std::size_t head = 6;  // "$MACRO"
    constexpr std::size_t tail = 7;  // a line end and "$MEND"
    std::vector<platform::FormatRun> runs = {Run(0, head, ColorOf(keywords, "$MACRO"))};
    const std::size_t lineEnd = text.find('\r');
    const std::size_t blank = text.find(' ', head + 1);
    if (blank < lineEnd) runs.push_back(Run(blank, lineEnd, session::LightBlue));
    runs.push_back(Run(text.size() - tail, text.size(), ColorOf(keywords, "$MEND")));
    return runs;
}

std::vector<std::string> ArgumentEntries(std::string_view args) {
    std::vector<std::string> entries;
    const std::string all = std::string(TrimBlanks(args)) + " ";
    if (all == " ") return entries;
    for (std::size_t start = 0; start < all.size();) {
        const std::size_t blank = all.find(' ', start);
        entries.push_back(all.substr(start, blank - start) + ":NC");
        start = blank + 1;
    }
    return entries;
}

std::string EntryHead(std::string_view entry) { return std::string(entry.substr(0, entry.find(':') + 1)); }
std::string EntryValue(std::string_view entry) { return std::string(entry.substr(entry.find(':') + 1)); }

std::string ReferenceText(const std::string& name, const std::vector<std::string>& entries) {
    std::string text = name;
    for (const std::string& entry : entries) text += " " + EntryValue(entry);
    return text + ";\r\n";
}

}  // namespace aids
