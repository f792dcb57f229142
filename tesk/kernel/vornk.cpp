#include "base/ToolInterface.h"
#include "kernel/CompilerSteps.h"
#include "kernel/Host.h"
#include "kernel/LastCompile.h"
#include "kernel/Paths.h"
#include "kernel/SimulatorSteps.h"
#include "kernel/StageGuard.h"

namespace {

constexpr std::string_view usualLetters = "kbm4";

// The .ABS, and if the vectors are to go there the .JED: reduced, protected and named as by `letters`.
front::Options OptionsLike(std::string_view letters, bool withJedec) {
    using front::Options;
    const Options last = Options::Parse(letters);
    Options options;
    options.Absolute = true;
    options.Jedec = withJedec;
    options.Minimization = last.Minimization;
    for (bool Options::*same : {&Options::Best, &Options::Demorgan, &Options::Share, &Options::Keep,
                                &Options::Secure, &Options::Deactivate, &Options::Onehot, &Options::Name})
        options.*same = last.*same;
    return options;
}

// The run driver clears a design's outputs away before it simulates, so that the simulator makes what it
// reads, with the letters of the last compile. False if the design has errors.
bool CompileFirst(const base::RunRecord& record, front::Files& files, front::Listener& listener,
                  SimulatorRun& simulator) {
    front::Run run(files, listener);
    run.Base = simulator.Base;
    run.Device = base::TextOf(record.szDevice);
    run.Library = base::TextOf(record.szLibrary);
    const auto kept = kernel::KeptLetters(files.Identity(run.Output(".PLD")));
    run.Options = OptionsLike(kept.value_or(std::string(usualLetters)), simulator.Options.Append);
    const bool compiled = kernel::RunCompiler(run);
    if (run.JedecPath.empty()) return compiled;
    simulator.Jedec = run.JedecPath;
    if (!kept)
        run.Said.Add(front::Code::LettersUnknown, {},
                     std::string(front::FileName(run.JedecPath)) + " has " + std::string(usualLetters));
    return compiled;
}

// True if there were no errors.
bool Simulate(const base::RunRecord& record, front::Listener& listener) {
    kernel::DiskFiles files;
    SimulatorRun run(files, listener);
    run.Base = base::TextOf(record.szDesign);
    run.Jedec = run.Base + ".JED";
    run.Options = sim::ParseOptions(base::TextOf(record.szOptions));
    const bool isCompiled = files.Read(run.Base + ".ABS", sim::AbsLimits::FileBytes).has_value();
    return (isCompiled || CompileFirst(record, files, listener, run)) && kernel::RunSimulator(run);
}

}  // namespace

// Simulates the design of the record. 0: no errors, 1: errors.
extern "C" std::int32_t VornkVB(base::RunRecord* record) {
    if (record == nullptr) return 1;
    kernel::HostListener listener(record->hWndStatus, record->hWndMessages);
    front::Report said(listener);
    const bool clean = kernel::Guarded(said, "simulate", [&] { return Simulate(*record, listener); });
    kernel::SayStatus(said, clean ? "Simulation complete" : "Simulation ended with errors");
    return clean ? 0 : 1;
}
