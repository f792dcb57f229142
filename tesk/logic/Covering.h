#pragma once

#include "logic/SparseMatrix.h"

namespace logic {

struct CoveringBounds {
    std::uint64_t Reduce = 0;  // work for dominance
    std::uint64_t Relax = 0;   // for the first lower bound
    std::uint64_t Search = 0;  // for local search
    std::uint64_t Branch = 0;  // for branch and bound
};

struct CoveringResult {
    std::vector<int> Chosen;  // ascending
    std::size_t LowerBound = 0;
    bool Proved = false;
};

// The smallest choice of columns (found) so that every row has one. No row may be empty.
CoveringResult SolveCovering(Lists rows, std::size_t columns, const CoveringBounds& bounds);

}  // namespace logic
