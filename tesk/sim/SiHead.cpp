#include "sim/SiHead.h"

#include <algorithm>
#include <map>
#include <set>

#include "base/Text.h"
#include "base/modLib.h"
#include "sim/SiOrder.h"

namespace sim {
namespace {

constexpr std::string_view white = " \t\r\n\f\x1a";

// Header texts are compared with runs of blanks made one.
std::string Folded(std::string_view text) {
    std::string folded;
    for (const char c : text) {
        const bool blank = c == ' ' || c == '\t' || c == '\r' || c == '\n';
        if (!blank) folded += c;
        if (blank && !folded.empty() && folded.back() != ' ') folded += ' ';
    }
    return base::Trim(folded);
}

class Reader {
  public:
    Reader(SiLines& lines, const AbsDesign& design, MessageLog& log, SiHead& head)
        : lines_(lines), design_(design), log_(log), head_(head) {}

    bool Read(std::string& rest) {
        const bool found = FindVectors(rest);
        CompareHeader();
        if (head_.Columns.empty()) {
            Add("0202va", 0, "ORDER:");
            return false;
        }
        WarnOfInputsLeftOut();
        return found;
    }

  private:
    void Add(MessageCode code, int line, std::string_view detail) {
        log_.Add(code, line, base::DisplayUtf8(detail.substr(0, 120)));
    }

    // Takes the statements; true at VECTORS:.
    bool FindVectors(std::string& rest) {
        while (SkipWhite()) {
            const std::size_t vectors = AfterVectors();
            if (vectors != text_.npos) {
                rest = text_.substr(vectors);
                return true;
            }
            if (!TakeStatement()) break;
        }
        if (lines_.OpenComment() != 0) log_.Add("0201va", lines_.OpenComment());
        Add("0202va", lines_.Number(), "VECTORS:");
        return false;
    }

    // Adds the next line to the text; false at the end.
    bool More() {
        std::string_view line;
        if (!lines_.Next(line)) return false;
        if (text_.empty()) line_ = lines_.Number();
        text_.append(line).append("\n");
        return true;
    }

    // To the head of what comes next.
    bool SkipWhite() {
        for (;;) {
            const std::size_t start = std::min(text_.find_first_not_of(white), text_.size());
            line_ += static_cast<int>(
                std::count(text_.begin(), text_.begin() + static_cast<std::ptrdiff_t>(start), '\n'));
            text_.erase(0, start);
            if (!text_.empty()) return true;
            if (!More()) return false;
        }
    }

    // The place behind "VECTORS:" at the head of the text; npos if something else stands there.
    std::size_t AfterVectors() {
        const auto end = std::find_if_not(text_.begin(), text_.end(), base::IsWordChar);
        if (base::Upper({text_.begin(), end}) != "VECTORS") return text_.npos;
        const auto word = static_cast<std::size_t>(end - text_.begin());
        std::size_t colon = word;
        while ((colon = text_.find_first_not_of(white, colon)) == text_.npos) {
            colon = text_.size();
            if (!More()) return text_.npos;
        }
        return text_[colon] == ':' ? colon + 1 : text_.npos;
    }

    bool TakeStatement() {
        std::size_t end = 0;
        for (std::size_t from = 0; (end = text_.find(';', from)) == text_.npos;) {
            from = text_.size();
            if (text_.size() > SiLimits::LineBytes) {
                Add("0210va", line_, "a statement of more than 1 megabyte");
                return false;
            }
            if (More()) continue;
            Add("0202va", line_, ";");
            return false;
        }
        Dispatch(base::Trim(std::string_view(text_).substr(0, end)));
        line_ += static_cast<int>(
            std::count(text_.begin(), text_.begin() + static_cast<std::ptrdiff_t>(end), '\n'));
        text_.erase(0, end + 1);
        return true;
    }

    void Dispatch(const std::string& text) {
        const auto end = std::find_if_not(text.begin(), text.end(), base::IsWordChar);
        const auto word = base::Upper({text.begin(), end});
        auto tail = base::Trim({end, text.end()});
        const bool section = !tail.empty() && tail[0] == ':';
        if (section) tail = base::Trim(std::string_view(tail).substr(1));
        if (word == "ORDER" && section) {
            TakeOrder(tail);
        } else if (word == "BASE" && section) {
            TakeBase(tail);
        } else if (!TakeHeader(word, tail)) {
            Add("0203va", line_, word.empty() ? text : word);
        }
    }

    bool TakeHeader(const std::string& word, const std::string& text) {
        for (const auto& keyword : model::headerWords) {
            if (base::Upper(keyword.Name) != word &&
                (keyword.Short.empty() || base::Upper(keyword.Short) != word))
                continue;
            header_[std::string(keyword.Name)] = text;
            return true;
        }
        return false;
    }

    void CompareHeader() {
        for (const auto& keyword : model::headerWords) {
            const std::string name(keyword.Name);
            const auto designs = design_.Header.find(name);
            const auto own = header_.find(name);
            const auto expected = designs == design_.Header.end() ? std::string() : Folded(designs->second);
            const auto found = own == header_.end() ? std::string() : Folded(own->second);
            const bool anyCase = name == "Device" || name == "Format";
            const bool same = anyCase ? base::EqualNoCase(expected, found) : expected == found;
            if (!same) Add("0204va", 0, name + " is \"" + found + "\", the design's is \"" + expected + "\"");
        }
    }

    void TakeOrder(const std::string& text) {
        if (!head_.Order.empty()) return Add("0203va", line_, "second ORDER");
        head_.Order = ReadOrder(text, line_, design_, log_);
        for (const auto& item : head_.Order)
            head_.Columns.insert(head_.Columns.end(), item.Nets.begin(), item.Nets.end());
    }

    void TakeBase(const std::string& text) {
        static const std::map<std::string, unsigned> bases{{"OCTAL", 8}, {"DECIMAL", 10}, {"HEX", 16}};
        const auto found = bases.find(base::Upper(text));
        if (found == bases.end()) return Add("0203va", line_, "BASE " + text);
        head_.Base = found->second;
    }

    void WarnOfInputsLeftOut() {
        const std::set<std::size_t> listed(head_.Columns.begin(), head_.Columns.end());
        for (std::size_t i = 0; i < design_.Nets.size(); ++i) {
            const auto& net = design_.Nets[i];
            if (net.Kind == NetKind::Input && !listed.contains(i)) Add("0205va", 0, net.Name);
        }
    }

    SiLines& lines_;
    const AbsDesign& design_;
    MessageLog& log_;
    SiHead& head_;
    std::string text_;  // what is read and not yet taken
    int line_ = 0;      // of its head
    std::map<std::string, std::string> header_;
};

}  // namespace

bool ReadHead(SiLines& lines, const AbsDesign& design, MessageLog& log, SiHead& head, std::string& rest) {
    return Reader(lines, design, log, head).Read(rest);
}

}  // namespace sim
