#pragma once

#include "logic/SparseMatrix.h"

namespace logic {

// Looks for smaller covers by taking columns out and repairing, with growing weights for rows that stay open.
// Returns the smallest cover found (ascending), at worst the start; stops at `goal` columns or when the
// budget is spent. The choice among equals comes from a fixed generator: the same input gives the same
// result.
std::vector<int> SearchCover(const SparseMatrix& matrix, const std::vector<int>& start, std::size_t goal,
                             Budget& budget);

}  // namespace logic
