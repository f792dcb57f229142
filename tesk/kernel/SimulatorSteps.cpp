#include "kernel/SimulatorSteps.h"

namespace kernel {

bool RunSimulator(SimulatorRun& run) {
    const bool ran = VornaStage(&run) != 0 && VsimaStage(&run) != 0;
    run.Said.Status(ran ? "Simulation complete" : "Simulation ended with errors");
    return ran;
}

}  // namespace kernel
