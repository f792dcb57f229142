#pragma once

#include <optional>

#include "fit/Fitter.h"

namespace fit {

// The complement of a sum, reduced by absorption. Nothing if that takes more work than `budget` allows, in
// comparisons of terms; what was used goes off it.
std::optional<Sum> ComplementOf(const Sum& sum, std::size_t& budget);

// Literals and terms in a fixed order, each once.
void Sort(Sum& sum);

bool IsTrue(const Sum& sum);  // it holds an empty term
bool IsSame(Sum a, Sum b);    // the same terms, in any order
// Whether they are the same function, in whatever terms; false once the budget is used up.
bool IsSameFunction(const Sum& a, const Sum& b, std::size_t& budget);

}  // namespace fit
