#pragma once

#include "front/Analysis.h"
#include "front/Options.h"
#include "front/Report.h"

namespace front {

// Turns the definitions into the design's equations: sums of product terms, not yet reduced. An equation that
// grows beyond the limits is reported and left out.
void Build(Analysis& analysis, const Options& options, Report& report);

// Reduces the equations, each by its own level, and chooses polarities as the options ask.
void Minimise(Design& design, const Options& options, Report& report);

}  // namespace front
