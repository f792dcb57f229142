#pragma once

#include <string_view>

#include "front/Fitting.h"
#include "proof/Prove.h"

namespace front {

// The design's equations before reduction, where its variables are placed.
proof::Equations ToEquations(const Design& design);

// Reads the written fuse map back and proves that it is the design; says so, or what differs. False if it is
// not the design.
bool ProveMap(const Design& design, const Fitted& fitted, std::string_view jedec, Report& report);

}  // namespace front
