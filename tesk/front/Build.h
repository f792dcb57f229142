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

}  // namespace front
