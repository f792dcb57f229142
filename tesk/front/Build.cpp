#include "front/Build.h"

#include <algorithm>

#include "front/Exclusive.h"
#include "front/Expander.h"
#include "front/Limits.h"
#include "logic/Minimize.h"

namespace front {

namespace {

// Tells whether terms meet those of a sum. Where they all have the same inputs, as the rows of a table, two
// terms meet only if they are equal.
class Meeting {
  public:
    explicit Meeting(const logic::Cover& sum) : sum_(sum) {
        for (std::size_t i = 0; i < sum.Size(); ++i) {
            alike_ = alike_ && SameInputs(sum[0], sum[i]);
            sorted_.push_back(sum[i]);
        }
        std::sort(sorted_.begin(), sorted_.end(), [this](auto a, auto b) { return Before(a, b); });
    }

    bool With(const logic::Word* term) const {
        if (sorted_.empty()) return false;
        if (alike_ && SameInputs(sum_[0], term))
            return std::binary_search(sorted_.begin(), sorted_.end(), term,
                                      [this](auto a, auto b) { return Before(a, b); });
        return std::any_of(sorted_.begin(), sorted_.end(),
                           [&](const logic::Word* other) { return sum_.Form().Meet(other, term); });
    }

  private:
    bool SameInputs(const logic::Word* a, const logic::Word* b) const {
        return std::equal(a, a + sum_.Form().InputWords(), b, [](logic::Word x, logic::Word y) {
            return logic::Layout::FreePlaces(x) == logic::Layout::FreePlaces(y);
        });
    }
    bool Before(const logic::Word* a, const logic::Word* b) const {
        return std::lexicographical_compare(a, a + sum_.Form().Words(), b, b + sum_.Form().Words());
    }

    const logic::Cover& sum_;
    std::vector<const logic::Word*> sorted_;
    bool alike_ = true;
};

// The don't-cares where the sum is not 1; of those that meet it nothing if its complement is too long.
logic::Cover Outside(const logic::Cover& sum, const logic::Cover& dontCare) {
    logic::Cover outside(sum.Form());
    logic::Cover across(sum.Form());
    const Meeting meeting(sum);
    for (std::size_t i = 0; i < dontCare.Size(); ++i)
        (meeting.With(dontCare[i]) ? across : outside).Add(dontCare[i]);
    if (across.Empty()) return outside;
    if (const auto off = logic::Complement(sum, Limits::Terms))
        outside.AddAll(logic::Intersection(across, *off));
    return outside;
}

void BuildOne(const Definition& definition, bool keep, Expander& expander, Analysis& analysis) {
    const TermList on = expander.Expand(definition.On);
    const TermList dontCare = expander.Expand(definition.DontCare);
    Equation equation;
    equation.Variable = definition.Variable;
    equation.To = definition.To;
    equation.At = definition.At;
    equation.Inputs = Expander::SignalsOf(on, dontCare);
    equation.On = Expander::ToCover(on, equation.Inputs);
    equation.DontCare = Outside(equation.On, Expander::ToCover(dontCare, equation.Inputs));
    if (keep) equation.Sides = SidesOf(definition, analysis, expander);
    analysis.Result.Equations.push_back(std::move(equation));
}

}  // namespace

void Build(Analysis& analysis, const Options& options, Report& report) {
    Expander expander(analysis, report);
    Design& design = analysis.Result;
    for (const Definition& definition : analysis.Definitions) {
        if (report.Full()) return;
        const Variable& variable = design.Variables[static_cast<std::size_t>(definition.Variable)];
        try {
            BuildOne(definition, options.Keep && design.Device != "virtual", expander, analysis);
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
