#include "front/Build.h"

#include "front/Expander.h"
#include "front/Limits.h"
#include "logic/Minimize.h"

namespace front {

namespace {

// Terms of `a` cut down to where `b` is 1.
logic::Cover Intersection(const logic::Cover& a, const logic::Cover& b) {
    logic::Cover result(a.Form());
    std::vector<logic::Word> cube(static_cast<std::size_t>(a.Form().Words()));
    for (std::size_t i = 0; i < a.Size(); ++i) {
        for (std::size_t j = 0; j < b.Size(); ++j) {
            if (!a.Form().Meet(a[i], b[j])) continue;
            a.Form().Intersect(cube.data(), a[i], b[j]);
            result.Add(cube.data());
        }
    }
    return result;
}

void BuildOne(const Definition& definition, Expander& expander, Design& design) {
    const TermList on = expander.Expand(definition.On);
    const TermList dontCare = expander.Expand(definition.DontCare);
    Equation equation;
    equation.Variable = definition.Variable;
    equation.To = definition.To;
    equation.At = definition.At;
    equation.Inputs = Expander::SignalsOf(on, dontCare);
    equation.On = Expander::ToCover(on, equation.Inputs);
    equation.DontCare = logic::Cover(equation.On.Form());
    if (!dontCare.Empty()) {
        const auto off = logic::Complement(equation.On, Limits::Terms);
        if (off) equation.DontCare = Intersection(Expander::ToCover(dontCare, equation.Inputs), *off);
    }
    design.Equations.push_back(std::move(equation));
}

}  // namespace

void Build(Analysis& analysis, const Options& options, Report& report) {
    Expander expander(analysis, report);
    Design& design = analysis.Result;
    for (const Definition& definition : analysis.Definitions) {
        if (report.Full()) return;
        const Variable& variable = design.Variables[static_cast<std::size_t>(definition.Variable)];
        try {
            BuildOne(definition, expander, design);
            const int own = variable.Minimization;
            design.Equations.back().Level = own >= 0 ? own : options.Minimization;
        } catch (const TermsExceeded& exceeded) {
            report.Add(Code::TooManyTerms, definition.At,
                       variable.Name + " needs more than " + std::to_string(exceeded.Limit));
        } catch (const BudgetExceeded&) {
            report.Add(Code::DesignTooLarge, definition.At, "product terms of " + variable.Name);
            return;
        }
    }
}

}  // namespace front
