#include "net/Functions.h"

#include <algorithm>

#include "convert/Failure.h"

namespace net {
namespace {

constexpr std::size_t ReducedFrom = 3;  // terms; shorter sums are as short as they can be, or nearly

bool IsCopy(const Gate& gate) { return gate.Inputs.size() == 1 && gate.Rows == "1" && gate.Value; }

Function Shortened(Function function) {
    if (function.On && function.On->size() >= ReducedFrom) function.On = Reduced(*function.On);
    if (function.Off && function.Off->size() >= ReducedFrom) function.Off = Reduced(*function.Off);
    return function;
}

}  // namespace

Functions::Functions(const Netlist& netlist, std::size_t maxTerms)
    : netlist_(netlist), maxTerms_(std::max<std::size_t>(maxTerms, 2)), limit_(4 * maxTerms_ + 16) {
    const std::size_t nets = netlist.Names.size();
    sources_.resize(nets);
    functions_.resize(nets);
    leaves_.resize(nets);
    marks_.resize(nets, Mark::New);
    isLeaf_.resize(nets, false);
    for (std::size_t i = 0; i < netlist.Gates.size(); ++i)
        Set(netlist.Gates[i].Output, Source::Gate, i, netlist.Gates[i].Line);
    for (std::size_t i = 0; i < netlist.Registers.size(); ++i)
        Set(netlist.Registers[i].Output, Source::Register, i, netlist.Registers[i].Line);
    for (std::size_t i = 0; i < netlist.Drivers.size(); ++i)
        Set(netlist.Drivers[i].Output, Source::Driver, i, netlist.Drivers[i].Line);
    for (const int net : netlist.Inputs)
        if (sources_[Index(net)].Kind == Source::Nothing) sources_[Index(net)].Kind = Source::Input;
    for (std::size_t net = 0; net < nets; ++net) {
        const Source kind = sources_[net].Kind;
        isLeaf_[net] = kind == Source::Input || kind == Source::Register || kind == Source::Driver;
    }
}

void Functions::Set(int net, Source kind, std::size_t index, int line) {
    Origin& origin = sources_[Index(net)];
    if (origin.Kind != Source::Nothing)
        convert::Fail(
            line, "the signal " + convert::Shown(netlist_.Names[Index(net)]) + " is driven from two places");
    origin = {kind, static_cast<int>(index)};
}

int Functions::Index(int net, Source kind) const {
    const Origin& origin = sources_[Index(net)];
    return origin.Kind == kind ? origin.Index : -1;
}

int Functions::Root(int net) const {
    for (std::size_t steps = 0; steps < netlist_.Gates.size(); ++steps) {
        const int gate = Index(net, Source::Gate);
        if (gate < 0 || !IsCopy(netlist_.Gates[Index(gate)])) break;
        net = netlist_.Gates[Index(gate)].Inputs[0];
    }
    return net;
}

Function Functions::LeafOf(int net) const { return {OneLiteral(net, false), OneLiteral(net, true)}; }

// The function as others see it: of a leaf the leaf.
const Function& Functions::Seen(int net) {
    if (!isLeaf_[Index(net)]) return functions_[Index(net)];
    Function& leaf = leaves_[Index(net)];
    if (!leaf.On) leaf = LeafOf(net);
    return leaf;
}

const Function& Functions::Of(int net) {
    Visit(net);
    return Seen(net);
}

Function Functions::Of(const Control& control) {
    if (!control.IsThere()) return {};
    const Function& function = Of(control.Net);
    return control.Inverted ? Not(function) : function;
}

// Gates behind their inputs; by a stack, as logic may be deep. A gate that is met while its inputs are open
// feeds back on itself and becomes a leaf.
void Functions::Visit(int net) {
    stack_.assign(1, {net, 0});
    while (!stack_.empty()) {
        auto& [at, next] = stack_.back();
        const int index = Index(at, Source::Gate);
        Mark& mark = marks_[Index(at)];
        if (mark == Mark::Done || index < 0) {
            if (index < 0 && !isLeaf_[Index(at)])
                functions_[Index(at)] = {ConstantSum(false), ConstantSum(true)};
            stack_.pop_back();
            continue;
        }
        const Gate& gate = netlist_.Gates[Index(index)];
        mark = Mark::Open;
        if (next == gate.Inputs.size()) {
            Compute(gate);
            mark = Mark::Done;
            stack_.pop_back();
            continue;
        }
        const int input = gate.Inputs[next++];
        if (marks_[Index(input)] == Mark::Open) {
            if (!isLeaf_[Index(input)]) loops_.push_back(input);
            isLeaf_[Index(input)] = true;
        } else if (marks_[Index(input)] == Mark::New) {
            stack_.emplace_back(input, 0);
        }
    }
}

// Null if something else drives the net, or if what it inverts is short enough to be read.
const Gate* Functions::InverterAt(int net) const {
    const int index = Index(net, Source::Gate);
    if (index < 0) return nullptr;
    const Gate& gate = netlist_.Gates[Index(index)];
    const bool isInverter = gate.Inputs.size() == 1 && (gate.Rows == "1") != gate.Value;
    return isInverter && !isLeaf_[Index(gate.Inputs[0])] ? &gate : nullptr;
}

bool Functions::IsShort(const Function& function) const {
    const auto terms = function.Terms();
    return terms && *terms <= maxTerms_;
}

void Functions::Compute(const Gate& gate) {
    Function result = Shortened(Combine(gate));
    while (!IsShort(result)) {
        int largest = Largest(gate);
        if (largest == NoNet) break;
        // Behind an inverter the signal itself becomes the node, for all who read it either way.
        while (const Gate* behind = InverterAt(largest)) {
            functions_[Index(largest)] = Not(LeafOf(behind->Inputs[0]));
            largest = behind->Inputs[0];
        }
        isLeaf_[Index(largest)] = true;
        nodes_.push_back(largest);
        result = Shortened(Combine(gate));
    }
    functions_[Index(gate.Output)] = std::move(result);
}

Function Functions::Combine(const Gate& gate) {
    // A gate by itself may be longer than the sums that gates are put together to.
    const std::size_t inputs = gate.Inputs.size();
    const std::size_t rows = inputs == 0 ? 0 : gate.Rows.size() / inputs;
    const std::size_t limit = std::max(limit_, rows);
    if (inputs == 0) {
        const bool value = !gate.Rows.empty() == gate.Value;
        return {ConstantSum(value), ConstantSum(!value)};
    }
    Function sum{ConstantSum(false), ConstantSum(true)};
    for (std::size_t row = 0; row < rows; ++row) {
        Function term{ConstantSum(true), ConstantSum(false)};
        for (std::size_t i = 0; i < inputs; ++i) {
            const char place = gate.Rows[row * inputs + i];
            if (place == '-') continue;
            const Function& input = Seen(gate.Inputs[i]);
            term = And(term, place == '1' ? input : Not(input), limit);
        }
        sum = Or(sum, term, limit);
    }
    return gate.Value ? sum : Not(std::move(sum));
}

// The input whose function is the longest, the one that is too long to be told first.
int Functions::Largest(const Gate& gate) {
    int largest = NoNet;
    std::size_t most = 0;
    for (const int input : gate.Inputs) {
        const Function& function = Seen(input);
        if (isLeaf_[Index(input)] || function.Single() || function.Constant()) continue;
        const std::size_t size =
            function.On && function.Off ? function.On->size() + function.Off->size() : 3 * limit_;
        if (size <= most) continue;
        most = size;
        largest = input;
    }
    return largest;
}

}  // namespace net
