#include "sim/SiScanner.h"

#include <algorithm>

#include "base/Text.h"
#include "base/modLib.h"

namespace sim {
namespace {

// Comments become blanks, their line ends stay, so that lines keep their numbers.
std::string WithoutComments(std::string_view text, MessageLog& log) {
    std::string result(text);
    int line = 1;
    int opened = 0;  // line of the open comment
    bool quoted = false;
    for (std::size_t i = 0; i < result.size(); ++i) {
        const auto pair = std::string_view(result).substr(i, 2);
        const bool opens = opened == 0 && !quoted && pair == "/*";
        const bool closes = opened != 0 && pair == "*/";
        if (opens || closes) {
            opened = opens ? line : 0;
            result[i] = result[i + 1] = ' ';
            ++i;
        } else if (result[i] == '\n') {
            ++line;
            quoted = false;
        } else if (opened != 0) {
            result[i] = ' ';
        } else if (result[i] == '"') {
            quoted = !quoted;
        }
    }
    if (opened != 0) log.Add("0201va", opened);
    return result;
}

// The word at the head of the text, upper case, if a ":" follows it.
std::string SectionName(std::string_view text) {
    const auto end = std::find_if_not(text.begin(), text.end(), base::IsWordChar);
    const auto colon = std::find_if_not(end, text.end(), base::IsBlankChar);
    const bool section = end != text.begin() && colon != text.end() && *colon == ':';
    return section ? base::Upper({text.begin(), end}) : std::string();
}

class Scanner {
  public:
    Scanner(std::string_view text, MessageLog& log) : text_(text), log_(log) {}

    SiText Scan() {
        while (SkipBlanks()) {
            if (SectionName(Rest().substr(0, 40)) == "VECTORS") {
                at_ = text_.find(':', at_) + 1;
                TakeRows();
                return result_;
            }
            TakeStatement();
        }
        log_.Add("0202va", line_, "VECTORS:");
        return result_;
    }

  private:
    std::string_view Rest() const { return text_.substr(at_); }

    void Advance(std::size_t to) {
        line_ += static_cast<int>(std::count(text_.begin() + static_cast<std::ptrdiff_t>(at_),
                                             text_.begin() + static_cast<std::ptrdiff_t>(to), '\n'));
        at_ = to;
    }

    bool SkipBlanks() {
        const auto next = std::min(text_.find_first_not_of(" \t\r\n\f\x1a", at_), text_.size());
        Advance(next);
        return at_ < text_.size();
    }

    void TakeStatement() {
        const auto end = text_.find(';', at_);
        if (end == text_.npos) {
            log_.Add("0202va", line_, ";");
            Advance(text_.size());
            return;
        }
        result_.Statements.push_back({line_, base::Trim(text_.substr(at_, end - at_))});
        Advance(end + 1);
    }

    void TakeRows() {
        while (at_ < text_.size()) {
            const auto end = std::min(text_.find('\n', at_), text_.size());
            auto row = base::Trim(text_.substr(at_, end - at_));
            if (!row.empty() && row != "\x1a") result_.Rows.push_back({line_, std::move(row)});
            at_ = end + 1;
            ++line_;
        }
    }

    std::string_view text_;
    MessageLog& log_;
    std::size_t at_ = 0;
    int line_ = 1;
    SiText result_;
};

}  // namespace

SiText ScanSi(std::string_view text, MessageLog& log) {
    const auto plain = WithoutComments(text, log);
    return Scanner(plain, log).Scan();
}

}  // namespace sim
