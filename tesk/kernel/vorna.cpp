#include "kernel/StageGuard.h"
#include "kernel/Stages.h"
#include "sim/AbsFile.h"
#include "sim/SiFile.h"

namespace {

bool Load(SimulatorRun& run, std::string_view extension, std::size_t most, std::string_view code,
          std::string& text) {
    const std::string path = run.Base + std::string(extension);
    auto bytes = run.Disk.Read(path, most);
    if (bytes) {
        text = std::move(*bytes);
        return true;
    }
    const sim::Message missing{std::string(code), sim::Severity::Error, 0,
                               "File cannot be read: " + std::string(front::FileName(path))};
    run.Said.AddForeign(front::Level::Error, sim::ListLine(missing, front::FileName(path)));
    return false;
}

// Reads the files of the run and counts the vectors. What is wrong in them the simulation tells with its
// results.
bool ReadVectors(SimulatorRun& run) {
    run.Said.Status("Reading vectors");
    if (!Load(run, ".ABS", sim::AbsLimits::FileBytes, "0100va", run.Texts.Abs)) return false;
    if (!Load(run, ".SI", sim::SiLimits::FileBytes, "0200va", run.Texts.Si)) return false;
    if (run.Options.Append)
        run.Texts.Jed = run.Disk.Read(run.Jedec, sim::AbsLimits::FileBytes).value_or(std::string());
    const sim::AbsResult abs = sim::ReadAbs(run.Texts.Abs);
    if (abs.Ok())
        run.Said.Info(std::to_string(sim::ReadSi(run.Texts.Si, abs.Design).File.Vectors) + " vectors");
    return true;
}

}  // namespace

int VornaStage(SimulatorRun* run) {
    return kernel::Guarded(run->Said, "read vectors", [&] { return ReadVectors(*run); }) ? 1 : 0;
}
