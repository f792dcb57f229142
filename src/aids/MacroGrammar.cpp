#include "aids/MacroGrammar.h"

#include <algorithm>

#include "base/RunTimeError.h"
#include "base/Text.h"

namespace aids {
namespace {

constexpr std::string_view macroWord = "$MACRO";
constexpr std::string_view endWord = "$MEND";

// A text without `$MEND` is read again and again from each of its `$MACRO`: there is an end to what it
// yields.
constexpr std::size_t maxNames = 32'767;
constexpr std::size_t maxDefinition = std::size_t{1} << 26;  // bytes
constexpr int errOutOfMemory = 7;

void TakeHeader(std::string_view line, MacroTable& table) {
    const std::string_view header = TrimBlanks(line.substr(std::min(macroWord.size(), line.size())));
    const std::size_t blank = header.find(' ');
    MacroRecord& macro = table.Current();
    // Kept: without a blank all of it counts as arguments.
    macro.Name = blank == std::string_view::npos ? "" : header.substr(0, blank);
    macro.Args = blank == std::string_view::npos ? header : TrimBlanks(header.substr(blank));
    if (table.Names.size() >= maxNames) throw base::RunTimeError(errOutOfMemory, "Out of memory");
    table.Names.push_back(macro.Name);
}

}  // namespace

std::string_view TrimBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// All words that are looked for begin with "$", which is rare: that is what makes this fast.
std::size_t FindNoCase(std::string_view text, std::string_view word, std::size_t from) {
    for (std::size_t at = text.find(word[0], from); at != std::string_view::npos;
         at = text.find(word[0], at + 1)) {
        if (base::EqualNoCase(text.substr(at, word.size()), word)) return at;
    }
    return std::string_view::npos;
}

MacroGrammar::Line MacroGrammar::Take(std::string_view line) {
    constexpr auto npos = std::string_view::npos;
    if (FindNoCase(line, macroWord) != npos) {
        TakeHeader(line, table_);
        state_ = State::Inside;
    } else if (FindNoCase(line, endWord) != npos) {
        if (state_ == State::Inside) ++table_.Count;
        state_ = State::Outside;
        return Line::End;
    } else if (state_ == State::Inside) {
        std::string& definition = table_.Current().Definition;
        if (definition.size() + line.size() > maxDefinition)
            throw base::RunTimeError(errOutOfMemory, "Out of memory");
        definition.append(line).append("\r\n");
    }
    return Line::Other;
}

MacroRecord& MacroTable::Current() {
    if (Count >= Size) throw base::RunTimeError(base::errSubscript);
    if (Records.size() <= Count) Records.resize(Count + 1);
    return Records[Count];
}

const MacroRecord& MacroTable::At(int index) const {
    static const MacroRecord empty;
    const auto i = static_cast<std::size_t>(index);
    if (index < 0 || i >= Size) throw base::RunTimeError(base::errSubscript);
    return i < Records.size() ? Records[i] : empty;
}

}  // namespace aids
