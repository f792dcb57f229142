#include "editor/SymbolTable.h"

#include <algorithm>
#include <optional>

#include "base/Number.h"
#include "base/RunTimeError.h"
#include "base/ScopeExit.h"
#include "base/Text.h"
#include "base/modLib.h"

namespace editor {
namespace {

constexpr int errOutOfMemory = 7;
constexpr std::size_t lineEndLength = 2;

// The trimmed text on one side of the first `mark`; nothing without the mark.
std::optional<std::string> Before(std::string_view text, char mark) {
    const auto at = text.find(mark);
    if (at == text.npos) return std::nullopt;
    return base::Trim(text.substr(0, at));
}

std::optional<std::string> Behind(std::string_view text, char mark) {
    const auto at = text.find(mark);
    if (at == text.npos) return std::nullopt;
    return base::Trim(text.substr(at + 1));
}

// The digits at the end of a text, "1" without any. Something must stand before them.
std::string_view TrailingDigits(std::string_view text) {
    std::size_t from = text.size();
    while (from > 0 && base::IsDigitChar(text[from - 1])) --from;
    if (from == 0) throw base::RunTimeError(base::errInvalidCall);
    return from == text.size() ? "1" : text.substr(from);
}

void AddRange(std::string_view inner, session::Symbols& symbols) {
    const std::string_view first = inner.substr(0, inner.find(".."));
    std::string_view low = TrailingDigits(first);
    std::string_view high = TrailingDigits(inner);
    if (first.size() < 2) throw base::RunTimeError(base::errInvalidCall);
    // Kept: an index is taken to have one or two digits, whatever its length.
    const bool hasTwo = base::IsDigitChar(first[first.size() - 2]);
    const std::string prefix(first.substr(0, first.size() - (hasTwo ? 2 : 1)));
    if (low > high) std::swap(low, high);  // kept: as text, so that 2 is above 12
    const std::int64_t from = base::TextToInt32(low);
    const std::int64_t to = base::TextToInt32(high);
    if (to - from >= static_cast<std::int64_t>(session::Symbols::MaxCount)) {
        throw base::RunTimeError(errOutOfMemory, "Out of memory");
    }
    for (std::int64_t i = from; i <= to; ++i) symbols.InsertSymbol(prefix + std::to_string(i));
}

void AddList(std::string_view inner, session::Symbols& symbols) {
    while (!inner.empty()) {
        const auto comma = inner.find(',');
        symbols.InsertSymbol(inner.substr(0, comma));
        inner.remove_prefix(comma == inner.npos ? inner.size() : comma + 1);
    }
}

// The three passes over a text.
class Scan {
  public:
    Scan(std::string_view text, session::Symbols& symbols, platform::Dialogs& boxes)
        : text_(text), lower_(base::Lower(text)), symbols_(symbols), boxes_(boxes) {
        // Kept: one comment span is known at most, and its end is "*\", which normal comments lack. Names in
        // comments are names like any others.
        commentStart_ = text_.find("/*");
        if (commentStart_ != text_.npos) commentEnd_ = text_.find("*\\", commentStart_);
    }

    void Run() {
        Pass("pin", &Scan::TakePin);
        Pass("node", &Scan::TakePin);
        Pass("field", &Scan::TakeField);
    }

  private:
    // A word counts anywhere, in the middle of another too, and its line begins with it. Kept: the next
    // search starts three characters into the next line, so that a word at its very start is passed over.
    void Pass(std::string_view word, void (Scan::*take)(std::string_view line)) {
        constexpr std::size_t step = 3;
        for (auto at = lower_.find(word); at != text_.npos; at = lower_.find(word, at + step)) {
            if (IsInComment(at)) continue;
            const std::string_view line = LineFrom(at);
            at += line.size() + lineEndLength;
            (this->*take)(line);
        }
    }

    bool IsInComment(std::size_t at) const {
        return commentEnd_ != text_.npos && commentStart_ <= at && at <= commentEnd_;
    }

    std::string_view LineFrom(std::size_t at) const {
        const auto end = text_.find("\r\n", at);
        if (end == text_.npos) throw base::RunTimeError(base::errInvalidCall);
        return text_.substr(at, end - at);
    }

    void Add(const std::optional<std::string>& declaration) {
        if (declaration) AddSymbols(*declaration, symbols_, boxes_);
    }

    void TakePin(std::string_view line) {
        if (const auto names = Behind(line, '=')) Add(Before(*names, ';'));
    }

    // The field's own name is a symbol, and so are its members.
    void TakeField(std::string_view line) {
        const auto names = Behind(line, '=');
        if (!names || !base::Contains(line, ";")) return;
        const auto blank = line.find_first_of(" \t");
        if (blank != line.npos) Add(Before(line.substr(blank), '='));
        Add(Before(*names, ';'));
    }

    std::string_view text_;
    std::string lower_;
    session::Symbols& symbols_;
    platform::Dialogs& boxes_;
    std::size_t commentStart_ = std::string_view::npos;
    std::size_t commentEnd_ = std::string_view::npos;
};

}  // namespace

void AddSymbols(std::string_view declaration, session::Symbols& symbols, platform::Dialogs& boxes) {
    if (!declaration.starts_with('[')) return symbols.InsertSymbol(declaration);
    bool isAdded = false;
    if (declaration.ends_with(']')) {
        const std::string inner = base::PrintableOnly(declaration.substr(1, declaration.size() - 2));
        const bool isRange = base::Contains(inner, "..");
        const bool isList = base::Contains(inner, ",");
        if (isRange) AddRange(inner, symbols);
        if (isList) AddList(inner, symbols);
        isAdded = isRange || isList;
    }
    if (isAdded) return;
    boxes.Say("Possible syntax error in symbol declaration: " + std::string(declaration) +
              "Unable to add symbol(s) to the symbol list.");
}

void LoadSymbols(const SymbolDesk& desk, std::string_view text, session::Symbols& symbols) {
    const platform::HourglassScope hourglass(desk.Desktop);
    const base::ScopeExit status([&] { desk.ShowStatus(" "); });
    desk.ShowStatus("Loading Symbol Table...");
    Scan(text, symbols, desk.Boxes).Run();
}

void ResetSymbols(const SymbolDesk& desk, std::string_view text, session::Symbols& symbols) {
    {
        const platform::HourglassScope hourglass(desk.Desktop);
        desk.ShowStatus("Resetting Symbol Table...");
        symbols.Clear();
    }
    LoadSymbols(desk, text, symbols);
}

}  // namespace editor
