#include <benchmark/benchmark.h>

#include "platform/qt/HostFileSystem.h"
#include "project/ProjectTree.h"
#include "support/Doubles.h"

// The tree of a project in a folder of 20,000 files: all of them its own, or two.
namespace {

void Read(benchmark::State& run) {
    const doubles::TemporaryFolder folder;
    const platform::qt::HostFileSystem files;
    const std::string design = run.range(0) != 0 ? "COUNT8" : "OTHER";
    for (const char* name : {"COUNT8.PLD", "OTHER.PLD", "OTHER.JED"}) folder.Write(name, "");
    for (int i = 3; i < 20'000; ++i) folder.Write("COUNT8." + std::to_string(i), "");
    for (auto _ : run) {
        const auto tree = project::ReadProjectTree(files, folder.Logic(design));
        run.counters["nodes"] = static_cast<double>(tree.size());
    }
}

BENCHMARK(Read)->ArgName("own")->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
