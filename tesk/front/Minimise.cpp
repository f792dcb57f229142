#include <optional>
#include <utility>

#include "front/Build.h"
#include "front/Limits.h"
#include "logic/Minimize.h"

namespace front {

namespace {

constexpr std::size_t kShownEquations = 40;  // a window repaints for each
constexpr logic::Options kSingle{.Shared = false};

logic::Cover Reduce(const Equation& equation, const logic::Cover& on, bool& fellBack) {
    const auto level = static_cast<logic::Level>(equation.Level);
    logic::MinimizeResult result = logic::Minimize(on, equation.DontCare, level, kSingle);
    fellBack = level == logic::Level::m2 && result.Used != level;
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

}  // namespace

void Minimise(Design& design, const Options& options, Report& report) {
    const std::size_t step = 1 + design.Equations.size() / kShownEquations;
    std::size_t done = 0;
    const bool complements = options.Best || options.Demorgan || design.Device != "virtual";
    for (Equation& equation : design.Equations) {
        if (report.Full()) return;
        if (++done % step == 0) report.Info(design.EquationName(equation));
        bool fellBack = false;
        logic::Cover reduced = Reduce(equation, equation.On, fellBack);
        if (fellBack) report.Add(Code::ExactFallback, equation.At, design.EquationName(equation));
        if (complements && CanInvert(equation)) {
            auto complement = ReducedComplement(equation);
            if (complement) {
                equation.Inverted = options.Demorgan || (options.Best && complement->Size() < reduced.Size());
                equation.Off = std::move(*complement);
                equation.HasOff = true;
            }
        }
        equation.On = std::move(reduced);
    }
}

}  // namespace front
