#pragma once

#include "kernel/Stages.h"
#include "sim/SiFile.h"

namespace kernel {

inline constexpr std::size_t kSiBytes = sim::SiLimits::FileBytes;

// Vectors, then simulation. True if neither found an error.
bool RunSimulator(SimulatorRun& run);

}  // namespace kernel
