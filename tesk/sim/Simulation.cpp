#include "sim/Simulation.h"

#include "sim/JedVectors.h"
#include "sim/SoFile.h"
#include "sim/Vcd.h"

namespace sim {
namespace {

void Take(SimulationResult& result, const MessageLog& log) {
    result.Messages.insert(result.Messages.end(), log.Items().begin(), log.Items().end());
    result.Errors += log.Errors();
    result.Warnings += log.Warnings();
}

void Append(SimulationResult& result, const std::string& jedec, const AbsDesign& design, const SiFile& file,
            const RunResult& run) {
    MessageLog log;
    if (design.PinCount == 0) {
        log.Add("0402vs", 0);
    } else if (jedec.empty()) {
        log.Add("0400vs", 0);
    } else {
        result.Jed = AppendVectors(jedec, PinVectors(design, file, run), log);
    }
    Take(result, log);
}

RunResult RunWithWaves(SimulationResult& result, const AbsDesign& design, const SiFile& file) {
    VcdWriter waves(design);
    auto run = RunVectors(design, file,
                          [&](std::uint64_t time, const Machine& machine) { waves.Sample(time, machine); });
    if (waves.Full()) run.Messages.Add("0308vs", 0);
    if (!run.Vectors.empty()) result.Vcd = waves.Text(run.Vectors.size() * 100);
    result.Vectors = run.Vectors.size();
    result.Mismatches = run.Mismatches;
    return run;
}

}  // namespace

SimulationOptions ParseOptions(std::string_view letters) {
    return {letters.find('l') != letters.npos, letters.find('j') != letters.npos};
}

SimulationResult Simulate(const SimulationTexts& texts, const SimulationOptions& options) {
    SimulationResult result;
    const auto abs = ReadAbs(texts.Abs);
    Take(result, abs.Messages);
    SiResult si;
    RunResult run;
    if (abs.Ok()) {
        si = ReadSi(texts.Si, abs.Design);
        Take(result, si.Messages);
    }
    if (abs.Ok() && si.Ok()) {
        run = RunWithWaves(result, abs.Design, si.File);
        Take(result, run.Messages);
        if (options.Append) Append(result, texts.Jed, abs.Design, si.File, run);
    }
    result.So = WriteSo(abs.Design, si.File, run, result.Messages, texts.Si, options.Listing);
    return result;
}

}  // namespace sim
