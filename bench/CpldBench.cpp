#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>

#include "tesk/cpld/Designs.h"
#include "tesk/cpld/Support.h"
#include "tesk/fit/Designs.h"

// A hundred random designs: how many of them fit, how many fit with the pins of the first time after a change
// of one function, and the longest time that one took.

namespace {

struct Tally {
    std::string Package;
    double Fitted = 0, Again = 0, Longest = 0, Steps = 0;

    cpld::Fit Try(const cpld::Device& device, const fit::Design& design) {
        const auto before = std::chrono::steady_clock::now();
        cpld::FitOptions options;
        options.Hints = false;
        auto fit = cpld::FitDesign(device, Package, design, options);
        const std::chrono::duration<double> took = std::chrono::steady_clock::now() - before;
        Longest = std::max(Longest, took.count());
        Steps += static_cast<double>(fit.Steps) / 100;
        return fit;
    }

    void TryTwice(const cpld::Device& device, fit::Design design, std::mt19937& random) {
        const auto first = Try(device, design);
        if (!first.Ok()) return;
        ++Fitted;
        for (std::size_t i = 0; i < design.Signals.size(); ++i)
            if (!design.Signals[i].Node) design.Signals[i].Pin = first.Places[i].Pin;
        auto& function = design.Functions[random() % design.Functions.size()];
        for (auto& term : *function.True)
            if (!term.empty()) term.front().Signal = function.True->back().back().Signal;
        Again += Try(device, design).Ok() ? 1 : 0;
    }

    void Report(benchmark::State& state) const {
        state.counters["fitted"] = Fitted;
        state.counters["again"] = Again;
        state.counters["longest"] = Longest;
        state.counters["steps"] = Steps;
    }
};

// Functions, inputs, signals that are read.
void Dense(benchmark::State& state) {
    const auto number = [&](std::size_t i) { return static_cast<std::size_t>(state.range(i)); };
    for ([[maybe_unused]] auto _ : state) {
        std::mt19937 random(1);
        Tally tally{number(0) == 0 ? "P44" : "P84"};
        for (int i = 0; i < 100; ++i)
            tally.TryTwice(test::Devices()[number(0)],
                           test::RandomDesign(random, {number(1), number(2), 3, 4, number(3), true}), random);
        tally.Report(state);
    }
}
BENCHMARK(Dense)
    ->Args({0, 28, 4, 32})
    ->Args({1, 56, 4, 32})
    ->Args({1, 56, 4, 36})
    ->Args({1, 56, 4, 38})
    ->Args({1, 56, 4, 40})
    ->Args({1, 56, 4, 42})
    ->Iterations(1)
    ->Unit(benchmark::kSecond);

// What a 22V10 takes, with its clock and its shared reset and preset, all pins left to the fitter.
void Smaller(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) {
        std::mt19937 random(1);
        Tally tally{"P44"};
        for (int i = 0; i < 100;) {
            auto design = test::RandomDesign(random, test::DeviceOf("G22V10"));
            const auto fit = fit::FitDesign(test::DeviceOf("G22V10"), design, {});
            if (!fit.Ok()) continue;
            ++i;
            const std::size_t clock = 0;
            const fit::Sum reset{{{1, i % 2 == 0}, {2, true}}}, preset{{{1, true}, {2, false}}};
            for (std::size_t signal = 0; signal < design.Signals.size(); ++signal) {
                design.Signals[signal].Pin = 0;
                if (design.Signals[signal].Register == model::RegisterKind::None) continue;
                design.Functions.push_back({signal, model::Input::Ck, fit::Sum{{{clock}}}, {}});
                design.Functions.push_back({signal, model::Input::Ar, reset, {}});
                design.Functions.push_back({signal, model::Input::Sp, preset, {}});
            }
            tally.Fitted += tally.Try(test::Devices()[0], design).Ok() ? 1 : 0;
        }
        tally.Report(state);
    }
}
BENCHMARK(Smaller)->Iterations(1)->Unit(benchmark::kSecond);

}  // namespace

BENCHMARK_MAIN();
