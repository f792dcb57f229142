#pragma once

#include "logic/Heuristic.h"
#include "logic/Minimize.h"

namespace logic {

// The work of Minimize on a checked function.
MinimizeResult MinimizeProblem(Problem problem, Level level, const Options& options);

}  // namespace logic
