#pragma once

#include "kernel/Stages.h"

namespace kernel {

// Vectors, then simulation. True if neither found an error.
bool RunSimulator(SimulatorRun& run);

}  // namespace kernel
