#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>

#include "shell/HelpLibrary.h"

namespace {

// A search in all the help that is shipped: a key is pressed for each.
void SearchAllHelp(benchmark::State& state) {
    shell::HelpLibrary library;
    for (const auto& file : std::filesystem::directory_iterator(HELP_FOLDER)) {
        std::ifstream in(file.path(), std::ios::binary);
        library.Books.push_back(
            shell::ReadHelpBook(file.path().stem().string(),
                                {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()}));
    }
    for (auto _ : state) benchmark::DoNotOptimize(library.Search("fuse map of e"));
}
BENCHMARK(SearchAllHelp)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
