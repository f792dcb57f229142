#include "kernel/StageGuard.h"
#include "kernel/Stages.h"

namespace {

front::Level LevelOf(sim::Severity severity) {
    if (severity == sim::Severity::Error) return front::Level::Error;
    return severity == sim::Severity::Warning ? front::Level::Warning : front::Level::Information;
}

void Write(SimulatorRun& run, const std::string& path, const std::string& text) {
    const std::string failure = run.Disk.Write(path, text);
    if (!failure.empty())
        run.Said.Add(front::Code::CannotWrite, {}, std::string(front::FileName(path)) + ": " + failure);
}

bool SimulateVectors(SimulatorRun& run) {
    run.Said.Status("Simulating");
    const sim::SimulationResult result = sim::Simulate(run.Texts, run.Options);
    for (const sim::Message& message : result.Messages) {
        const std::string file = run.Base + std::string(sim::FileExtension(message));
        run.Said.AddForeign(LevelOf(message.Level), sim::ListLine(message, front::FileName(file)));
    }
    Write(run, run.Base + ".SO", result.So);
    if (!result.Vcd.empty()) Write(run, run.Base + ".VCD", result.Vcd);
    if (!result.Jed.empty()) Write(run, run.Jedec, result.Jed);
    run.Said.Info(std::to_string(result.Vectors) + " vectors, " + std::to_string(result.Mismatches) +
                  " mismatches");
    return result.Errors == 0;
}

}  // namespace

int VsimaStage(SimulatorRun* run) {
    return kernel::Guarded(run->Said, "simulate", [&] { return SimulateVectors(*run); }) ? 1 : 0;
}
