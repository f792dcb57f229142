#include <algorithm>
#include <set>

#include "front/Outputs.h"

namespace front {

namespace {

sim::NetKind KindOf(const Variable& variable, bool hasEnable) {
    if (variable.Kind != VariableKind::Pin) return sim::NetKind::Node;
    if (!variable.Assigned) return hasEnable ? sim::NetKind::Bidirectional : sim::NetKind::Input;
    return hasEnable ? sim::NetKind::Bidirectional : sim::NetKind::Output;
}

sim::Function FunctionOf(const Design& design, const Equation& equation,
                         const std::vector<std::size_t>& nets) {
    sim::Function function;
    function.Net = nets[static_cast<std::size_t>(equation.Variable)];
    function.To = InputOf(equation.To);
    function.Negative = equation.Inverted;
    const logic::Cover& cover = equation.Chosen();
    for (std::size_t i = 0; i < cover.Size(); ++i) {
        sim::Term& term = function.Terms.emplace_back();
        for (const auto& [input, negated] : cover.Form().LiteralsOf(cover[i])) {
            const Signal& signal = design.Signals[static_cast<std::size_t>(equation.Inputs[input])];
            term.push_back({nets[static_cast<std::size_t>(signal.Variable)],
                            signal.Pin ? sim::Feedback::Pin : sim::Feedback::Default, negated});
        }
    }
    return function;
}

// What the device does without an equation. Nets and the fitter's signals are numbered alike.
void AddImplied(const Fitted& fitted, sim::AbsDesign& result) {
    for (const fit::Function& implied : fitted.Result.Implied) {
        sim::Function function;
        function.Net = implied.Signal;
        function.To = implied.To;
        if (!implied.True) continue;
        for (const fit::Term& term : *implied.True) {
            sim::Term& product = function.Terms.emplace_back();
            for (const fit::Literal& literal : term)
                product.push_back({literal.Signal, literal.Pin ? sim::Feedback::Pin : sim::Feedback::Default,
                                   literal.Negated});
        }
        const bool known = std::any_of(
            result.Functions.begin(), result.Functions.end(),
            [&](const auto& other) { return other.Net == function.Net && other.To == function.To; });
        if (!known) result.Functions.push_back(std::move(function));
    }
}

// One net for each variable that is no intermediate one; gives the net of each variable.
std::vector<std::size_t> AddNets(const Design& design, sim::AbsDesign& result) {
    std::set<int> enabled;
    for (const Equation& equation : design.Equations)
        if (equation.To == Extension::OE) enabled.insert(equation.Variable);
    std::vector<std::size_t> nets;
    for (std::size_t i = 0; i < design.Variables.size(); ++i) {
        const Variable& variable = design.Variables[i];
        nets.push_back(result.Nets.size());
        if (variable.Kind == VariableKind::Intermediate) continue;
        const bool pin = variable.Kind == VariableKind::Pin;
        result.Nets.push_back({variable.Name, pin ? variable.Number : 0,
                               KindOf(variable, enabled.contains(static_cast<int>(i))), variable.ActiveLow,
                               RegisterKindOf(variable.Register), variable.PowerUp});
    }
    return nets;
}

// The simulator knows nothing of intermediate variables, nor of fields with them.
void AddFields(const Design& design, const std::vector<std::size_t>& nets, sim::AbsDesign& result) {
    for (const Field& field : design.Fields) {
        sim::Field& entry = result.Fields.emplace_back();
        entry.Name = field.Name;
        bool whole = true;
        for (int member : field.Members) {
            const Variable& variable = design.Variables[static_cast<std::size_t>(member)];
            whole = whole && variable.Kind != VariableKind::Intermediate;
            entry.Members.push_back(nets[static_cast<std::size_t>(member)]);
        }
        if (!whole) result.Fields.pop_back();
    }
}

}  // namespace

sim::AbsDesign ToAbs(const Design& design, const Fitted* fitted) {
    sim::AbsDesign result;
    for (std::size_t i = 0; i < headerWords.size(); ++i)
        if (design.Head.Given[i]) result.Header[std::string(headerWords[i].Name)] = design.Head.Texts[i];
    result.Device = design.Device;
    result.PinCount = design.PinCount;
    const std::vector<std::size_t> nets = AddNets(design, result);
    AddFields(design, nets, result);
    for (const Equation& equation : design.Equations)
        result.Functions.push_back(FunctionOf(design, equation, nets));
    if (fitted != nullptr) AddImplied(*fitted, result);
    return result;
}

}  // namespace front
