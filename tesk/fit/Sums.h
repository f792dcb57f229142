#pragma once

#include <optional>

#include "fit/Fitter.h"

namespace fit {

// The complement of a sum, reduced by absorption. Nothing if it grows beyond some thousand terms on the way.
std::optional<Sum> ComplementOf(const Sum& sum);

bool IsTrue(const Sum& sum);  // it holds an empty term
bool IsSame(Sum a, Sum b);    // the same terms, in any order

}  // namespace fit
