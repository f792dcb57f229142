#include <algorithm>
#include <optional>
#include <utility>

#include "front/Build.h"
#include "front/Expander.h"
#include "front/Limits.h"
#include "front/Quick.h"
#include "logic/Minimize.h"

namespace front {

namespace {

constexpr std::size_t kShownEquations = 40;  // a window repaints for each
constexpr std::size_t kManyTerms = 4096;     // such sums get the least effort, exact reduction is not tried
constexpr std::size_t kQuickTerms = 1024;    // such sums are reduced here at level 1
constexpr double kLeastEffort = 0.01;
constexpr std::size_t kShortSum = 256;  // far more than any macrocell has
constexpr double kQuick = 0;            // instead of an effort: level 1

// In a design of many terms effort goes to the small equations first, as far as it lasts. Costs are estimates
// in microseconds, by what the minimizer took for random sums.
constexpr std::size_t kLargeDesign = 8192;  // terms
constexpr double kFullShare = 400'000;      // for equations that get the whole effort
constexpr double kLeastShare = 400'000;     // for those that get the least

struct Cost {
    double Full;
    double Least;
};

Cost CostOf(const Equation& equation) {
    const auto terms = static_cast<double>(equation.On.Size());
    const double pairs = terms * terms;
    const double full = pairs * static_cast<double>(equation.Inputs.size());
    return {full, std::min(full, 15'000.0) + pairs / 400};
}

std::vector<double> EffortsFor(const Design& design) {
    std::size_t terms = 0;
    std::vector<std::pair<double, std::size_t>> order;
    std::vector<double> efforts;
    for (const Equation& equation : design.Equations) {
        terms += equation.On.Size();
        order.emplace_back(CostOf(equation).Full, efforts.size());
        efforts.push_back(equation.On.Size() > kManyTerms ? kLeastEffort : 1.0);
    }
    if (terms <= kLargeDesign) return efforts;
    std::sort(order.begin(), order.end());
    double full = 0;
    double least = 0;
    for (const auto& [cost, place] : order) {
        if ((full += cost) <= kFullShare) continue;
        least += CostOf(design.Equations[place]).Least;
        efforts[place] = least <= kLeastShare ? kLeastEffort : kQuick;
    }
    return efforts;
}

logic::Cover Reduce(const Equation& equation, const logic::Cover& on, double effort, bool& fellBack) {
    const bool exact = equation.Level == 2;
    const bool quick = equation.Level == 1 ? on.Size() > kQuickTerms : equation.Level > 1 && effort == kQuick;
    fellBack = exact && quick;
    if (quick) return QuickReduce(on);
    const auto level = static_cast<logic::Level>(exact && effort < 1.0 ? 4 : equation.Level);
    const logic::Options options{.Shared = false, .Effort = effort};
    logic::MinimizeResult result = logic::Minimize(on, equation.DontCare, level, options);
    fellBack = exact && result.Used != logic::Level::m2;
    return std::move(result.Terms);
}

// What the complement of the equation needs, reduced like the equation; nothing if it would be too long.
std::optional<logic::Cover> ReducedComplement(const Equation& equation, const logic::Cover& on, double effort,
                                              std::size_t limit) {
    logic::Cover taken = on;
    taken.AddAll(equation.DontCare);
    const auto off = logic::Complement(taken, limit);
    bool fellBack = false;
    if (!off) return std::nullopt;
    return Reduce(equation, *off, effort, fellBack);
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
void ReduceOne(Equation& equation, bool done, double effort, const Design& design, const Options& options,
               Report& report) {
    bool fellBack = false;
    logic::Cover reduced = done ? equation.On : Reduce(equation, equation.On, effort, fellBack);
    if (fellBack) report.Add(Code::ExactFallback, equation.At, design.EquationName(equation));
    const bool wanted = options.Best || options.Demorgan || design.Device != "virtual";
    if (wanted && CanInvert(equation)) {
        // With less effort only complements are looked for that a macrocell or option "kb" takes.
        const std::size_t shorter = options.Best ? std::max(reduced.Size(), kShortSum) : kShortSum;
        const std::size_t limit = effort < 1.0 && !options.Demorgan ? shorter : Limits::Terms;
        if (auto complement =
                ReducedComplement(equation, effort == kQuick ? reduced : equation.On, effort, limit)) {
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
    const std::vector<double> efforts = EffortsFor(design);
    const std::size_t step = 1 + design.Equations.size() / kShownEquations;
    for (std::size_t i = 0; i < design.Equations.size(); ++i) {
        if (report.Full()) return;
        if ((i + 1) % step == 0) report.Info(design.EquationName(design.Equations[i]));
        ReduceOne(design.Equations[i], done[i], efforts[i], design, options, report);
    }
}

}  // namespace front
