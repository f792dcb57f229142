#include "kernel/CompilerSteps.h"
#include "kernel/Host.h"
#include "kernel/Paths.h"
#include "kernel/RunRecord.h"
#include "kernel/SimulatorSteps.h"
#include "kernel/StageGuard.h"

namespace {

// The run driver clears a design's outputs away before it simulates, so that the simulator makes what it
// reads: the .ABS, and with option "j" the .JED that takes the vectors. False if the design has errors.
bool CompileFirst(const kernel::RunRecord& record, front::Files& files, front::Listener& listener,
                  bool withJedec) {
    front::Run run(files, listener);
    run.Base = kernel::TextOf(record.szDesign);
    run.Device = kernel::TextOf(record.szDevice);
    run.Library = kernel::TextOf(record.szLibrary);
    run.Options = front::Options::Parse(withJedec ? "jakbm4" : "akbm4");
    return kernel::RunCompiler(run);
}

// True if there were no errors.
bool Simulate(const kernel::RunRecord& record, front::Listener& listener) {
    kernel::DiskFiles files;
    SimulatorRun run(files, listener);
    run.Base = kernel::TextOf(record.szDesign);
    run.Jedec = run.Base + ".JED";
    run.Options = sim::ParseOptions(kernel::TextOf(record.szOptions));
    const bool isCompiled = files.Read(run.Base + ".ABS", sim::AbsLimits::FileBytes).has_value();
    return (isCompiled || CompileFirst(record, files, listener, run.Options.Append)) &&
           kernel::RunSimulator(run);
}

}  // namespace

// Simulates the design of the record. 0: no errors, 1: errors.
extern "C" std::int32_t VornkVB(kernel::RunRecord* record) {
    if (record == nullptr) return 1;
    kernel::HostListener listener(record->hWndStatus, record->hWndMessages);
    front::Report said(listener);
    const bool clean = kernel::Guarded(said, "simulate", [&] { return Simulate(*record, listener); });
    kernel::SayStatus(said, clean ? "Simulation complete" : "Simulation ended with errors");
    return clean ? 0 : 1;
}
