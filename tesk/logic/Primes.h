#pragma once

#include "logic/Recursion.h"

namespace logic {

// Functions of no more inputs are quick work for AllPrimes.
constexpr int maxTopInputs = 12;

// All prime implicants of the multi-output function: the cubes that can neither lose a literal nor gain an
// output. False if there are more than `limit` or the work exceeds the budget.
bool AllPrimes(const Cover& function, std::size_t limit, Budget& budget, Cover& primes);

}  // namespace logic
