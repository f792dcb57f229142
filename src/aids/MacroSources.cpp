#include "aids/MacroSources.h"

#include <algorithm>

#include "aids/MacroGrammar.h"
#include "base/RunTimeError.h"
#include "base/ScopeExit.h"
#include "base/Text.h"

namespace aids {
namespace {

constexpr std::string_view includeWord = "$INCLUDE";
constexpr std::string_view macroWord = "$MACRO";
constexpr int errOutOfStack = 28;
constexpr auto npos = std::string_view::npos;

std::string_view LineAt(std::string_view text, std::size_t start) {
    return text.substr(start, text.find("\r\n", start) - start);
}

// The definition that begins at `start`, up to its `$MEND`.
void ReadDefinition(std::string_view text, std::size_t start, MacroTable& table) {
    MacroGrammar grammar(table, MacroGrammar::State::Outside);
    while (start < text.size()) {
        const std::string_view line = TrimBlanks(LineAt(text, start));
        if (grammar.Take(line) == MacroGrammar::Line::End) return;
        start += line.size() + 2;  // kept: blanks that were trimmed are not counted
    }
}

}  // namespace

void MacroSources::ReadDesign(std::string_view text) {
    for (std::size_t at = FindNoCase(text, includeWord); at != npos;
         at = FindNoCase(text, includeWord, at + includeWord.size() + 1)) {
        const std::string_view line = TrimBlanks(LineAt(text, at));
        const std::size_t name = std::min(includeWord.size() + 1, line.size());
        ReadMacroFile(folder_ + std::string(TrimBlanks(line.substr(name))));
    }
    for (std::size_t at = FindNoCase(text, macroWord); at != npos;
         at = FindNoCase(text, macroWord, at + macroWord.size() + 1))
        ReadDefinition(text, at, table_);
}

void MacroSources::ReadMacroFile(const std::string& path) {
    if (!files_.FileExists(path)) {
        boxes_.Say("Unable to locate the include file: " + path +
                   "\r\nMake sure the specified file is present.");
        return;
    }
    const bool isOpen = std::any_of(open_.begin(), open_.end(),
                                    [&](const std::string& each) { return base::EqualNoCase(each, path); });
    if (isOpen) throw base::RunTimeError(errOutOfStack, path + " includes itself");
    open_.push_back(path);
    const base::ScopeExit close([this] { open_.pop_back(); });
    ReadLines(files_.ReadFile(path));
}

void MacroSources::ReadLines(std::string_view text) {
    MacroGrammar grammar(table_, MacroGrammar::State::Inside);
    while (!text.empty()) {
        const std::string_view line = TrimBlanks(base::TakeLine(text));
        if (FindNoCase(line, includeWord) != npos)
            ReadNested(line);
        else
            grammar.Take(line);
    }
}

// Kept: the blank in front stays and the last letter goes.
void MacroSources::ReadNested(std::string_view line) {
    const std::size_t head = includeWord.size();
    if (line.size() <= head) throw base::RunTimeError(base::errInvalidCall);
    ReadMacroFile(folder_ + base::Mid(line, head + 1, line.size() - head - 1));
}

}  // namespace aids
