#include "kernel/StageGuard.h"
#include "kernel/Stages.h"

namespace {

// Reads the design and checks the vectors. What is wrong in them the simulation tells with its results.
bool ReadVectors(SimulatorRun& run) {
    run.Said.Status("Reading vectors");
    const auto abs = run.Disk.Read(run.Base + ".ABS", sim::AbsLimits::FileBytes);
    if (!abs) run.TellUnreadable("0100va", ".ABS");
    run.Si = kernel::DiskSource::Open(run.Base + ".SI");
    if (abs && !run.Si) run.TellUnreadable("0200va", ".SI");
    if (!abs || !run.Si) return false;
    run.Steps = std::make_unique<kernel::DiskSpool>(run.Base + ".SO");
    run.Checked = sim::Check(*abs, *run.Si, *run.Steps);
    if (run.Si->Failed()) {
        run.TellUnreadable("0200va", ".SI");
        return false;
    }
    if (run.Checked.Abs.Ok()) run.Said.Info(std::to_string(run.Checked.Si.Vectors) + " vectors");
    return true;
}

}  // namespace

int VornaStage(SimulatorRun* run) {
    return kernel::Guarded(run->Said, "read vectors", [&] { return ReadVectors(*run); }) ? 1 : 0;
}
