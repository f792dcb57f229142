#include <algorithm>
#include <array>
#include <map>

#include "front/Analyser.h"
#include "front/Limits.h"

// State machines with a register for each state. All registers power up and reset to 0, so the register of
// state 0 is the other way round: it is 0 while the machine is in that state. The members of the field are no
// registers any more, they tell the state's value.
namespace front {

namespace {

// What clocks and resets the members goes over to the registers.
constexpr std::array kControls{Extension::CK, Extension::CE, Extension::AR, Extension::SR};
constexpr std::array kPresets{Extension::AP, Extension::SP};

std::string Digits(const Constant& constant) {
    std::string digits = constant.Digits;
    while (!digits.empty() && digits.back() == '0') digits.pop_back();
    return digits;
}

std::string Hexadecimal(std::string digits) {
    std::string text;
    while (digits.size() % 4 != 0 || digits.empty()) digits += '0';
    for (std::size_t at = digits.size(); at > 0; at -= 4) {
        int value = 0;
        for (std::size_t bit = 0; bit < 4; ++bit) value |= digits[at - 4 + bit] == '1' ? 1 << bit : 0;
        text += "0123456789ABCDEF"[value];
    }
    return text.substr(std::min(text.find_first_not_of('0'), text.size() - 1));
}

}  // namespace

int Analyser::AddStateRegister(const MachineStatement& machine, const std::string& value) {
    const std::string suffix = "_" + Hexadecimal(value);
    const ListedName first = names_.Listed(machine.Field).front();
    Variable variable;
    variable.Name =
        first.Name.substr(0, Limits::NameLength - std::min(suffix.size(), Limits::NameLength - 1)) + suffix;
    variable.Kind = VariableKind::Node;
    variable.Register = Extension::D;
    variable.At = machine.At;
    const int index = names_.AddVariable(variable);
    if (index < 0) throw MeaningFault{};
    return index;
}

void Analyser::TakeOneHot(const MachineStatement& machine) {
    std::vector<int> weights;
    bool list = false;
    OneHotMachine hot;
    hot.At = machine.At;
    for (const Slot& slot : MachineSlots(machine, weights, list)) {
        hot.Members.push_back(slot.Variable);
        Fresh({slot.Variable, Extension::None, false, machine.At});  // one that is 1 in no state is 0
    }
    CheckStates(machine, elaborator_.List(machine.Field));
    std::map<std::string, NodeId> holds;  // by value: the machine is in this state
    std::map<std::string, int> registers;
    const auto add = [&](std::int32_t constant) {
        const std::string value = Digits(syntax_.Constants[static_cast<std::size_t>(constant)]);
        if (holds.contains(value)) return;
        const int variable = AddStateRegister(machine, value);
        const NodeId node = elaborator_.SignalNode(variable, false);
        hot.Registers.push_back(variable);
        registers[value] = variable;
        holds[value] = value.empty() ? analysis_.Gates.Not(node) : node;
        Fresh({variable, Extension::D, false, machine.At});
    };
    for (const State& state : machine.States) {
        add(state.Value);
        for (const Rule& rule : state.Rules)
            if (rule.Next >= 0) add(rule.Next);
    }
    for (const auto& [value, node] : holds)
        for (std::size_t i = 0; i < hot.Members.size(); ++i)
            if (static_cast<std::size_t>(weights[i]) < value.size() &&
                value[static_cast<std::size_t>(weights[i])] == '1')
                At(hot.Members[i], Extension::None, machine.At).On.push_back(node);
    for (const State& state : machine.States) TakeOneHotState(machine, state, holds, registers);
    oneHots_.push_back(hot);
}

// Where the machine goes from a state. The register of 0 takes every way that leads elsewhere.
void Analyser::TakeOneHotState(const MachineStatement& machine, const State& state,
                               const std::map<std::string, NodeId>& holds,
                               const std::map<std::string, int>& registers) {
    Network& gates = analysis_.Gates;
    const auto go = [&](const std::string& value, NodeId condition) {
        if (!value.empty()) At(registers.at(value), Extension::D, machine.At).On.push_back(condition);
        const auto zero = registers.find("");
        if (!value.empty() && zero != registers.end())
            At(zero->second, Extension::D, machine.At).On.push_back(condition);
    };
    const std::string here = Digits(syntax_.Constants[static_cast<std::size_t>(state.Value)]);
    const std::vector<NodeId> conditions = RuleConditions(state.Rules, holds.at(here));
    std::vector<NodeId> gone;
    for (std::size_t i = 0; i < conditions.size(); ++i) {
        if (conditions[i] == Network::noConnect) continue;
        for (const Target& target : state.Rules[i].Out) AddOut(target, conditions[i]);
        if (state.Rules[i].Next < 0) continue;
        go(Digits(syntax_.Constants[static_cast<std::size_t>(state.Rules[i].Next)]), conditions[i]);
        gone.push_back(conditions[i]);
    }
    if (machine.Kind != Extension::D)  // the other kinds hold where nothing leads on
        go(here, gates.And(std::vector{holds.at(here), gates.Not(gates.Or(gone))}));
}

void Analyser::MoveControls(const OneHotMachine& hot) {
    for (Extension control : kPresets)
        for (int member : hot.Members)
            if (gathered_.contains({member, control}))
                report_.Add(Code::OneHotControl, hot.At, ExtensionName(control));
    for (Extension control : kControls) {
        std::vector<Gathered> found;
        for (int member : hot.Members) {
            const auto entry = gathered_.find({member, control});
            if (entry == gathered_.end()) continue;
            found.push_back(entry->second);
            gathered_.erase(entry);
        }
        if (found.empty()) continue;
        const bool same = found.size() == hot.Members.size() &&
                          std::all_of(found.begin(), found.end(), [&](const Gathered& one) {
                              return one.On == found[0].On && one.Complement == found[0].Complement;
                          });
        if (!same) report_.Add(Code::OneHotControl, hot.At, ExtensionName(control));
        for (int variable : hot.Registers) gathered_[{variable, control}] = found[0];
    }
}

}  // namespace front
