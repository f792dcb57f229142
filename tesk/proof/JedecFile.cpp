#include "proof/JedecFile.h"

#include <algorithm>
#include <charconv>

#include "base/Text.h"
#include "model/Jedec.h"
#include "model/Number.h"

namespace proof {
namespace {

constexpr std::string_view blanks = " \t\r\n";
bool IsBlank(char c) { return blanks.find(c) != blanks.npos; }

// Takes digits off the front; nothing if there are none or too many.
std::optional<std::size_t> TakeNumber(std::string_view& text) {
    std::size_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{}) return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return value;
}

std::int32_t LineEnds(std::string_view text) {
    return static_cast<std::int32_t>(std::count(text.begin(), text.end(), '\n'));
}
std::string_view BlanksOf(std::string_view text) { return text.substr(0, text.find_first_not_of(blanks)); }

// Whether what stands first is a field already: some writers leave the specification out.
bool IsField(std::string_view text) {
    text = base::TrimView(text);
    if (text.size() < 2) return false;
    const bool isCount = text[0] == 'Q' && (text[1] == 'F' || text[1] == 'P' || text[1] == 'V');
    if (isCount || text[0] == 'F' || text[0] == 'G') {
        text.remove_prefix(isCount ? 2 : 1);
        return TakeNumber(text) && text.empty();
    }
    if (text[0] != 'L') return false;
    text.remove_prefix(1);
    return TakeNumber(text) && !text.empty() && IsBlank(text[0]) &&
           text.find_first_not_of("01 \t\r\n") == text.npos;
}

class Reader {
  public:
    explicit Reader(std::string_view text) : text_(text) {}

    JedecFile Read() {
        if (text_.size() > JedecLimits::FileBytes) {
            Tell("7303tc", 0, "more than " + std::to_string(JedecLimits::FileBytes >> 20) + " MB");
            return std::move(file_);
        }
        const JedecFrame frame = FrameOf(text_);
        file_.Specification = frame.Specification;
        for (const JedecField& field : frame.Fields) {
            if (file_.Messages.size() >= JedecLimits::Messages) break;
            TakeField(field);
        }
        Finish(frame);
        return std::move(file_);
    }

  private:
    void Tell(MessageCode code, std::int32_t line, const std::string& detail) {
        file_.Messages.push_back(model::MakeMessage(code.Entry(), {-1, line, 0}, detail));
    }
    void Refuse(const std::string& why) { Tell("7302tc", line_, why); }

    void TakeField(const JedecField& field) {
        line_ = field.Line;
        if (field.Text.empty()) return;
        const auto body = field.Text.substr(1);
        switch (field.Text[0]) {
            case 'Q':
                return TakeCount(body);
            case 'F':
            case 'G':
                return TakeBit(field.Text[0], base::TrimView(body));
            case 'L':
                return TakeFuses(body);
            case 'C':
                return TakeChecksum(base::TrimView(body));
            case 'P':
                return TakePins(body);
            case 'V':
                return TakeVector(body);
            case 'X':
                return TakeOpen(base::TrimView(body));
            default:
                return TakeText(field.Text[0], body);
        }
    }

    // Nothing of these is looked into; A, D, R, S and T concern the tester.
    void TakeText(char letter, std::string_view body) {
        if (letter == 'N') {
            file_.Notes.emplace_back(body);
        } else if (letter == 'E') {
            file_.Electrical = body;
        } else if (letter == 'U') {
            file_.UserData = body;
        } else if (letter == 'J') {
            file_.Identification = body;
        } else if (std::string_view("ADRST").find(letter) == std::string_view::npos && !unknown_) {
            unknown_ = true;
            const auto code = static_cast<unsigned char>(letter);
            Tell("7306tc", line_,
                 code > ' ' && code < 127 ? std::string(1, letter) : "code " + std::to_string(code));
        }
    }

    void TakeCount(std::string_view body) {
        const char which = body.empty() ? ' ' : body[0];
        auto digits = base::TrimView(body.substr(body.empty() ? 0 : 1));
        const auto count = TakeNumber(digits);
        const std::string name = std::string("Q") + which;
        if (!count || !digits.empty()) return Refuse(name + " without a number");
        const std::size_t most = which == 'F'   ? JedecLimits::Fuses
                                 : which == 'P' ? JedecLimits::Pins
                                                : JedecLimits::Vectors;
        if (*count > most)
            return Tell("7303tc", line_,
                        name + std::to_string(*count) + ", the limit is " + std::to_string(most));
        if (which == 'P') file_.Pins = *count;
        if (which != 'F') return;
        if (*count == 0 || *count < file_.Fuses.size())
            return Refuse("QF" + std::to_string(*count) + ", there are more fuses");
        file_.FuseCount = *count;
        Grow(*count);
    }

    void TakeBit(char letter, std::string_view body) {
        if (letter == 'G' && (body == "2" || body == "3")) body = "1";  // further degrees of security
        if (body != "0" && body != "1") return Refuse(std::string(1, letter) + " is neither 0 nor 1");
        if (letter == 'G') file_.Secure = body == "1";
        if (letter == 'F') default_ = body == "1";
    }

    void Grow(std::size_t count) {
        file_.Fuses.resize(count, false);
        isTold_.resize(count, false);
    }

    void TakeFuses(std::string_view body) {
        body = base::TrimView(body);
        const auto first = TakeNumber(body);
        if (!first) return Refuse("L without a number");
        const std::size_t most = file_.FuseCount != 0 ? file_.FuseCount : JedecLimits::Fuses;
        std::size_t at = *first;
        for (const char c : body) {
            if (IsBlank(c)) continue;
            if (c != '0' && c != '1')
                return Refuse("L" + std::to_string(*first) + " holds a sign that is neither 0 nor 1");
            if (at >= most)
                return Refuse("L" + std::to_string(*first) + " goes beyond fuse " + std::to_string(most - 1));
            if (at >= file_.Fuses.size()) Grow(at + 1);
            file_.Told += !isTold_[at];
            isTold_[at] = true;
            file_.Fuses[at++] = c == '1';
        }
    }

    void TakeChecksum(std::string_view body) {
        const auto sum = model::WholeNumber<std::uint16_t>(body, 16);
        if (!sum) return Refuse("C without four hexadecimal digits");
        checksum_ = *sum;
        checksumLine_ = line_;
    }

    void TakePins(std::string_view body) {
        std::vector<std::size_t> order;
        for (body = base::TrimView(body); !body.empty(); body = base::TrimView(body)) {
            const auto pin = TakeNumber(body);
            if (!pin || *pin == 0 || *pin > JedecLimits::Pins || order.size() == JedecLimits::Pins)
                return Refuse("P is no list of pins");
            order.push_back(*pin);
        }
        file_.PinOrder = std::move(order);
    }

    void TakeOpen(std::string_view body) {
        if (body != "0" && body != "1") return Refuse("X is neither 0 nor 1");
        file_.OpenCondition = body[0];
    }

    void TakeVector(std::string_view body) {
        body = base::TrimView(body);
        const auto number = TakeNumber(body);
        if (!number) return Refuse("V without a number");
        if (*number > JedecLimits::Vectors || file_.Vectors.size() == JedecLimits::Vectors)
            return Tell("7303tc", line_, "the limit is " + std::to_string(JedecLimits::Vectors) + " vectors");
        JedecVector vector{*number, {}, line_};
        for (const char c : body) {
            if (IsBlank(c)) continue;
            if (std::string_view("0123456789BCDFHKLNPUXZ").find(c) == std::string_view::npos)
                return Refuse("V" + std::to_string(*number) + " holds a sign that is no test condition");
            vector.Conditions += c;
        }
        file_.Vectors.push_back(std::move(vector));
    }

    void Finish(const JedecFrame& frame) {
        const bool any = file_.Told > 0 || file_.FuseCount > 0 || !file_.Vectors.empty();
        if (!any) {
            file_.Messages.clear();
            return Tell(frame.HasStart && !frame.HasEnd ? MessageCode("7301tc") : MessageCode("7300tc"), 1,
                        {});
        }
        FillUp();
        SortVectors();
        CheckVectors();
        CheckSum();
        CheckFrame(frame);
    }

    void FillUp() {
        file_.Default = default_.value_or(false);
        const auto count = file_.Fuses.size();
        if (file_.Default)
            for (std::size_t i = 0; i < count; ++i)
                if (!isTold_[i]) file_.Fuses[i] = true;
        if (file_.FuseCount == 0) Tell("7305tc", 1, "the number of fuses, QF");
        if (!default_ && file_.Told < count)
            Tell("7305tc", 1, "the state of " + std::to_string(count - file_.Told) + " fuses, F; 0 is taken");
    }

    void SortVectors() {
        auto& vectors = file_.Vectors;
        std::stable_sort(vectors.begin(), vectors.end(),
                         [](const JedecVector& a, const JedecVector& b) { return a.Number < b.Number; });
        // The last of equal numbers holds.
        const auto end = std::unique(vectors.rbegin(), vectors.rend(),
                                     [](const auto& a, const auto& b) { return a.Number == b.Number; });
        vectors.erase(vectors.begin(), end.base());
    }

    void CheckVectors() {
        const std::size_t pins = file_.PinOrder.empty() ? file_.Pins : file_.PinOrder.size();
        const auto wrong = std::find_if(file_.Vectors.begin(), file_.Vectors.end(), [&](const auto& vector) {
            return pins != 0 && vector.Conditions.size() != pins;
        });
        if (wrong == file_.Vectors.end()) return;
        line_ = wrong->Line;
        Refuse("V" + std::to_string(wrong->Number) + " has " + std::to_string(wrong->Conditions.size()) +
               " conditions, there are " + std::to_string(pins) + " pins");
    }

    void CheckSum() {
        unsigned sum = 0;
        for (std::size_t i = 0; i < file_.Fuses.size(); ++i) sum += file_.Fuses[i] ? 1u << (i % 8) : 0u;
        sum &= 0xFFFF;
        if (!checksum_ && !file_.Fuses.empty()) Tell("7305tc", 1, "the checksum of the fuses, C");
        isSumRight_ = checksum_ == sum;
        if (checksum_ && !isSumRight_)
            Tell("7304tc", checksumLine_,
                 "it is C" + model::Checksum(*checksum_) + ", of the fuses C" + model::Checksum(sum));
    }

    // A file without its end is taken if the fuses are those of their checksum.
    void CheckFrame(const JedecFrame& frame) {
        const bool isCut = !base::TrimView(frame.Rest).empty();
        if (isCut) return Tell("7301tc", frame.RestLine, "the last field has no *");
        if (frame.HasStart && !frame.HasEnd && !isSumRight_)
            return Tell("7301tc", frame.RestLine, "there is no end of text (ETX)");
        if (!frame.HasStart || !frame.HasEnd) return Tell("7305tc", 1, "start or end of text (STX, ETX)");
        CheckTransmission(frame);
    }

    // 0000 stands for none.
    void CheckTransmission(const JedecFrame& frame) {
        const auto digits = text_.substr(frame.End + 1, 4);
        const auto told = model::WholeNumber<unsigned>(digits, 16);
        if (!told || digits.size() != 4)
            return Tell("7305tc", frame.RestLine, "the checksum behind the end of text");
        unsigned sum = 0;
        for (std::size_t i = frame.Start - 1; i <= frame.End; ++i)
            sum += static_cast<unsigned char>(text_[i]);
        if (*told == 0 || *told == (sum & 0xFFFF)) return;
        Tell("7304tc", frame.RestLine,
             "behind the end of text it is " + model::Checksum(*told) + ", of the text " +
                 model::Checksum(sum));
    }

    std::string_view text_;
    JedecFile file_;
    std::int32_t line_ = 0;
    std::optional<bool> default_;
    std::vector<bool> isTold_;
    std::optional<unsigned> checksum_;
    std::int32_t checksumLine_ = 0;
    bool isSumRight_ = false;
    bool unknown_ = false;
};

}  // namespace

JedecFrame FrameOf(std::string_view text) {
    JedecFrame frame;
    const auto start = text.find(model::StartOfText);
    frame.HasStart = start != text.npos;
    frame.Start = frame.HasStart ? start + 1 : 0;
    const auto end = text.find(model::EndOfText, frame.Start);
    frame.HasEnd = end != text.npos;
    frame.End = frame.HasEnd ? end : text.size();
    std::int32_t line = 1 + LineEnds(text.substr(0, frame.Start));
    std::size_t at = frame.Start;
    for (auto star = text.find('*', at); star < frame.End; star = text.find('*', at)) {
        const auto whole = text.substr(at, star - at);
        if (at == frame.Start && !IsField(whole)) {
            frame.Specification = whole;
        } else {
            frame.Fields.push_back({at, base::TrimView(whole), line + LineEnds(BlanksOf(whole))});
        }
        line += LineEnds(whole);
        at = star + 1;
    }
    frame.Rest = text.substr(at, frame.End - at);
    frame.RestLine = line + LineEnds(BlanksOf(frame.Rest));
    return frame;
}

JedecFile ReadJedec(std::string_view text) { return Reader(text).Read(); }

std::vector<bool> JedecFile::FuseMap(std::size_t count) const {
    auto fuses = Fuses;
    if (FuseCount == 0 && fuses.size() < count) fuses.resize(count, Default);
    return fuses;
}

}  // namespace proof
