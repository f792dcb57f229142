#include <algorithm>
#include <optional>
#include <utility>

#include "front/Build.h"
#include "front/Expander.h"
#include "front/Limits.h"
#include "logic/Minimize.h"

namespace front {

namespace {

constexpr std::size_t kShownEquations = 40;  // a window repaints for each
constexpr std::size_t kManyTerms = 4096;     // such sums get the least effort, exact reduction is not tried
constexpr double kLeastEffort = 0.01;

logic::Cover Reduce(const Equation& equation, const logic::Cover& on, bool& fellBack) {
    const bool large = on.Size() > kManyTerms;
    const bool exact = equation.Level == 2;
    const auto level = static_cast<logic::Level>(exact && large ? 4 : equation.Level);
    const logic::Options options{.Shared = false, .Effort = large ? kLeastEffort : 1.0};
    logic::MinimizeResult result = logic::Minimize(on, equation.DontCare, level, options);
    fellBack = exact && result.Used != logic::Level::m2;
    return std::move(result.Terms);
}

// What the complement of the equation needs, reduced like the equation; nothing if it would be too long.
std::optional<logic::Cover> ReducedComplement(const Equation& equation) {
    logic::Cover taken = equation.On;
    taken.AddAll(equation.DontCare);
    const auto off = logic::Complement(taken, Limits::Terms);
    bool fellBack = false;
    if (!off) return std::nullopt;
    return Reduce(equation, *off, fellBack);
}

// The output of a register of this kind can be inverted behind it; of a T register or of two inputs it can't.
bool CanInvert(const Equation& equation) {
    return equation.To == Extension::None || equation.To == Extension::D || equation.To == Extension::L;
}

// The equations that sums of product terms realize; clocks and the like share nothing with them.
bool IsData(const Equation& equation) {
    return equation.To == Extension::None || IsRegisterInput(equation.To);
}

// Puts the equation on the signals that its terms use.
void Resize(Equation& equation, const TermList& on) {
    const TermList dontCare = Expander::FromCover(equation.DontCare, equation.Inputs);
    equation.Inputs = Expander::SignalsOf(on, dontCare);
    equation.On = Expander::ToCover(on, equation.Inputs);
    equation.DontCare = Expander::ToCover(dontCare, equation.Inputs);
}

std::vector<int> SignalsOf(const std::vector<Equation*>& group) {
    std::vector<int> signals;
    for (const Equation* equation : group)
        signals.insert(signals.end(), equation->Inputs.begin(), equation->Inputs.end());
    std::sort(signals.begin(), signals.end());
    signals.erase(std::unique(signals.begin(), signals.end()), signals.end());
    return signals;
}

// Appends a cover of one equation to that of a group, as the group's output.
void AddOutput(logic::Cover& to, const std::vector<int>& signals, const Equation& equation,
               const logic::Cover& from, int output) {
    for (std::size_t i = 0; i < from.Size(); ++i) {
        logic::Word* cube = to.Append();
        to.Form().SetOutput(cube, output, true);
        for (std::size_t k = 0; k < equation.Inputs.size(); ++k) {
            const auto place = std::lower_bound(signals.begin(), signals.end(), equation.Inputs[k]);
            to.Form().SetInput(cube, static_cast<int>(place - signals.begin()),
                               from.Form().Input(from[i], static_cast<int>(k)));
        }
    }
}

// Option "ks": the equations of a level are reduced as one function with many outputs.
void ReduceGroup(const std::vector<Equation*>& group, int level) {
    const std::vector<int> signals = SignalsOf(group);
    logic::Cover on(static_cast<int>(signals.size()), static_cast<int>(group.size()));
    logic::Cover dontCare(on.Form());
    for (std::size_t i = 0; i < group.size(); ++i) {
        AddOutput(on, signals, *group[i], group[i]->On, static_cast<int>(i));
        AddOutput(dontCare, signals, *group[i], group[i]->DontCare, static_cast<int>(i));
    }
    const logic::MinimizeResult result =
        logic::Minimize(on, dontCare, static_cast<logic::Level>(level), {.Shared = true});
    for (std::size_t i = 0; i < group.size(); ++i)
        Resize(*group[i], Expander::FromCover(logic::OutputOf(result.Terms, static_cast<int>(i)), signals));
}

// Groups beyond the limits are left to be reduced one by one.
void ReduceGroups(Design& design, std::vector<bool>& done) {
    for (int level = 1; level <= 4; ++level) {
        std::vector<Equation*> group;
        std::vector<std::size_t> places;
        std::size_t terms = 0;
        for (std::size_t i = 0; i < design.Equations.size(); ++i) {
            Equation& equation = design.Equations[i];
            if (equation.Level != level || !IsData(equation)) continue;
            terms += equation.On.Size();
            group.push_back(&equation);
            places.push_back(i);
        }
        if (group.size() < 2 || group.size() > Limits::SharedOutputs || terms > Limits::SharedTerms) continue;
        ReduceGroup(group, level);
        for (std::size_t place : places) done[place] = true;
    }
}

// One equation alone, and its complement where that may be taken.
void ReduceOne(Equation& equation, bool done, const Design& design, const Options& options, Report& report) {
    bool fellBack = false;
    logic::Cover reduced = done ? equation.On : Reduce(equation, equation.On, fellBack);
    if (fellBack) report.Add(Code::ExactFallback, equation.At, design.EquationName(equation));
    const bool wanted = options.Best || options.Demorgan || design.Device != "virtual";
    if (wanted && CanInvert(equation)) {
        if (auto complement = ReducedComplement(equation)) {
            equation.Inverted = options.Demorgan || (options.Best && complement->Size() < reduced.Size());
            equation.Off = std::move(*complement);
            equation.HasOff = true;
        }
    }
    equation.On = std::move(reduced);
}

}  // namespace

void Minimise(Design& design, const Options& options, Report& report) {
    if (options.Keep) report.Add(Code::XorExpanded, {});
    std::vector<bool> done(design.Equations.size());
    if (options.Share) ReduceGroups(design, done);
    const std::size_t step = 1 + design.Equations.size() / kShownEquations;
    for (std::size_t i = 0; i < design.Equations.size(); ++i) {
        if (report.Full()) return;
        if ((i + 1) % step == 0) report.Info(design.EquationName(design.Equations[i]));
        ReduceOne(design.Equations[i], done[i], design, options, report);
    }
}

}  // namespace front
