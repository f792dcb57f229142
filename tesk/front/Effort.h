#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "front/Design.h"

// How hard sums are reduced: 1 is the whole effort. Bounds are estimates of time and counts of steps, never
// the time itself: the same design gives the same result on any machine.
namespace front {

inline constexpr double kLeastEffort = 0.01;
inline constexpr double kQuick = 0;  // instead of an effort: level 1

// An effort for one sum after another, as long as the shares last.
class EffortShare {
  public:
    // In microseconds: for sums that get the whole effort, and for those that get the least.
    EffortShare(double full, double least) : full_(full), least_(least) {}
    double For(std::size_t terms, std::size_t inputs);

  private:
    double full_;
    double least_;
};

// What reducing the equation takes, in microseconds.
double EstimateOf(const Equation& equation);
// The equations by the work that they make, the least first.
std::vector<std::size_t> BySize(const std::vector<Equation>& equations);
// Of each equation.
std::vector<double> EffortsFor(const std::vector<Equation>& equations);
// For the complements, which come to light one by one.
EffortShare ShareOfComplements(const std::vector<Equation>& equations);

// Steps for the complements of a design: a count for each term of the sum, and a common reserve.
class ComplementSteps {
  public:
    // The complement of the sum and the don't-cares of an equation; nothing if it has more terms than `limit`
    // or takes too long.
    std::optional<logic::Cover> Take(const Equation& equation, std::size_t limit);

  private:
    std::uint64_t reserve_ = 40'000'000;  // less than a second
};

}  // namespace front
