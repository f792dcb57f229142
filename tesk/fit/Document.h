#pragma once

#include <string>

#include "fit/Fitter.h"

// Parts of the .DOC file. Lines end CR LF.
namespace fit {

// The package from above with the names at its pins ("!" before active-low ones). Empty for `virtual`.
std::string ChipDiagram(const Device& device, const Design& design, const Fit& fit);

// The fuses: a line a row of the array ("x" connected, "-" not, first the number of its first fuse), by
// macrocell with its pin, then the other fuses as 0 and 1. Empty for a fit without fuses.
std::string FusePlot(const Device& device, const Fit& fit);

}  // namespace fit
