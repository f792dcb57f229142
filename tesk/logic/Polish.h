#pragma once

#include "logic/Heuristic.h"

namespace logic {

// Saves literals without changing the number of terms: drops outputs of terms that other terms cover there,
// then literals that what is left of the term does not need. What the budget does not reach stays as it is.
void Polish(Cover& terms, const Problem& problem, Budget& budget);

}  // namespace logic
