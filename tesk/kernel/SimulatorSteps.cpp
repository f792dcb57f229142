#include "kernel/SimulatorSteps.h"

namespace kernel {

bool RunSimulator(SimulatorRun& run) { return VornaStage(&run) != 0 && VsimaStage(&run) != 0; }

}  // namespace kernel
