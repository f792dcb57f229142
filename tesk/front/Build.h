#pragma once

#include "front/Analysis.h"
#include "front/Options.h"
#include "front/Report.h"

namespace front {

// Turns the definitions into the design's equations: sums of product terms, not yet reduced. An equation that
// grows beyond the limits is reported and left out.
void Build(Analysis& analysis, const Options& options, Report& report);

// Reduces the equations, each by its own level; for a real device, and where the options ask for the choice
// of polarities, their complements too.
void Minimise(Design& design, const Options& options, Report& report);

// Reduces some of the equations anew from what they were before, each alone and by the level that it has now.
void ReduceAgain(Design& design, const std::vector<std::size_t>& places, const Options& options);

}  // namespace front
