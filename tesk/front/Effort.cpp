#include "front/Effort.h"

#include <algorithm>
#include <utility>

#include "logic/Minimize.h"

namespace front {

namespace {

constexpr std::size_t kManyTerms = 4096;  // such sums get the least effort, exact reduction is not tried

// In a design of many terms effort goes to the small equations first, as far as it lasts.
constexpr std::size_t kLargeDesign = 8192;  // terms
constexpr double kFullShare = 400'000;
constexpr double kLeastShare = 400'000;
constexpr double kFullShareOfComplements = 8'000'000;  // in designs that are not large
constexpr std::uint64_t kStepsOfTerm = 1000;

struct Cost {
    double Full;
    double Least;
};

// By what the minimizer took for random sums.
Cost CostOf(std::size_t terms, std::size_t inputs) {
    const double pairs = static_cast<double>(terms) * static_cast<double>(terms);
    const double full = pairs * static_cast<double>(inputs);
    return {full, std::min(full, 15'000.0) + pairs / 400};
}

double Allowed(std::size_t terms) { return terms > kManyTerms ? kLeastEffort : 1.0; }

std::size_t TermsOf(const std::vector<Equation>& equations) {
    std::size_t terms = 0;
    for (const Equation& equation : equations) terms += equation.On.Size();
    return terms;
}

}  // namespace

double EffortShare::For(std::size_t terms, std::size_t inputs) {
    const Cost cost = CostOf(terms, inputs);
    if (cost.Full <= full_) {
        full_ -= cost.Full;
        return Allowed(terms);
    }
    if (cost.Least > least_) return kQuick;
    least_ -= cost.Least;
    return kLeastEffort;
}

double EstimateOf(const Equation& equation) {
    return CostOf(equation.On.Size(), equation.Inputs.size()).Full;
}

std::vector<std::size_t> BySize(const std::vector<Equation>& equations) {
    std::vector<std::pair<double, std::size_t>> order;
    for (const Equation& equation : equations) order.emplace_back(EstimateOf(equation), order.size());
    std::sort(order.begin(), order.end());
    std::vector<std::size_t> places;
    for (const auto& [cost, place] : order) places.push_back(place);
    return places;
}

std::vector<double> EffortsFor(const std::vector<Equation>& equations) {
    const bool large = TermsOf(equations) > kLargeDesign;
    EffortShare share(kFullShare, kLeastShare);
    std::vector<double> efforts(equations.size());
    for (const std::size_t place : BySize(equations)) {
        const Equation& equation = equations[place];
        efforts[place] =
            large ? share.For(equation.On.Size(), equation.Inputs.size()) : Allowed(equation.On.Size());
    }
    return efforts;
}

EffortShare ShareOfComplements(const std::vector<Equation>& equations) {
    return {TermsOf(equations) > kLargeDesign ? kFullShare : kFullShareOfComplements, kLeastShare};
}

std::optional<logic::Cover> ComplementSteps::Take(const Equation& equation, std::size_t limit) {
    logic::Cover taken = equation.On;
    taken.AddAll(equation.DontCare);
    // A quarter of the reserve at most, so that one sum does not take it all.
    const std::uint64_t own = kStepsOfTerm * taken.Size();
    std::uint64_t steps = own + reserve_ / 4;
    const std::uint64_t given = steps;
    auto off = logic::Complement(taken, limit, steps);
    const std::uint64_t used = given - steps;
    if (used > own) reserve_ -= used - own;
    return off;
}

}  // namespace front
