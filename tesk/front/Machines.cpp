#include <algorithm>
#include <array>
#include <set>

#include "front/Analyser.h"
#include "front/Limits.h"

namespace front {

namespace {

// The register inputs that take a bit from one value to the other; the second is None where there is one.
struct MachineKind {
    Extension Kind;
    Extension Set;    // 0 to 1
    Extension Clear;  // 1 to 0
    Extension Hold1;  // 1 to 1
};
constexpr std::array<MachineKind, 4> kKinds{{{Extension::D, Extension::D, Extension::None, Extension::D},
                                             {Extension::T, Extension::T, Extension::T, Extension::None},
                                             {Extension::J, Extension::J, Extension::K, Extension::None},
                                             {Extension::R, Extension::S, Extension::R, Extension::None}}};

const MachineKind& KindOf(Extension kind) {
    return *std::find_if(kKinds.begin(), kKinds.end(),
                         [&](const MachineKind& entry) { return entry.Kind == kind; });
}

}  // namespace

// The condition of each rule, the state included. DEFAULT holds where no IF of the state does.
std::vector<NodeId> Analyser::RuleConditions(const std::vector<Rule>& rules, NodeId state) {
    Network& gates = analysis_.Gates;
    std::vector<NodeId> ifs;
    std::vector<NodeId> conditions(rules.size(), state);
    for (std::size_t i = 0; i < rules.size(); ++i) {
        if (rules[i].If < 0) continue;
        const NodeId holds = elaborator_.EvaluateBit(rules[i].If);
        ifs.push_back(holds);
        conditions[i] = gates.And(std::vector{state, holds});
    }
    const NodeId otherwise = gates.And(std::vector{state, gates.Not(gates.Or(ifs))});
    for (std::size_t i = 0; i < rules.size(); ++i)
        if (rules[i].Default) conditions[i] = ifs.empty() ? state : otherwise;
    return conditions;
}

void Analyser::TakeRules(const std::vector<Rule>& rules, NodeId state, const MachineStatement* machine,
                         const State* from) {
    const std::vector<NodeId> conditions = RuleConditions(rules, state);
    for (std::size_t i = 0; i < rules.size(); ++i) {
        if (conditions[i] == Network::noConnect) continue;
        if (machine != nullptr && rules[i].Next >= 0) AddTransition(*machine, *from, rules[i], conditions[i]);
        for (const Target& target : rules[i].Out) AddOut(target, conditions[i]);
    }
}

void Analyser::AddOut(const Target& target, NodeId condition) {
    std::vector<int> weights;
    bool list = false;
    for (const Slot& slot : Slots(target, &weights, &list)) {
        if (slot.Variable < 0) continue;
        Gathered& gathered = At(slot.Variable, slot.To, slot.At);
        if (gathered.Equation)
            elaborator_.Fail(Code::SecondEquation, slot.At,
                             analysis_.Result.Variables[static_cast<std::size_t>(slot.Variable)].Name);
        (slot.Complement ? gathered.Off : gathered.On).push_back(condition);
    }
}

void Analyser::AddTransition(const MachineStatement& machine, const State& from, const Rule& rule,
                             NodeId condition) {
    std::vector<int> weights;
    bool list = false;
    const std::vector<Slot> slots = Slots({machine.Field, false}, &weights, &list);
    const Constant& now = syntax_.Constants[static_cast<std::size_t>(from.Value)];
    const Constant& next = syntax_.Constants[static_cast<std::size_t>(rule.Next)];
    const MachineKind& kind = KindOf(machine.Kind);
    for (std::size_t i = 0; i < slots.size(); ++i) {
        const bool was = now.At(static_cast<std::size_t>(weights[i])) == '1';
        const bool becomes = next.At(static_cast<std::size_t>(weights[i])) == '1';
        const Extension input = becomes ? (was ? kind.Hold1 : kind.Set) : was ? kind.Clear : Extension::None;
        if (input != Extension::None) At(slots[i].Variable, input, machine.At).On.push_back(condition);
    }
}

// States once each, inside the field, and known where a transition leads to.
void Analyser::CheckStates(const MachineStatement& machine, const Value& field) {
    std::set<std::string> known;
    const auto text = [&](std::int32_t constant) {
        std::string digits = syntax_.Constants[static_cast<std::size_t>(constant)].Digits;
        while (!digits.empty() && digits.back() == '0') digits.pop_back();
        return digits;
    };
    const auto check = [&](std::int32_t constant, Place at) {
        const Constant& value = syntax_.Constants[static_cast<std::size_t>(constant)];
        if (value.HasDontCare()) elaborator_.Fail(Code::DontCareMisplaced, at);
        elaborator_.CheckOutside(value, field.Weights, at);
    };
    for (const State& state : machine.States) {
        check(state.Value, state.At);
        if (!known.insert(text(state.Value)).second) report_.Add(Code::StateTwice, state.At);
    }
    for (const State& state : machine.States) {
        bool plain = false;
        bool conditional = false;
        for (const Rule& rule : state.Rules) {
            if (rule.Next < 0) continue;
            check(rule.Next, rule.At);
            if (!known.contains(text(rule.Next))) report_.Add(Code::StateBad, rule.At);
            (rule.If >= 0 || rule.Default ? conditional : plain) = true;
        }
        if (plain && conditional) report_.Add(Code::StateMix, state.At);
    }
}

std::vector<Slot> Analyser::MachineSlots(const MachineStatement& machine, std::vector<int>& weights,
                                         bool& list) {
    const std::vector<Slot> slots = Slots({machine.Field, false}, &weights, &list);
    for (const Slot& slot : slots) {
        const bool declared =
            slot.Variable >= 0 && analysis_.Result.Variables[static_cast<std::size_t>(slot.Variable)].Kind !=
                                      VariableKind::Intermediate;
        if (!declared || slot.To != Extension::None)
            elaborator_.Fail(Code::NotAssignable, slot.At, "a state machine needs declared registers");
    }
    return slots;
}

// J does nothing while the register is 1, K while it is 0.
void Analyser::FreeInputs(const MachineStatement& machine) {
    std::vector<int> weights;
    bool list = false;
    for (const Slot& slot : MachineSlots(machine, weights, list)) {
        const NodeId set = elaborator_.SignalNode(slot.Variable, false);
        At(slot.Variable, Extension::J, machine.At).DontCare.push_back(set);
        At(slot.Variable, Extension::K, machine.At).DontCare.push_back(analysis_.Gates.Not(set));
    }
}

void Analyser::Take(const MachineStatement& machine) {
    if (options_.Onehot) return TakeOneHot(machine);
    std::vector<int> weights;
    bool list = false;
    const MachineKind& kind = KindOf(machine.Kind);
    for (const Slot& slot : MachineSlots(machine, weights, list)) {
        Fresh({slot.Variable, kind.Set, false, machine.At});
        if (kind.Clear != Extension::None && kind.Clear != kind.Set)
            Fresh({slot.Variable, kind.Clear, false, machine.At});
    }
    const Value field = elaborator_.List(machine.Field);
    if (machine.Kind == Extension::J) FreeInputs(machine);
    CheckStates(machine, field);
    for (const State& state : machine.States) {
        if (analysis_.Gates.Size() > Limits::Nodes) elaborator_.Fail(Code::DesignTooLarge, state.At);
        TakeRules(state.Rules, elaborator_.Equals(field, state.Value, state.At), &machine, &state);
    }
}

void Analyser::Take(const ConditionStatement& condition) {
    TakeRules(condition.Rules, Network::one, nullptr, nullptr);
}

}  // namespace front
