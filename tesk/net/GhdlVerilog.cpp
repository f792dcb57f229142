#include "net/GhdlVerilog.h"

#include <set>

#include "base/Text.h"
#include "base/modLib.h"

namespace net {
namespace {

// A constant or a signal as Verilog writes it: "01XX" is 4'b01XX.
std::string VerilogValue(std::string_view value) {
    const bool isConstant = value.size() > 2 && (value.front() == '"' || value.front() == '\'');
    if (!isConstant) return std::string(value);
    const std::string bits = base::Lower(value.substr(1, value.size() - 2));
    return std::to_string(bits.size()) + "'b" + bits;
}

bool IsSignal(std::string_view line) { return line.ends_with("// (signal)"); }
bool IsInitialSignal(std::string_view line) { return line.ends_with("// (isignal)"); }

// "2'bXX;" and the like, of nothing but the digits.
bool IsConstantOf(std::string_view value, const char* digits) {
    const std::size_t mark = value.find("'b");
    if (mark == value.npos || !value.ends_with(';')) return false;
    return value.substr(mark + 2, value.size() - mark - 3).find_first_not_of(digits) == value.npos;
}

class Adapter {
  public:
    Adapter(std::string_view text, const std::map<std::string, std::string>& defaults)
        : lines_(base::LineViews(text)), defaults_(defaults) {}

    std::optional<GhdlVerilog> Adapt() {
        for (at_ = 0; at_ < lines_.size(); ++at_) {
            const std::string_view bare = base::TrimView(lines_[at_]);
            if (bare.starts_with("module ")) ListInitialSignals();
            if (!FollowCase(bare)) return std::nullopt;
            TakeLine(bare);
        }
        return std::move(done_);
    }

  private:
    // The target of "assign NAME = VALUE; // (signal)" and the like comes first, then the value.
    static std::vector<std::string_view> Assignment(std::string_view bare) {
        auto words = base::Words(bare);
        if (!words.empty() && words[0] == "assign") words.erase(words.begin());
        if (words.size() < 3 || words[1] != "=") return {};
        return {words[0], words[2]};
    }

    // Of the module that begins.
    void ListInitialSignals() {
        initial_.clear();
        for (std::size_t i = at_; i < lines_.size(); ++i) {
            const std::string_view bare = base::TrimView(lines_[i]);
            if (bare == "endmodule") return;
            const auto parts = Assignment(bare);
            if (IsInitialSignal(bare) && !parts.empty()) initial_.insert(std::string(parts[0]) + ";");
        }
    }

    // False if the value for all other choices is not known.
    bool FollowCase(std::string_view bare) {
        const auto words = base::Words(bare);
        if (bare == "endcase" && !caseTarget_.empty()) {
            const auto known = defaults_.find(caseTarget_);
            if (known == defaults_.end()) return false;
            done_.Text += "default: " + caseTarget_ + " <= " + known->second + ";\n";
        }
        if (bare == "endcase" || bare.starts_with("default:")) caseTarget_.clear();
        if (words.size() > 3 && words[0].ends_with(':') && words[2] == "<=" && words[0] != "default:")
            caseTarget_ = words[1];
        return true;
    }

    void TakeLine(std::string_view bare) {
        const auto words = base::Words(bare);
        if (!words.empty() && words[0] == "reg" && initial_.contains(std::string(words.back()))) {
            done_.Text += "wire" + std::string(bare.substr(3)) + "\n";
            return;
        }
        const auto parts = Assignment(bare);
        const bool isPort = bare.ends_with("// (inout - port)");
        if (isPort && !parts.empty() && IsConstantOf(parts[1], "Zz")) return;
        if (bare == "always @*" && at_ + 1 < lines_.size() && IsInitialSignal(lines_[at_ + 1])) return;
        if (!IsSignal(bare) && !IsInitialSignal(bare)) {
            (done_.Text += lines_[at_]) += '\n';
            return;
        }
        done_.Text +=
            (IsInitialSignal(bare) ? "assign " + std::string(bare) : std::string(lines_[at_])) + "\n";
        if (!parts.empty()) TakeSignal(std::string(parts[0]), parts[1]);
        const bool isInitialised = at_ + 2 < lines_.size() && base::TrimView(lines_[at_ + 1]) == "initial";
        if (IsInitialSignal(bare) && isInitialised) at_ += 2;
    }

    void TakeSignal(const std::string& name, std::string_view value) {
        if (value.ends_with("_q;"))
            done_.SignalNames.emplace(value.substr(0, value.size() - 1), name);
        else if (IsConstantOf(value, "Xx"))
            done_.Lost.push_back(name);
        else if (IsConstantOf(value, "01Xx") && initial_.contains(name + ";"))
            done_.Constant.push_back(name);
    }

    std::vector<std::string_view> lines_;
    const std::map<std::string, std::string>& defaults_;
    std::size_t at_ = 0;
    std::set<std::string> initial_;  // signals with an initial value that are no registers, with a ";"
    std::string caseTarget_;         // what the rows of an open case assign, until one says it for all others
    GhdlVerilog done_;
};

}  // namespace

std::map<std::string, std::string> DefaultsOf(std::string_view vhdl) {
    std::map<std::string, std::string> defaults;
    std::string_view target;
    for (const std::string_view line : base::LineViews(vhdl)) {
        const auto words = base::Words(line);
        if (words.size() > 4 && words[0] == "with" && words[2] == "select" && words[4] == "<=")
            target = words[3];
        if (target.empty() || words.size() != 3 || words[1] != "when" || words[2] != "others;") continue;
        defaults[std::string(target)] = VerilogValue(words[0]);
        target = {};
    }
    return defaults;
}

std::optional<GhdlVerilog> AdaptedVerilog(std::string_view text,
                                          const std::map<std::string, std::string>& defaults) {
    return Adapter(text, defaults).Adapt();
}

bool MayBeOff(std::string_view verilog) {
    if (base::Contains(verilog, "`include")) return true;
    for (std::size_t at = verilog.find('\''); at != verilog.npos; at = verilog.find('\'', at + 1)) {
        const std::size_t end = verilog.find_first_not_of("sSbBoOdDhH 0123456789aAcCeEfFxX_", at + 1);
        if (end != verilog.npos && base::Contains("zZ?", verilog.substr(end, 1))) return true;
    }
    return false;
}

}  // namespace net
