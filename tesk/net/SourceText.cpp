#include "net/SourceText.h"

#include <algorithm>
#include <set>

#include "base/Text.h"
#include "base/modLib.h"
#include "model/Number.h"

namespace net {
namespace {

struct Token {
    std::string Text;  // words of VHDL in lower case; a string with its quotes
    std::size_t From = 0, To = 0;
};

bool IsWord(const Token& token) {
    return base::IsWordChar(token.Text[0]) && !base::IsDigitChar(token.Text[0]);
}

class Cutter {
  public:
    Cutter(std::string_view text, Tongue tongue) : text_(text), isVhdl_(tongue == Tongue::Vhdl) {}

    std::vector<Token> Cut() {
        std::vector<Token> tokens;
        while (at_ < text_.size()) {
            if (SkipComment()) continue;
            const std::size_t from = at_;
            const char c = text_[at_];
            if (base::IsBlankChar(c)) {
                ++at_;
                continue;
            }
            if (c == '"')
                at_ = Behind("\"", at_ + 1);
            else if (c == '\\')
                at_ = isVhdl_ ? Behind("\\", at_ + 1) : text_.find_first_of(" \t\r\n", at_);
            else if (base::IsWordChar(c))
                while (at_ < text_.size() && base::IsWordChar(text_[at_])) ++at_;
            else
                at_ += !isVhdl_ && (Is("(*") || Is("*)")) && !Is("(*)") ? 2 : 1;
            at_ = std::min(at_, text_.size());
            std::string word(text_.substr(from, at_ - from));
            tokens.push_back({isVhdl_ && c != '"' && c != '\\' ? base::Lower(word) : word, from, at_});
        }
        return tokens;
    }

  private:
    bool Is(std::string_view what) const { return text_.substr(at_, what.size()) == what; }
    std::size_t Behind(std::string_view what, std::size_t from) const {
        const std::size_t found = text_.find(what, from);
        return found == text_.npos ? text_.size() : found + what.size();
    }
    bool SkipComment() {
        const std::size_t from = at_;
        if (Is("/*"))
            at_ = Behind("*/", at_ + 2);
        else if (isVhdl_ ? Is("--") : Is("//"))
            at_ = Behind("\n", at_);
        // A quoted character, which may be a quotation mark; a tick behind a name is something else.
        else if (isVhdl_ && text_[at_] == '\'' && text_.substr(at_ + 2, 1) == "'")
            at_ += 3;
        return at_ != from;
    }

    std::string_view text_;
    bool isVhdl_;
    std::size_t at_ = 0;
};

const std::string& At(const std::vector<Token>& tokens, std::size_t i) {
    static const std::string none(1, '\0');
    return i < tokens.size() ? tokens[i].Text : none;
}

bool HasVerilogPorts(const std::vector<Token>& tokens, std::size_t i) {
    if (At(tokens, i) == "#") {
        int depth = 0;
        do {
            ++i;
            depth += At(tokens, i) == "(" ? 1 : At(tokens, i) == ")" ? -1 : 0;
        } while (i < tokens.size() && depth > 0);
        ++i;
    }
    return At(tokens, i) == "(" && At(tokens, i + 1) != ")";
}

bool HasVhdlPorts(const std::vector<Token>& tokens, std::size_t i) {
    for (; i < tokens.size() && At(tokens, i) != "end" && At(tokens, i) != "architecture"; ++i)
        if (At(tokens, i) == "port") return true;
    return false;
}

// Whether a unit's name at this place uses it: as an instance or a component, not where the unit itself
// begins or ends.
bool IsUse(const std::vector<Token>& tokens, std::size_t i, Tongue tongue) {
    const std::string& before = i > 0 ? At(tokens, i - 1) : At(tokens, tokens.size());
    if (tongue == Tongue::Verilog) return before != "module" && before != ":";
    const bool beginsHere = before == "entity" && At(tokens, i + 1) == "is";
    const bool endsHere = before == "end" || (before == "entity" && i > 1 && At(tokens, i - 2) == "end");
    return !beginsHere && !endsHere && before != "of";
}

bool IsPinAttribute(const std::string& word) {
    const std::string lower = base::Lower(word);
    return lower == "chip_pin" || lower == "loc" || lower == "pinnum";
}

std::string Unquoted(const std::string& text) {
    return text.size() >= 2 && text.front() == '"' ? text.substr(1, text.size() - 2) : "";
}

Pins VhdlPins(const std::vector<Token>& tokens) {
    Pins pins;
    for (std::size_t i = 0; i + 3 < tokens.size(); ++i) {
        if (tokens[i].Text != "attribute" || !IsPinAttribute(tokens[i + 1].Text) || At(tokens, i + 2) != "of")
            continue;
        std::vector<std::string> names;
        for (i += 3; i < tokens.size() && At(tokens, i) != ":"; ++i)
            if (IsWord(tokens[i])) names.push_back(tokens[i].Text);
        for (; i < tokens.size() && At(tokens, i) != ";"; ++i) {
            if (tokens[i].Text[0] != '"') continue;
            for (const std::string& name : names) pins[name] = PinNumbers(Unquoted(tokens[i].Text));
        }
    }
    return pins;
}

// Behind "(* loc = "1,2" *)" the name is the first word that is no keyword and in no brackets.
std::string DeclaredName(const std::vector<Token>& tokens, std::size_t i) {
    static const std::set<std::string> words{"input", "output", "inout", "wire", "reg", "logic", "signed"};
    int depth = 0;
    for (; i < tokens.size(); ++i) {
        const std::string& text = tokens[i].Text;
        depth += text == "[" ? 1 : text == "]" ? -1 : 0;
        if (depth == 0 && IsWord(tokens[i]) && !words.contains(text)) return base::Lower(text);
        if (text == ";" || text == ")") break;
    }
    return "";
}

Pins VerilogPins(const std::vector<Token>& tokens) {
    Pins pins;
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        if (tokens[i].Text != "(*") continue;
        std::string numbers;
        for (++i; i < tokens.size() && tokens[i].Text != "*)"; ++i)
            if (IsPinAttribute(tokens[i].Text) && At(tokens, i + 1) == "=") numbers = At(tokens, i + 2);
        const std::string name = numbers.empty() ? "" : DeclaredName(tokens, i + 1);
        if (!name.empty()) pins[name] = PinNumbers(Unquoted(numbers));
    }
    return pins;
}

bool ReadPinLine(std::string_view line, PinFile& file) {
    const auto words = base::Words(line);
    if (words.size() < 2) return false;
    const std::string what = base::Lower(words[0]);
    if (what == "top" && words.size() == 2) {
        file.Top = words[1];
    } else if (what == "device" && words.size() == 2) {
        file.Device = base::Upper(words[1]) == "VIRTUAL" ? "virtual" : base::Upper(words[1]);
    } else if (what == "pin" && words.size() > 2) {
        const auto rest = static_cast<std::size_t>(words[1].data() + words[1].size() - line.data());
        std::vector<int> numbers = PinNumbers(line.substr(rest));
        if (numbers.empty()) return false;
        std::string name = base::Lower(words[1]);
        std::replace(name.begin(), name.end(), '[', '(');
        std::replace(name.begin(), name.end(), ']', ')');
        file.Pins[name] = std::move(numbers);
    } else {
        return false;
    }
    return true;
}

}  // namespace

std::vector<Unit> UnitsOf(std::string_view text, Tongue tongue) {
    const std::vector<Token> tokens = Cutter(text, tongue).Cut();
    const bool isVhdl = tongue == Tongue::Vhdl;
    std::vector<Unit> units;
    for (std::size_t i = 0; i + 1 < tokens.size(); ++i) {
        if (tokens[i].Text != (isVhdl ? "entity" : "module") || !IsWord(tokens[i + 1])) continue;
        if (isVhdl && At(tokens, i + 2) != "is") continue;
        const bool hasPorts = isVhdl ? HasVhdlPorts(tokens, i + 3) : HasVerilogPorts(tokens, i + 2);
        units.push_back({tokens[i + 1].Text, hasPorts});
    }
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        for (Unit& unit : units)
            if (tokens[i].Text == unit.Name && IsUse(tokens, i, tongue)) unit.IsUsed = true;
    }
    return units;
}

std::optional<std::string> TopOf(const std::vector<Unit>& units, std::string_view fileName,
                                 std::vector<std::string>& candidates) {
    candidates.clear();
    bool hasUnused = false;
    for (const Unit& unit : units) hasUnused |= unit.HasPorts && !unit.IsUsed;
    // A test bench uses the top as well: then the one that it uses counts, if there is but one.
    for (const Unit& unit : units)
        if (unit.HasPorts && (!unit.IsUsed || !hasUnused)) candidates.push_back(unit.Name);
    if (candidates.size() == 1) return candidates[0];
    for (const std::string& name : candidates)
        if (base::EqualNoCase(name, fileName)) return name;
    return std::nullopt;
}

std::vector<int> PinNumbers(std::string_view text) {
    std::vector<int> numbers;
    const std::string spaced = base::ReplaceAll(text, ",", " ");
    for (std::string_view word : base::Words(spaced)) {
        if (base::UpperChar(word[0]) == 'P') word.remove_prefix(1);
        const int number = model::WholeNumber<int>(word).value_or(0);
        if (number < 1 || number > 1024) return {};
        numbers.push_back(number);
    }
    return numbers;
}

Pins AttributePins(std::string_view text, Tongue tongue) {
    const std::vector<Token> tokens = Cutter(text, tongue).Cut();
    return tongue == Tongue::Vhdl ? VhdlPins(tokens) : VerilogPins(tokens);
}

std::string WithoutAttributes(std::string text) {
    const std::vector<Token> tokens = Cutter(text, Tongue::Vhdl).Cut();
    for (std::size_t i = 0; i + 2 < tokens.size(); ++i) {
        if (tokens[i].Text != "attribute" || tokens[i + 2].Text != "of") continue;
        const std::size_t from = tokens[i].From;
        while (i + 1 < tokens.size() && tokens[i].Text != ";") ++i;
        for (std::size_t at = from; at < tokens[i].To; ++at)
            if (!base::IsLineEnd(text[at])) text[at] = ' ';
    }
    return text;
}

PinFile ReadPinFile(std::string_view text) {
    PinFile file;
    int number = 0;
    for (std::string_view line : base::LineViews(text)) {
        ++number;
        for (const std::string_view comment : {"#", "--", "//"}) line = line.substr(0, line.find(comment));
        line = base::TrimView(line);
        if (!line.empty() && !ReadPinLine(line, file)) file.BadLines.push_back(number);
    }
    return file;
}

}  // namespace net
