#include "sim/Simulation.h"

#include <optional>

#include "sim/JedVectors.h"
#include "sim/SiReader.h"
#include "sim/SiSteps.h"
#include "sim/SoFile.h"
#include "sim/Vcd.h"

namespace sim {
namespace {

constexpr std::size_t progressStep = 50'000;  // vectors; a fraction of a second for a small design

void Take(SimulationResult& result, const MessageLog& log) {
    result.Messages.insert(result.Messages.end(), log.Items().begin(), log.Items().end());
    result.Errors += log.Errors();
    result.Warnings += log.Warnings();
}

class Simulator {
  public:
    Simulator(const Checked& checked, Source& steps, const SimulationOptions& options,
              const SimulationOutputs& outputs)
        : design_(checked.Abs.Design),
          outputs_(outputs),
          columns_(checked.Si.Head.Columns),
          steps_(steps),
          so_(design_, checked.Si.Head, checked.Si.Vectors, outputs.Aside) {
        if (options.Append && design_.PinCount > 0) jed_.emplace(design_, checked.Si.Head);
    }

    void Run(SimulationResult& result) {
        VcdWriter waves(design_, outputs_.Vcd);
        run_ = RunVectors(design_, columns_, [&](Step& step) { return steps_.Next(step); },
                          {[&](std::uint64_t time, const Machine& machine) { waves.Sample(time, machine); },
                           [&](const VectorRecord& record) { Take(record); }});
        if (waves.Full()) run_.Messages.Add("0308vs", 0);
        if (run_.Vectors > 0) waves.Finish(run_.Vectors * 100);
        result.Vectors = run_.Vectors;
        result.Mismatches = run_.Mismatches;
        sim::Take(result, run_.Messages);
    }

    void Append(SimulationResult& result, std::string_view jedec) const {
        MessageLog log;
        if (!jed_)
            log.Add("0402vs", 0);
        else if (jedec.empty())
            log.Add("0400vs", 0);
        else
            result.Jed = jed_->AppendTo(jedec, log);
        sim::Take(result, log);
    }

    void WriteSo(const SimulationResult& result, Source* listed) {
        so_.Finish(run_, result.Messages, listed, outputs_.So);
    }

  private:
    void Take(const VectorRecord& record) {
        so_.Add(record);
        if (jed_) jed_->Add(record);
        if (outputs_.Progress && record.Number % progressStep == 0) outputs_.Progress(record.Number);
    }

    const AbsDesign& design_;
    const SimulationOutputs& outputs_;
    const std::vector<std::size_t>& columns_;
    StepReader steps_;
    SoWriter so_;
    std::optional<JedVectors> jed_;
    RunResult run_;
};

}  // namespace

SimulationOptions ParseOptions(std::string_view letters) {
    return {letters.find('l') != letters.npos, letters.find('j') != letters.npos};
}

Checked Check(std::string_view abs, Source& si, Sink& steps) {
    Checked checked;
    checked.Abs = ReadAbs(abs);
    if (checked.Abs.Ok()) {
        checked.Si = CheckSi(si, checked.Abs.Design, steps);
    } else {
        MessageLog untold;
        checked.Si.Head = SiReader(si, checked.Abs.Design, untold).Head();
    }
    return checked;
}

SimulationResult Simulate(const Checked& checked, Source& steps, Source& si, std::string_view jedec,
                          const SimulationOptions& options, const SimulationOutputs& outputs) {
    SimulationResult result;
    Take(result, checked.Abs.Messages);
    Take(result, checked.Si.Messages);
    Simulator simulator(checked, steps, options, outputs);
    if (checked.Ok()) simulator.Run(result);
    if (checked.Ok() && options.Append) simulator.Append(result, jedec);
    simulator.WriteSo(result, options.Listing ? &si : nullptr);
    return result;
}

}  // namespace sim
