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
    std::uint64_t Work = 0;         // for expansion and reduction
    std::uint64_t Table = 0;        // for each covering table
    std::size_t PoolLimit = 20000;  // primes kept
};

struct HeuristicResult {
    Cover Terms;
    std::size_t Essential = 0;  // terms that are essential primes, 0 where not known
};

// Expand, choose a least cover of all primes met so far, reduce, and again.
HeuristicResult MinimizeByExpansion(const Problem& problem, const HeuristicBounds& bounds);

// A cover by primes of all points of the function; false if the budget ran out.
bool PrimeCover(const Cover& off, const Cover& function, Budget& budget, Cover& primes);

}  // namespace logic
