#include <algorithm>
#include <optional>
#include <utility>

#include "front/Build.h"
#include "front/Effort.h"
#include "front/Exclusive.h"
#include "front/Expander.h"
#include "front/Limits.h"
#include "front/Quick.h"
#include "logic/Minimize.h"

namespace front {

namespace {

constexpr std::size_t kShownEquations = 40;  // a window repaints for each
constexpr std::size_t kQuickTerms = 1024;    // such sums are reduced here at level 1
constexpr std::size_t kShortSum = 256;       // far more than any macrocell has

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
        for (std::size_t place : places) {
            ReduceSides(design.Equations[place]);
            done[place] = true;
        }
    }
}

// The complements of the equations where they may be taken. Names those that option "kd" asks for in vain.
class Complements {
  public:
    Complements(Design& design, const Options& options)
        : design_(design), options_(options), share_(ShareOfComplements(design.Equations)) {}

    void Add(Equation& equation, double effort) {
        auto off = steps_.Take(equation, LimitFor(equation, effort));
        if (!off) {
            if (options_.Demorgan) LeaveOut(equation);
            return;
        }
        bool fellBack = false;
        const double possible = share_.For(off->Size(), equation.Inputs.size());
        equation.Off = Reduce(equation, *off, std::min(effort, possible), fellBack);
        equation.HasOff = true;
        equation.Inverted = options_.Demorgan || (options_.Best && equation.Off.Size() < equation.On.Size());
    }

    void TellLeftOut(Report& report) const {
        const std::string more = left_ > kNamed ? " and " + std::to_string(left_ - kNamed) + " more" : "";
        if (left_ > 0) report.Add(Code::ComplementTooLarge, first_, names_ + more);
    }

  private:
    static constexpr std::size_t kNamed = 8;

    // Longer ones will not come down to what a macrocell has, or to fewer terms than the sum for "kb".
    std::size_t LimitFor(const Equation& equation, double effort) const {
        if (options_.Demorgan) return Limits::Terms;
        const std::size_t sum = options_.Best ? equation.On.Size() : 0;
        return effort < 1.0 ? std::max(sum, kShortSum) : std::max(8 * sum, 4 * kShortSum);
    }
    void LeaveOut(const Equation& equation) {
        if (left_ == 0) first_ = equation.At;
        if (left_++ < kNamed) names_ += (names_.empty() ? "" : ", ") + design_.EquationName(equation);
    }

    const Design& design_;
    const Options& options_;
    EffortShare share_;
    ComplementSteps steps_;
    std::string names_;
    std::size_t left_ = 0;
    Place first_;
};

void ReduceOn(Design& design, std::size_t place, double effort, Report& report) {
    Equation& equation = design.Equations[place];
    bool fellBack = false;
    equation.On = Reduce(equation, equation.On, effort, fellBack);
    ReduceSides(equation);
    if (fellBack) report.Add(Code::ExactFallback, equation.At, design.EquationName(equation));
}

void AddComplements(Design& design, const Options& options, const std::vector<std::size_t>& order,
                    const std::vector<double>& efforts, Report& report) {
    if (!options.Best && !options.Demorgan && design.Device == "virtual") return;
    Complements complements(design, options);
    for (const std::size_t place : order)
        if (CanInvert(design.Equations[place])) complements.Add(design.Equations[place], efforts[place]);
    complements.TellLeftOut(report);
}

}  // namespace

void Minimise(Design& design, const Options& options, Report& report) {
    if (options.Keep && design.Device == "virtual") report.Add(Code::XorExpanded, {});
    if (design.Device != "virtual") design.Written = design.Equations;
    std::vector<bool> done(design.Equations.size());
    if (options.Share) ReduceGroups(design, done);
    const std::vector<double> efforts = EffortsFor(design.Equations);
    const std::size_t step = 1 + design.Equations.size() / kShownEquations;
    for (std::size_t i = 0; i < design.Equations.size(); ++i) {
        if (report.Full()) return;
        if ((i + 1) % step == 0) report.Info(design.EquationName(design.Equations[i]));
        if (!done[i]) ReduceOn(design, i, efforts[i], report);
    }
    AddComplements(design, options, BySize(design.Equations), efforts, report);
}

void ReduceAgain(Design& design, const std::vector<std::size_t>& places, const Options& options) {
    Listener silent;
    Report report(silent);
    const std::vector<double> efforts = EffortsFor(design.Written);
    for (const std::size_t place : places) {
        const int level = design.Equations[place].Level;
        design.Equations[place] = design.Written[place];
        design.Equations[place].Level = level;
        ReduceOn(design, place, efforts[place], report);
    }
    AddComplements(design, options, places, efforts, report);
}

}  // namespace front
