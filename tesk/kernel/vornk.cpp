#include "kernel/Host.h"
#include "kernel/Paths.h"
#include "kernel/RunRecord.h"
#include "kernel/SimulatorSteps.h"

// Simulates the design of the record. 0: no errors, 1: errors.
extern "C" std::int32_t VornkVB(kernel::RunRecord* record) {
    if (record == nullptr) return 1;
    kernel::DiskFiles files;
    kernel::HostListener listener(record->hWndStatus, record->hWndMessages);
    SimulatorRun run(files, listener);
    run.Base = kernel::TextOf(record->szDesign);
    run.Options = sim::ParseOptions(kernel::TextOf(record->szOptions));
    return kernel::RunSimulator(run) ? 0 : 1;
}
