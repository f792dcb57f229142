#include "kernel/StageGuard.h"
#include "kernel/Stages.h"

namespace {

void Note(SimulatorRun& run, std::string_view path, const std::string& failure) {
    if (failure.empty()) return;
    run.Said.Add(front::Code::CannotWrite, {}, std::string(front::FileName(path)) + ": " + failure);
}

void Tell(SimulatorRun& run, const sim::SimulationResult& result) {
    for (const sim::Message& message : result.Messages) {
        const std::string file = run.Base + std::string(sim::FileExtension(message));
        run.Said.AddForeign(message.Level, model::ListLine(message, front::FileName(file)));
    }
}

bool SimulateVectors(SimulatorRun& run) {
    run.Said.Status("Simulating");
    std::string jedec;
    if (run.Options.Append)
        jedec = run.Disk.Read(run.Jedec, sim::AbsLimits::FileBytes).value_or(std::string());
    const std::string soName = run.Base + ".SO";
    const std::string vcdName = run.Base + ".VCD";
    kernel::DiskSink so(soName);
    kernel::DiskSink vcd(vcdName);
    kernel::DiskSpool aside(soName);
    const auto progress = [&](std::size_t count) { run.Said.Info(std::to_string(count) + " vectors"); };
    const sim::SimulationResult result = sim::Simulate(run.Checked, run.Steps->Back(), *run.Si, jedec,
                                                       run.Options, {so, vcd, aside, progress});
    if (!run.Steps->Failure().empty()) {
        Note(run, soName, run.Steps->Failure());
        return false;
    }
    if (run.Si->Failed()) run.TellUnreadable("0200va", ".SI");
    Tell(run, result);
    Note(run, soName, aside.Failure().empty() ? so.Done() : aside.Failure());
    Note(run, vcdName, vcd.Done());
    if (!result.Jed.empty()) Note(run, run.Jedec, run.Disk.Write(run.Jedec, result.Jed));
    run.Said.Info(std::to_string(result.Vectors) + " vectors, " + std::to_string(result.Mismatches) +
                  " mismatches");
    return result.Errors == 0 && run.Said.Errors() == 0;
}

}  // namespace

int VsimaStage(SimulatorRun* run) {
    return kernel::Guarded(run->Said, "simulate", [&] { return SimulateVectors(*run); }) ? 1 : 0;
}
