#include <benchmark/benchmark.h>

#include <random>

#include "base/PosixFile.h"
#include "zrx/Database.h"
#include "zrx/Document.h"
#include "zrx/Search.h"

// The first partition of a design over 22V10-class devices: outputs, product terms of each, inputs.

namespace {

fit::Design RandomDesign(std::size_t outputs, std::size_t terms, std::size_t inputs) {
    std::mt19937 random(1);
    fit::Design design;
    for (std::size_t i = 0; i < inputs + outputs; ++i)
        design.Signals.push_back({"S" + std::to_string(i), 0, false, false, model::RegisterKind::None});
    for (std::size_t i = 0; i < outputs; ++i) {
        fit::Sum sum(terms);
        for (fit::Term& term : sum)
            for (std::size_t k = 0; k < 5; ++k)
                term.push_back({(i + k * 2 + random() % 2) % inputs, random() % 2 == 0});
        design.Functions.push_back({inputs + i, model::Input::Out, sum, {}, false});
    }
    return design;
}

void Partition(benchmark::State& state) {
    const auto database =
        zrx::ReadDatabase(base::ReadWhole(ZRX_DIR "/zrxlib.db", zrx::DatabaseLimits::FileBytes));
    const auto number = [&](int i) { return static_cast<std::size_t>(state.range(i)); };
    for (auto _ : state) {
        fit::Design design = RandomDesign(number(0), number(1), number(2));
        zrx::CompleteSums(design);
        std::vector<zrx::Candidate> candidates;
        for (const char* name : {"G22V10", "P22V10"}) {
            const zrx::DeviceRecord& record = *database.Find(name);
            candidates.push_back({*zrx::LimitsOf(record), record.Cost, record.Power});
        }
        zrx::Problem problem(std::move(design), std::move(candidates));
        const auto found = zrx::Search(problem, zrx::Options::Parse("m099"), [] { return true; });
        state.counters["chips"] = static_cast<double>(found.FewestChips);
        state.counters["solutions"] = static_cast<double>(found.Solutions.size());
    }
}
BENCHMARK(Partition)
    ->Args({60, 10, 30})
    ->Args({60, 10, 60})
    ->Args({12, 10, 30})
    ->Args({200, 8, 60})
    ->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
