#pragma once

#include <optional>

#include "fit/Fitter.h"

// Sums of products as functions. Results are minimised but for And and Or.
namespace cpld {

using fit::Literal;
using Sum = fit::Sum;
using Product = fit::Term;

Sum And(const Sum& a, const Sum& b);
Sum Or(Sum a, const Sum& b);
Sum Minimised(const Sum& sum);
// Nothing if the complement takes too many terms or too much work.
std::optional<Sum> Not(const Sum& sum);
std::optional<Sum> ExclusiveOr(const Sum& a, const Sum& b);

Literal Negated(Literal literal);

}  // namespace cpld
