#include "net/ThreeState.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>

#include "convert/Failure.h"

namespace net {
namespace {

constexpr int MaxDepth = 1000;

// What a net carries: data, and whether it is there; NoNet: always.
struct Carried {
    int Data = NoNet;
    int Enable = NoNet;
};

struct Choice {
    int Select = NoNet, One = NoNet, Zero = NoNet;
};

// Of a gate that is a multiplexer.
std::optional<Choice> ChoiceOf(const Gate& gate) {
    if (gate.Inputs.size() != 3 || !gate.Value) return std::nullopt;
    if (gate.Rows == "1-0-11" || gate.Rows == "-111-0")
        return Choice{gate.Inputs[2], gate.Inputs[1], gate.Inputs[0]};
    return std::nullopt;
}

class Resolver {
  public:
    explicit Resolver(Netlist& netlist)
        : netlist_(netlist), ports_(netlist.Outputs.begin(), netlist.Outputs.end()) {
        for (std::size_t i = 0; i < netlist.Gates.size(); ++i) gates_[netlist.Gates[i].Output] = i;
        for (std::size_t i = 0; i < netlist.Drivers.size(); ++i) {
            const bool isNew = drivers_.emplace(netlist.Drivers[i].Output, i).second;
            hasClash_ = hasClash_ || !isNew || gates_.contains(netlist.Drivers[i].Output);
        }
    }

    void Resolve() {
        if (drivers_.empty() || hasClash_) return;  // a net with two sources is refused by those who read it
        for (const int port : ports_) {
            const Carried carried = Behind(port, 0);
            if (carried.Enable != NoNet) resolved_[port] = carried;
        }
        Replace();
    }

  private:
    // The pin is what others read of a port.
    Carried Of(int net, int depth) {
        if (ports_.contains(net)) return {net};
        const auto known = known_.find(net);
        if (known != known_.end()) return known->second;
        known_[net] = {net};  // where it feeds back on itself
        return known_[net] = Behind(net, depth);
    }

    Carried Behind(int net, int depth) {
        if (depth > MaxDepth) convert::Fail(0, "a three-state signal is behind too many choices");
        if (const auto driver = drivers_.find(net); driver != drivers_.end()) {
            const Driver& found = netlist_.Drivers[driver->second];
            const Control control = found.Enable;
            const Carried inner = Of(found.Data, depth + 1);
            const int enable = control.Inverted ? Added({control.Net}, "0") : control.Net;
            return {inner.Data, inner.Enable == NoNet ? enable : Added({enable, inner.Enable}, "11")};
        }
        const auto at = gates_.find(net);
        if (at == gates_.end()) return {net};
        const Gate& gate = netlist_.Gates[at->second];
        if (gate.Inputs.size() == 1 && gate.Rows == "1" && gate.Value)
            return CopyOf(net, Of(gate.Inputs[0], depth + 1));
        const auto choice = ChoiceOf(gate);
        return choice ? Chosen(net, *choice, depth) : Carried{net};
    }
    static Carried CopyOf(int net, const Carried& carried) {
        return carried.Enable == NoNet ? Carried{net} : carried;
    }

    Carried Chosen(int net, const Choice& choice, int depth) {
        const Carried one = Of(choice.One, depth + 1), zero = Of(choice.Zero, depth + 1);
        if (one.Enable == NoNet && zero.Enable == NoNet) return {net};
        const int data = Added({zero.Data, one.Data, choice.Select}, "1-0-11");
        if (one.Enable == NoNet) return {data, Added({zero.Enable, choice.Select}, "1--1")};
        if (zero.Enable == NoNet) return {data, Added({one.Enable, choice.Select}, "1--0")};
        return {data, Added({zero.Enable, one.Enable, choice.Select}, "1-0-11")};
    }

    // The output of a new gate.
    int Added(const std::vector<int>& inputs, const char* rows) {
        const int net = static_cast<int>(netlist_.Names.size());
        netlist_.Names.push_back("$off" + std::to_string(net));
        added_.push_back({net, inputs, rows, true, 0});
        return net;
    }

    void Replace() {
        std::erase_if(netlist_.Gates, [this](const Gate& gate) { return resolved_.contains(gate.Output); });
        for (const Driver& driver : netlist_.Drivers)
            if (!resolved_.contains(driver.Output))
                added_.push_back({driver.Output, {driver.Data}, "1", true, driver.Line});
        netlist_.Drivers.clear();
        for (const int port : netlist_.Outputs) {
            const auto at = resolved_.find(port);
            if (at == resolved_.end()) continue;
            netlist_.Drivers.push_back({port, at->second.Data, {at->second.Enable}, 0});
            resolved_.erase(at);
        }
        netlist_.Gates.insert(netlist_.Gates.end(), added_.begin(), added_.end());
    }

    Netlist& netlist_;
    std::set<int> ports_;
    std::map<int, std::size_t> gates_, drivers_;
    std::map<int, Carried> known_, resolved_;
    std::vector<Gate> added_;
    bool hasClash_ = false;
};

}  // namespace

void ResolveThreeState(Netlist& netlist) {
    if (!netlist.Drivers.empty()) Resolver(netlist).Resolve();
}

}  // namespace net
