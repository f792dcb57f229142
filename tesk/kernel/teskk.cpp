#include "base/ToolInterface.h"
#include "kernel/CompilerSteps.h"
#include "kernel/Host.h"
#include "kernel/LastCompile.h"
#include "kernel/Paths.h"
#include "kernel/SimulatorSteps.h"
#include "kernel/StageGuard.h"
#include "kernel/Stages.h"

namespace {

// Option "s": the simulator behind the compiler, on its .ABS. False if it found errors.
bool SimulateBehind(front::Run& run, front::Files& files, front::Listener& listener) {
    if (!kernel::IsFile(run.Output(".SI"))) {
        run.Said.Add(front::Code::NoVectors, {});
        return true;
    }
    SimulatorRun simulator(files, listener);
    simulator.Base = run.Base;
    simulator.Jedec = run.JedecPath;
    simulator.Options.Listing = run.Options.List;
    simulator.Options.Append = !run.JedecPath.empty();
    return kernel::RunSimulator(simulator);
}

// True if there were no errors.
bool Compile(const base::RunRecord& record, front::Listener& listener) {
    kernel::DiskFiles files;
    front::Run run(files, listener);
    run.Base = base::TextOf(record.szDesign);
    run.Device = base::TextOf(record.szDevice);
    run.Library = base::TextOf(record.szLibrary);
    const std::string letters = base::TextOf(record.szOptions);
    run.Options = front::Options::Parse(letters);
    kernel::KeepLetters(files.Identity(run.Output(".PLD")), letters);
    const bool compiled = kernel::RunCompiler(run);
    const bool simulated = !compiled || !run.Options.Simulate || SimulateBehind(run, files, listener);
    front::WriteList(run);
    return compiled && run.Ok() && simulated;
}

}  // namespace

// Compiles the design of the record. 0: no errors, 1: errors.
extern "C" std::int32_t TeskkVB(base::RunRecord* record) {
    if (record == nullptr) return 1;
    kernel::HostListener listener(record->hWndStatus, record->hWndMessages);
    front::Report said(listener);
    const bool clean = kernel::Guarded(said, "compile", [&] { return Compile(*record, listener); });
    kernel::SayStatus(said, clean ? "Compilation complete" : "Compilation ended with errors");
    return clean ? 0 : 1;
}
