#include <algorithm>
#include <set>
#include <tuple>
#include <unordered_map>

#include "base/Text.h"
#include "model/Number.h"
#include "sim/AbsTokens.h"

namespace sim {
namespace {

// -1 unless the word is a decimal number from 0 to AbsLimits::Pin.
int PinNumber(std::string_view word) {
    const int value = model::WholeNumber<int>(word).value_or(-1);
    return value >= 0 && value <= AbsLimits::Pin ? value : -1;
}

class Reader {
  public:
    explicit Reader(std::string_view text) : text_(text) {}

    AbsResult Read() {
        if (text_.size() > AbsLimits::FileBytes) {
            Fault("0106va", "file of " + std::to_string(text_.size()) + " bytes");
            return result_;
        }
        bool ended = false;
        for (auto rest = text_; !ended && !rest.empty();) {
            ++lineNumber_;
            const auto line = rest.substr(0, rest.find('\n'));
            rest.remove_prefix(std::min(line.size() + 1, rest.size()));
            ended = TakeLine(line.substr(0, line.size() - (line.ends_with('\r') ? 1 : 0)));
        }
        if (!ended && result_.Ok()) Fault("0107va");
        if (result_.Ok()) CheckFunctions();
        return result_;
    }

  private:
    using Words = std::vector<std::string_view>;

    // True if reading ends: at END, or where going on makes no sense.
    bool TakeLine(std::string_view line) {
        const auto words = base::Words(line);
        if (lineNumber_ == 1) {
            if (words == Words{"TESK-ABS", "1"}) return false;
            Fault("0101va");
            return true;
        }
        if (words.empty()) return false;
        if (words[0] == "END") return true;
        static const std::unordered_map<std::string_view, void (Reader::*)(const Words&)> records{
            {"DEVICE", &Reader::TakeDevice},
            {"NET", &Reader::TakeNet},
            {"FIELD", &Reader::TakeField},
            {"FUNCTION", &Reader::TakeFunction},
            {"TERM", &Reader::TakeTerm}};
        const auto record = records.find(words[0]);
        if (words[0] == "HEADER") {
            TakeHeader(line, words);
        } else if (record != records.end()) {
            (this->*record->second)(words);
        } else {
            Fault("0102va", words[0].substr(0, 32));
        }
        return full_;
    }

    void Fault(MessageCode code, std::string_view detail = {}) {
        result_.Messages.Add(code, lineNumber_, base::DisplayUtf8(detail));
    }

    bool HasRoom(std::size_t count, std::size_t limit, std::string_view what) {
        if (count < limit) return true;
        Fault("0106va", "more than " + std::to_string(limit) + " " + std::string(what));
        full_ = true;
        return false;
    }

    void TakeHeader(std::string_view line, const Words& words) {
        const auto& known = model::headerWords;
        const auto isKeyword = [&](const model::HeaderWord& k) {
            return words.size() > 1 && k.Name == words[1];
        };
        if (std::none_of(known.begin(), known.end(), isKeyword)) return Fault("0102va", "HEADER");
        const auto textStart = static_cast<std::size_t>(words[1].data() - line.data()) + words[1].size();
        result_.Design.Header[std::string(words[1])] = base::Trim(line.substr(textStart));
    }

    void TakeDevice(const Words& words) {
        if (words.size() != 3 || PinNumber(words[2]) < 0) return Fault("0102va", "DEVICE");
        result_.Design.Device = words[1];
        result_.Design.PinCount = PinNumber(words[2]);
    }

    void TakeNet(const Words& words) {
        if (words.size() != 7) return Fault("0102va", "NET");
        if (!HasRoom(result_.Design.Nets.size(), AbsLimits::Nets, "nets")) return;
        const auto kind = NetWords.Find(words[3]);
        const auto registerKind = model::RegisterWords.Find(words[5]);
        const int pin = PinNumber(words[2]);
        const bool level = words[4] == "HIGH" || words[4] == "LOW";
        const bool powerUp = words[6] == "0" || words[6] == "1" || words[6] == "X";
        if (!kind || !registerKind || pin < 0 || !level || !powerUp) return Fault("0102va", "NET");
        if (!IsNetName(words[1])) return Fault("0103va", words[1].substr(0, 64));
        const bool pinTaken = pin > 0 && !pins_.insert(pin).second;
        if (pinTaken || !nets_.emplace(words[1], nets_.size()).second) return Fault("0104va", words[1]);
        result_.Design.Nets.push_back(
            {std::string(words[1]), pin, *kind, words[4] == "LOW", *registerKind, words[6][0]});
    }

    void TakeField(const Words& words) {
        if (words.size() < 3) return Fault("0102va", "FIELD");
        if (!HasRoom(result_.Design.Fields.size(), AbsLimits::Fields, "fields")) return;
        if (!IsNetName(words[1])) return Fault("0103va", words[1].substr(0, 64));
        if (nets_.contains(words[1]) || !fields_.insert(words[1]).second) return Fault("0104va", words[1]);
        if (!HasRoom(literals_ += words.size(), AbsLimits::Literals, "literals and members")) return;
        Field field{std::string(words[1]), {}};
        for (std::size_t i = 2; i < words.size(); ++i) {
            const auto net = nets_.find(words[i]);
            if (net == nets_.end()) return Fault("0103va", words[i].substr(0, 64));
            field.Members.push_back(net->second);
        }
        result_.Design.Fields.push_back(field);
    }

    void TakeFunction(const Words& words) {
        const auto input = words.size() == 4 ? model::InputWords.Find(words[2]) : std::nullopt;
        if (!input || (words[3] != "POSITIVE" && words[3] != "NEGATIVE")) return Fault("0102va", "FUNCTION");
        if (!HasRoom(result_.Design.Functions.size(), AbsLimits::Functions, "functions")) return;
        const auto net = nets_.find(words[1]);
        if (net == nets_.end()) return Fault("0103va", words[1].substr(0, 64));
        result_.Design.Functions.push_back({net->second, *input, words[3] == "NEGATIVE", {}});
        functionLines_.push_back(lineNumber_);
    }

    void TakeTerm(const Words& words) {
        if (result_.Design.Functions.empty()) return Fault("0102va", "TERM");
        if (!HasRoom(terms_++, AbsLimits::Terms, "terms")) return;
        if (!HasRoom(literals_ += words.size(), AbsLimits::Literals, "literals and members")) return;
        Term term;
        for (std::size_t i = 1; i < words.size(); ++i) {
            Literal literal;
            if (!TakeLiteral(words[i], literal)) return Fault("0103va", words[i].substr(0, 64));
            term.push_back(literal);
        }
        result_.Design.Functions.back().Terms.push_back(term);
    }

    bool TakeLiteral(std::string_view word, Literal& literal) const {
        literal.Negated = word[0] == '!';
        if (literal.Negated) word.remove_prefix(1);
        const auto dot = word.find('.');
        const auto net = nets_.find(word.substr(0, dot));
        if (net == nets_.end()) return false;
        literal.Net = net->second;
        if (dot == word.npos) return true;
        const auto extension = word.substr(dot);
        literal.From = extension == ".IO" ? Feedback::Pin : Feedback::Register;
        const bool registered = result_.Design.Nets[net->second].Register != RegisterKind::None;
        return extension == ".IO" || (extension == ".DQ" && registered);
    }

    void CheckFunctions() {
        std::set<std::pair<std::size_t, Input>> seen;
        for (std::size_t i = 0; i < result_.Design.Functions.size(); ++i) {
            const auto& function = result_.Design.Functions[i];
            const auto& net = result_.Design.Nets[function.Net];
            lineNumber_ = functionLines_[i];
            const auto name = net.Name + "." + std::string(model::InputWords.Of(function.To));
            if (!seen.insert({function.Net, function.To}).second) Fault("0104va", name);
            if (!CanHave(net, function.To)) Fault("0105va", name);
        }
    }

    std::string_view text_;
    int lineNumber_ = 0;
    bool full_ = false;
    std::size_t terms_ = 0;
    std::size_t literals_ = 0;
    std::set<int> pins_;
    std::set<std::string_view> fields_;
    std::unordered_map<std::string_view, std::size_t> nets_;
    std::vector<int> functionLines_;
    AbsResult result_;
};

}  // namespace

AbsResult ReadAbs(std::string_view text) { return Reader(text).Read(); }

}  // namespace sim
