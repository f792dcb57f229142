#include "front/Proving.h"

#include <algorithm>

#include "front/Complex.h"
#include "proof/JedecFile.h"

namespace front {

proof::Equations ToEquations(const Design& design) {
    proof::Equations result;
    std::vector<std::size_t> names;
    for (const Variable& variable : design.Variables) {
        names.push_back(result.Names.size());
        if (variable.Kind == VariableKind::Intermediate) continue;
        const bool isNode = variable.Kind != VariableKind::Pin;
        result.Names.push_back({variable.Name, variable.Number, isNode, variable.ActiveLow && !isNode,
                                RegisterKindOf(variable.Register)});
    }
    const bool isReduced = !design.Written.empty();
    for (const Equation& equation : isReduced ? design.Written : design.Equations) {
        proof::Wanted& wanted = result.Functions.emplace_back();
        wanted.Name = names[static_cast<std::size_t>(equation.Variable)];
        wanted.To = InputOf(equation.To);
        for (const int input : equation.Inputs) {
            const Signal& signal = design.Signals[static_cast<std::size_t>(input)];
            wanted.Columns.push_back({names[static_cast<std::size_t>(signal.Variable)], signal.Pin});
        }
        wanted.On = equation.On;
        wanted.DontCare = equation.DontCare;
    }
    return result;
}

namespace {

bool ProveComplex(const Design& design, const Fitted& fitted, std::string_view jedec, Report& report) {
    proof::Equations equations = ToEquations(design);
    for (std::size_t i = 0; i < equations.Names.size(); ++i)
        if (equations.Names[i].Node) equations.Names[i].ActiveLow = IsLow(fitted.Result.Placements[i]);
    const ComplexFit& complex = *fitted.Complex;
    const proof::JedecFile file = proof::ReadJedec(jedec);
    const auto parts = ReadComplex(complex.Device, complex.Names.Package, file.Fuses);
    const auto view = cpld::ViewForProof(std::move(equations), parts);
    std::vector<Message> messages = file.Messages;
    const auto told = proof::Tell(view.Prove(), view.Chip, false);
    messages.insert(messages.end(), told.begin(), told.end());
    ReportWhereDeclared(design, messages, report);
    return !model::HasErrors(messages);
}

}  // namespace

bool ProveMap(const Design& design, const Fitted& fitted, std::string_view jedec, Report& report) {
    if (fitted.Complex) return ProveComplex(design, fitted, jedec, report);
    proof::Equations equations = ToEquations(design);
    for (std::size_t i = 0; i < equations.Names.size(); ++i)
        if (equations.Names[i].Node) equations.Names[i].ActiveLow = IsLow(fitted.Result.Placements[i]);
    proof::JedecFile file = proof::ReadJedec(jedec);
    const proof::ChipResult chip = proof::ReadBack(fitted.Device, file.Fuses);
    std::vector<Message> messages = std::move(file.Messages);
    if (!chip.Found && !design.Fuses.empty()) {
        messages.push_back(model::MakeMessage(proof::MessageCode("7503tc").Entry(), {},
                                              "they fit no mode of " + fitted.Device.Mnemonic));
    } else if (!chip.Found) {
        messages.insert(messages.end(), chip.Messages.begin(), chip.Messages.end());
    } else {
        const proof::Verdict verdict = proof::Prove(equations, *chip.Found);
        const auto told = proof::Tell(verdict, *chip.Found, !design.Fuses.empty());
        messages.insert(messages.end(), told.begin(), told.end());
    }
    ReportWhereDeclared(design, messages, report);
    return !model::HasErrors(messages);
}

}  // namespace front
