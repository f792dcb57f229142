#include <algorithm>
#include <charconv>
#include <set>

#include "base/Text.h"
#include "base/modLib.h"
#include "wavrik/WaveReaders.h"

namespace wavrik {
namespace {

constexpr std::string_view white = " \t\r\n\f\x1a";
constexpr std::string_view testValues = "01CKLHZXNP*";
constexpr std::size_t mostRepeats = 1'000'000;
constexpr std::size_t mostValues = 100'000'000;  // of all vectors, repeats counted

class TestReader {
  public:
    TestReader(std::string_view text, const Fields& fields) : text_(WithoutComments(text)), fields_(fields) {}

    Waves Read() {
        while (!AtVectors()) TakeStatement();
        if (columns_ == 0) FailAt(line_, "no ORDER: before VECTORS:");
        std::string_view rest = std::string_view(text_).substr(at_);
        for (; !rest.empty(); ++line_) {
            const auto row = base::TrimView(base::TakeLine(rest));
            if (!row.empty() && row != "\x1a") row[0] == '$' ? TakeCommand(row) : TakeVector(row);
        }
        if (repeat_ != 0) FailAt(repeatLine_, "$REPEAT without a vector");
        if (vectors_ == 0) FailAt(line_, "no vectors");
        return builder_.FinishVectors(vectors_);
    }

  private:
    // An entry of ORDER: the columns that a quoted value stands for.
    struct Entry {
        std::size_t First;
        std::size_t Count;
    };

    void SkipBlanks() {
        const std::size_t next = std::min(text_.find_first_not_of(white, at_), text_.size());
        line_ += LinesIn(std::string_view(text_).substr(at_, next - at_));
        at_ = next;
    }

    // At the head of what comes next; empty if no word stands there.
    std::string Word() const {
        const auto begin = text_.begin() + static_cast<std::ptrdiff_t>(at_);
        return {begin, std::find_if_not(begin, text_.end(), base::IsWordChar)};
    }

    bool AtVectors() {
        SkipBlanks();
        if (at_ == text_.size()) FailAt(line_, "the file ends before VECTORS:");
        const std::string word = Word();
        if (!base::EqualNoCase(word, "VECTORS")) return false;
        const std::size_t colon = text_.find_first_not_of(white, at_ + word.size());
        if (colon == text_.npos || text_[colon] != ':') return false;
        line_ += LinesIn(std::string_view(text_).substr(at_, colon - at_));
        at_ = colon + 1;
        return true;
    }

    static std::size_t LinesIn(std::string_view text) {
        return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    }

    void TakeStatement() {
        const std::size_t end = text_.find(';', at_);
        const std::string word = Word();
        if (end == text_.npos || word.empty())
            FailAt(line_, Shown(text_.substr(at_, std::min(text_.find('\n', at_), text_.size()) - at_)) +
                              " is no statement");
        const auto statement = std::string_view(text_).substr(at_, end - at_);
        const auto tail = base::TrimView(statement.substr(word.size()));
        if (base::EqualNoCase(word, "ORDER") && base::StartsWith(tail, ":")) TakeOrder(tail.substr(1));
        if (base::EqualNoCase(word, "BASE") && base::StartsWith(tail, ":")) TakeBase(tail.substr(1));
        line_ += LinesIn(statement);
        at_ = end + 1;
    }

    void TakeBase(std::string_view tail) {
        const std::string name = base::Upper(base::Trim(tail));
        base_ = name == "OCTAL" ? 8 : name == "DECIMAL" ? 10 : 16;
        if (base_ == 16 && name != "HEX") FailAt(line_, "BASE " + Shown(name));
    }

    void TakeOrder(std::string_view list) {
        if (columns_ != 0) FailAt(line_, "a second ORDER:");
        bool inList = false;
        std::size_t from = 0;
        for (std::size_t i = 0; i <= list.size(); ++i) {
            const char c = i < list.size() ? list[i] : ',';
            if (c == '[' || c == ']') inList = c == '[';
            if (c != ',' || (inList && i < list.size())) continue;
            TakeEntry(base::TrimView(list.substr(from, i - from)));
            from = i + 1;
        }
    }

    void TakeEntry(std::string_view text) {
        if (base::StartsWith(text, "%")) return;  // blanks of the listing
        const auto names = ExpandList(text, fields_);
        if (names.empty()) FailAt(line_, Shown(text) + " is no entry of ORDER:");
        entries_.push_back({columns_, names.size()});
        for (const std::string& name : names) {
            if (!names_.insert(name).second) FailAt(line_, name + " stands twice in ORDER:");
            builder_.AddSignal(name, line_);
            ++columns_;
        }
    }

    void TakeCommand(std::string_view row) {
        const std::string word =
            base::Upper({row.begin(), std::find_if_not(row.begin() + 1, row.end(), base::IsWordChar)});
        if (word != "$REPEAT") {
            if (word != "$MSG" && word != "$TRACE" && word != "$SIMON" && word != "$SIMOFF")
                FailAt(line_, Shown(row) + " is no command");
            return;
        }
        auto count = base::TrimView(row.substr(word.size()));
        if (!count.empty() && count.back() == ';') count = base::TrimView(count.substr(0, count.size() - 1));
        const auto [end, fault] = std::from_chars(count.data(), count.data() + count.size(), repeat_);
        if (fault != std::errc() || end != count.data() + count.size() || repeat_ == 0 ||
            repeat_ > mostRepeats)
            FailAt(line_, Shown(row) + " is no command");
        repeatLine_ = line_;
    }

    void TakeVector(std::string_view row) {
        std::string values;
        for (std::size_t i = 0; i < row.size() && values.size() <= columns_; ++i) {
            const char c = base::UpperChar(row[i]);
            if (c == ' ' || c == '\t') continue;
            if (c == '\'' || c == '"')
                i = TakeQuoted(row, i, values);
            else if (testValues.find(c) != testValues.npos)
                values += c;
            else
                FailAt(line_, Shown(row.substr(i, 1)) + " is no test value");
        }
        if (values.size() != columns_)
            FailAt(line_, (values.size() > columns_ ? "more than " : std::to_string(values.size()) + " of ") +
                              std::to_string(columns_) + " test values");
        for (std::size_t times = std::max<std::size_t>(repeat_, 1); times > 0; --times) {
            if ((vectors_ + 1) * columns_ > mostValues) FailAt(line_, "too many vectors");
            for (std::size_t i = 0; i < columns_; ++i) builder_.AddTest(i, vectors_, values[i], line_);
            ++vectors_;
        }
        repeat_ = 0;
    }

    // Gives the place of the closing quote.
    std::size_t TakeQuoted(std::string_view row, std::size_t at, std::string& values) {
        const std::size_t end = row.find(row[at], at + 1);
        const auto entry = std::find_if(entries_.begin(), entries_.end(),
                                        [&](const Entry& each) { return each.First == values.size(); });
        if (end == row.npos || end == at + 1 || entry == entries_.end())
            FailAt(line_, Shown(row.substr(at)) + " does not stand for an entry of ORDER:");
        const auto digits = row.substr(at + 1, end - at - 1);
        const char letter = base::UpperChar(digits[0]);
        const bool isLetter = std::string_view("KLHZNP*").find(letter) != std::string_view::npos;
        if (digits.size() == 1 && (isLetter || (letter == 'C' && base_ != 16))) {
            values.append(entry->Count, letter);
            return end;
        }
        std::string bits = Bits(digits, entry->Count);
        // A number of double quotes is one that is expected.
        if (row[at] == '"')
            for (char& bit : bits) bit = bit == '1' ? 'H' : bit == '0' ? 'L' : bit;
        values += bits;
        return end;
    }

    // `width` characters 0, 1, X.
    std::string Bits(std::string_view digits, std::size_t width) const {
        std::string bits;
        if (base_ == 10) {
            std::uint64_t number = 0;
            if (base::Upper(digits) == "X") return std::string(width, 'X');
            const auto [end, fault] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
            if (fault != std::errc() || end != digits.data() + digits.size()) FailDigits(digits);
            for (; number != 0; number /= 2) bits.insert(bits.begin(), static_cast<char>('0' + number % 2));
        } else {
            for (const char digit : digits) bits += DigitBits(digit, digits);
        }
        bits = base::PadLeft(std::move(bits), width, '0');
        const std::size_t excess = bits.size() - width;
        if (bits.substr(0, excess).find('1') != bits.npos) FailDigits(digits);
        return bits.substr(excess);
    }

    std::string DigitBits(char digit, std::string_view digits) const {
        const int width = base_ == 8 ? 3 : 4;
        if (base::UpperChar(digit) == 'X') return std::string(static_cast<std::size_t>(width), 'X');
        unsigned number = 0;
        const auto result = std::from_chars(&digit, &digit + 1, number, 16);
        if (result.ec != std::errc() || number >= 1u << width) FailDigits(digits);
        std::string bits;
        for (int bit = width; bit-- > 0;) bits += (number >> bit & 1u) != 0 ? '1' : '0';
        return bits;
    }

    [[noreturn]] void FailDigits(std::string_view digits) const {
        FailAt(line_, Shown(digits) + " does not fit its entry of ORDER:");
    }

    const std::string text_;
    const Fields& fields_;
    std::size_t at_ = 0;
    std::size_t line_ = 1;
    unsigned base_ = 16;
    std::vector<Entry> entries_;
    std::set<std::string> names_;
    std::size_t columns_ = 0;
    std::size_t vectors_ = 0;
    std::size_t repeat_ = 0;  // 0: no $REPEAT is open
    std::size_t repeatLine_ = 0;
    WavesBuilder builder_;
};

}  // namespace

Waves ReadTests(std::string_view text, const Fields& fields) { return TestReader(text, fields).Read(); }

}  // namespace wavrik
