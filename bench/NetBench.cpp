// How fast a netlist of 100,000 gates is read and put into equations.
#include <benchmark/benchmark.h>

#include <string>

#include "net/Design.h"

namespace {

constexpr int inputs = 1000;
constexpr int gates = 100'000;

// Each gate reads an input and a register or the gate before it; every hundredth has a register behind it.
std::string Text() {
    std::string text = ".model t\n.inputs c";
    for (int i = 0; i < inputs; ++i) text += " i" + std::to_string(i);
    text += "\n.outputs";
    for (int i = gates - 100; i < gates; ++i) text += " g" + std::to_string(i);
    text += "\n";
    for (int i = 0; i < gates; ++i) {
        const std::string own = std::to_string(i);
        const std::string other = i < 1500     ? "i" + std::to_string(i * 7 % inputs)
                                  : i % 3 == 0 ? "g" + std::to_string(i - 1)
                                               : "r" + std::to_string(i / 200 * 100);
        text.append(".names i").append(std::to_string(i % inputs)).append(" ").append(other);
        text.append(" g").append(own).append(i % 3 == 0 ? "\n10 1\n01 1\n" : "\n11 1\n");
        if (i % 100 == 0) text.append(".latch g").append(own).append(" r").append(own).append(" re c 2\n");
    }
    return text + ".end\n";
}

void ReadsGates(benchmark::State& state) {
    const std::string text = Text();
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(net::ReadBlif(text));
}
BENCHMARK(ReadsGates)->Unit(benchmark::kMillisecond);

void MakesEquations(benchmark::State& state) {
    const net::Netlist netlist = net::ReadBlif(Text());
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(net::MakeDesign(netlist, {}));
}
BENCHMARK(MakesEquations)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
