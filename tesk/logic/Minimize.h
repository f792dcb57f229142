#pragma once

#include <cstdint>
#include <optional>

#include "logic/Cover.h"

// Two-level minimization. A function is given by its on-set and its don't-care set; a point in both counts as
// don't care. A result R is right if on minus dontCare lies in R and R lies in on plus dontCare.
namespace logic {

enum class Level {
    m0,  // nothing: the cubes as they are, empty ones dropped
    m1,  // quick: absorption and adjacency
    m2,  // exact: prime implicants and a least cover
    m3,  // one fast heuristic pass
    m4,  // the best heuristic
};

// Bounds count steps of work, not time, so that the same input gives the same result on every machine.
struct Options {
    bool Shared = true;   // outputs share terms; false: each output alone, each term has one output
    double Effort = 1.0;  // scales the bounds of m2, m3 and m4; 0.01 to 1000
};

struct MinimizeResult {
    Cover Terms;
    Level Used = Level::m0;      // less than asked for where a bound was reached
    bool Proved = false;         // no cover with fewer terms exists (of single-output terms if not shared)
    std::size_t LowerBound = 0;  // terms that every cover needs, 0 if not known
};

// All covers must have the same layout (else error 5).
MinimizeResult Minimize(const Cover& on, const Cover& dontCare, Level level, const Options& options = {});

// The terms alone, of a function without don't cares.
Cover Minimized(const Cover& on, Level level, const Options& options = {});

// The same for a function given by on-set and off-set, all else don't care. Raises error 5 if they meet.
MinimizeResult MinimizeOnOff(const Cover& on, const Cover& off, Level level, const Options& options = {});

// Raises error 5 if the covers have a point in common.
void DemandApart(const Cover& on, const Cover& off);

// Checks by unate recursion. They answer exactly; the work can grow with 2^inputs in the worst case, so the
// forms with a bound give up (empty) after about so many cube operations.
bool IsTautology(const Cover& cover);                 // every output is 1 everywhere
bool Covers(const Cover& outer, const Cover& inner);  // every point of inner lies in outer
bool Equivalent(const Cover& a, const Cover& b);
bool Implements(const Cover& result, const Cover& on, const Cover& dontCare);
std::optional<bool> CoversWithin(const Cover& outer, const Cover& inner, std::uint64_t bound);

// The complement of every output; empty if it needs more than `cubeLimit` cubes or too much work.
std::optional<Cover> Complement(const Cover& cover, std::size_t cubeLimit = 1000000);
// The same within `steps` cube operations; what it took goes off them.
std::optional<Cover> Complement(const Cover& cover, std::size_t cubeLimit, std::uint64_t& steps);

}  // namespace logic
