#include <algorithm>
#include <array>

#include "front/Analyser.h"
#include "front/ComplexName.h"

// The devices have D registers without a clock enable. T, JK and RS registers and .CE are made of their D
// input and their feedback. The complex ones have T registers and clock enables, but nothing synchronous. Of
// RS registers with both inputs 1 the state is open; set wins.
namespace front {

namespace {

// A function in parts: where it is 1, and where it may be anything. The rest is where it is 0.
struct Parts {
    NodeId On = Network::zero;
    NodeId DontCare = Network::zero;
};

class Builder {
  public:
    Builder(Network& gates, NodeId state) : gates_(gates), state_(state), notState_(gates.Not(state)) {}

    // `set` while the register is 0, `kept` while it is 1.
    Parts Next(const Parts& set, const Parts& kept) const {
        return {Or(And(notState_, set.On), And(state_, kept.On)),
                Or(And(notState_, set.DontCare), And(state_, kept.DontCare))};
    }
    Parts Complement(const Parts& part) const {
        return {gates_.Not(Or(part.On, part.DontCare)), part.DontCare};
    }
    Parts Either(const Parts& a, const Parts& b) const {
        const NodeId on = Or(a.On, b.On);
        return {on, And(Or(a.DontCare, b.DontCare), gates_.Not(on))};
    }
    // `part` while `enable` is 1, else the state.
    Parts Held(const Parts& part, NodeId enable) const {
        return {Or(And(enable, part.On), And(gates_.Not(enable), state_)), And(enable, part.DontCare)};
    }
    // 0 or 1 ahead of `part`.
    Parts Forced(const Parts& part, NodeId reset, NodeId preset) const {
        const NodeId open = And(gates_.Not(reset), gates_.Not(preset));
        return {Or(preset, And(open, part.On)), And(open, part.DontCare)};
    }
    Parts OfDefinition(const Definition& one) const {
        return {one.On, And(one.DontCare, gates_.Not(one.On))};
    }

  private:
    NodeId And(NodeId a, NodeId b) const { return gates_.And(std::array{a, b}); }
    NodeId Or(NodeId a, NodeId b) const { return gates_.Or(std::array{a, b}); }

    Network& gates_;
    NodeId state_;
    NodeId notState_;
};

}  // namespace

void Analyser::BuildFromD() {
    if (analysis_.Result.Device == "virtual") return;
    const bool isComplex = SplitComplex(analysis_.Result.Device).has_value();
    for (std::size_t i = 0; i < analysis_.Result.Variables.size(); ++i) {
        const Extension kind = analysis_.Result.Variables[i].Register;
        const int variable = static_cast<int>(i);
        const auto has = [&](Extension to) { return gathered_.contains({variable, to}); };
        const bool two = kind == Extension::J || kind == Extension::R;
        const bool single = kind == Extension::D || kind == Extension::T;
        const bool synchronous = has(Extension::SR) || has(Extension::SP);
        const bool built = isComplex ? two || (single && synchronous)
                                     : two || kind == Extension::T || (single && has(Extension::CE));
        if (built) BuildFromD(variable, isComplex);
    }
}

void Analyser::BuildFromD(int index, bool isComplex) {
    Variable& variable = analysis_.Result.Variables[static_cast<std::size_t>(index)];
    std::vector<Definition>& all = analysis_.Definitions;
    const Builder build(analysis_.Gates, elaborator_.SignalNode(index, false));
    Definition result{index, Extension::D, Network::zero, Network::zero, variable.At};
    // Gives an input's function and takes its definition away.
    const auto take = [&](Extension to) {
        const auto found = std::find_if(all.begin(), all.end(), [&](const Definition& one) {
            return one.Variable == index && one.To == to;
        });
        if (found == all.end()) return Parts{};
        const Parts parts = build.OfDefinition(*found);
        if (IsRegisterInput(to)) result.At = found->At;
        variable.BuiltFrom.push_back(to);
        all.erase(found);
        return parts;
    };
    Parts data = take(Extension::D);
    if (variable.Register == Extension::T) {
        const Parts toggle = take(Extension::T);
        data = build.Next(toggle, build.Complement(toggle));
    } else if (variable.Register == Extension::J) {
        const Parts set = take(Extension::J);
        data = build.Next(set, build.Complement(take(Extension::K)));
    } else if (variable.Register == Extension::R) {
        const Parts set = take(Extension::S);
        data = build.Next(set, build.Either(set, build.Complement(take(Extension::R))));
    }
    // The enable holds against synchronous reset and preset, too; a device's row for them would not.
    const bool enabled = gathered_.contains({index, Extension::CE});
    if (enabled || isComplex) {
        const NodeId reset = take(Extension::SR).On;
        data = build.Forced(data, reset, take(Extension::SP).On);
        if (!isComplex) data = build.Held(data, take(Extension::CE).On);
    }
    variable.Register = Extension::D;
    result.On = data.On;
    result.DontCare = data.DontCare;
    const auto behind = [](const Definition& a, const Definition& b) {
        return std::pair(a.Variable, a.To) < std::pair(b.Variable, b.To);
    };
    all.insert(std::upper_bound(all.begin(), all.end(), result, behind), result);
}

}  // namespace front
