#pragma once

#include <optional>

#include "logic/Recursion.h"

namespace logic {

// A function as the minimizers take it.
struct Problem {
    Cover On, DontCare;
    std::optional<Cover> Off;  // what no term may meet, if known
    bool Open = false;         // there are more don't cares than DontCare: all that is not in On nor in Off

    Cover Function() const;  // on-set and don't cares as one
};

struct HeuristicBounds {
    int Rounds = 1;
    int Idle = 3;                   // rounds without a smaller cover
    std::uint64_t Work = 0;         // for expansion and reduction
    std::uint64_t WorkPerCube = 0;  // the same, with the cubes of the on-set
    std::uint64_t Table = 0;        // for each covering table
    std::size_t PoolLimit = 20000;  // primes kept
};

struct HeuristicResult {
    Cover Terms;
    std::size_t LowerBound = 0;  // by essential primes among the terms, 0 where not known
    bool Spent = false;          // the first round took all the work: with more rounds it is the same
};

// Expand, choose a least cover of all primes met so far, reduce, and again.
HeuristicResult MinimizeByExpansion(const Problem& problem, const HeuristicBounds& bounds);

}  // namespace logic
