#include "cpld/SvfStatements.h"

#include "base/RunTimeError.h"
#include "base/Text.h"
#include "model/Number.h"

namespace cpld {
namespace {

constexpr std::size_t mostBits = 4096;  // of a shift

std::size_t LengthOf(const SvfStatement& statement) {
    const std::string word = statement.Words.size() > 1 ? statement.Words[1] : "";
    const auto bits = model::WholeNumber<std::size_t>(word);
    if (!bits || *bits > mostBits) SvfFault(statement.Line, statement.Words[0] + " needs a number of bits");
    return *bits;
}

// The word stands in parentheses.
std::vector<bool> BitsOf(const std::string& word, std::size_t count, std::size_t line) {
    std::vector<bool> bits(count);
    std::size_t at = 0;
    for (std::size_t i = word.size() - 1; i-- > 1; at += 4) {
        const auto digit = std::string_view("0123456789ABCDEF").find(word[i]);
        if (digit == std::string_view::npos) SvfFault(line, "a value is not hexadecimal");
        for (std::size_t k = 0; k < 4; ++k) {
            const bool bit = (digit >> k & 1) != 0;
            if (at + k < count)
                bits[at + k] = bit;
            else if (bit)
                SvfFault(line, "a value has more bits than are shifted");
        }
    }
    return bits;
}

}  // namespace

void SvfFault(std::size_t line, const std::string& what) {
    throw base::RunTimeError(base::errTypeMismatch, "line " + std::to_string(line) + ": " + what);
}

char SvfStatements::Take() {
    const char c = text_[at_++];
    if (c == '\n') ++line_;
    const bool isBlank = c == ' ' || c == '\t' || c == '\r' || c == '\n';
    if (!isBlank && (c < ' ' || c > '~')) SvfFault(line_, "not a text of a JTAG player");
    return isBlank ? ' ' : base::UpperChar(c);
}

void SvfStatements::SkipComment() {
    const auto end = text_.find('\n', at_);
    at_ = end == text_.npos ? text_.size() : end;
}

std::optional<SvfStatement> SvfStatements::Next() {
    SvfStatement statement;
    std::string word;
    bool inside = false;  // parentheses
    const auto end = [&] {
        if (!word.empty()) statement.Words.push_back(std::move(word));
        word.clear();
    };
    while (at_ < text_.size()) {
        if (text_[at_] == '!' || text_.substr(at_, 2) == "//") {
            SkipComment();
            continue;
        }
        const std::size_t line = line_;
        const char c = Take();
        if (c == ' ') {
            if (!inside) end();
            continue;
        }
        if (statement.Line == 0) statement.Line = line;
        if (c == ';' && !inside) {
            end();
            if (statement.Words.empty()) SvfFault(line, "a statement without words");
            return statement;
        }
        if (inside ? c == '(' || c == ';' : c == ')') SvfFault(line, "parentheses that do not match");
        if (c == '(') end();
        word += c;
        inside = inside ? c != ')' : c == '(';
        if (c == ')') end();
    }
    if (statement.Line != 0) SvfFault(statement.Line, "a statement without its end; the file is cut");
    return std::nullopt;
}

SvfShift ShiftOf(const SvfStatement& statement, const SvfShift& before) {
    const std::size_t count = LengthOf(statement);
    const bool same = count == before.Tdi.size();
    SvfShift shift{
        same ? before.Tdi : std::vector<bool>(), {}, same ? before.Mask : std::vector<bool>(count, true)};
    bool hasTdi = same && count > 0;
    for (std::size_t i = 2; i < statement.Words.size(); i += 2) {
        const auto& name = statement.Words[i];
        const bool hasValue = i + 1 < statement.Words.size() && statement.Words[i + 1].front() == '(';
        if (!hasValue) SvfFault(statement.Line, "\"" + name + "\" without a value in parentheses");
        auto bits = BitsOf(statement.Words[i + 1], count, statement.Line);
        if (name == "TDI")
            shift.Tdi = std::move(bits), hasTdi = true;
        else if (name == "TDO")
            shift.Tdo = std::move(bits), shift.HasTdo = true;
        else if (name == "MASK")
            shift.Mask = std::move(bits);
        else if (name != "SMASK")
            SvfFault(statement.Line, "\"" + name + "\" is not known");
    }
    if (!hasTdi && count > 0) SvfFault(statement.Line, "a shift without TDI");
    return shift;
}

}  // namespace cpld
