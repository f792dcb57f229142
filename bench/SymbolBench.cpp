#include <benchmark/benchmark.h>

#include <string>

#include "editor/SymbolTable.h"
#include "support/Doubles.h"

// The symbol scan of a design of 1 MB. The argument is the number of its names.
namespace {

enum class Order { Ascending, Descending, Mixed };

std::string Design(std::int64_t names, Order order) {
    constexpr std::size_t size = std::size_t{1} << 20;
    const std::string equation = "out{i}.d = load & in{i} # !load & (hold{i} $ carry{i}) & !clear ;\r\n";
    const auto filling = size / static_cast<std::size_t>(names);
    std::string text;
    for (std::int64_t i = 0; i < names; ++i) {
        const std::size_t from = text.size();
        const std::int64_t number = order == Order::Ascending    ? i
                                    : order == Order::Descending ? names - i
                                                                 : i * 7919 % names;
        text += "   PIN = signal" + std::to_string(1'000'000 + number) + " ;\r\n";
        while (text.size() - from + equation.size() < filling) text += equation;
    }
    while (text.size() < size) text += equation;
    return text;
}

template <Order order>
void Scan(benchmark::State& run) {
    doubles::System desktop;
    doubles::Dialogs boxes;
    const editor::SymbolDesk desk{desktop, boxes, [](const std::string&) {}};
    const std::string text = Design(run.range(0), order);
    for (auto _ : run) {
        session::Symbols symbols;
        editor::LoadSymbols(desk, text, symbols);
        if (symbols.Count() != static_cast<std::size_t>(run.range(0))) run.SkipWithError("names are missing");
    }
    run.counters["MB"] = static_cast<double>(text.size()) / (1 << 20);
}

BENCHMARK(Scan<Order::Ascending>)->Arg(2'000)->Arg(20'000)->Unit(benchmark::kMillisecond);
BENCHMARK(Scan<Order::Descending>)->Arg(20'000)->Unit(benchmark::kMillisecond);
BENCHMARK(Scan<Order::Mixed>)->Arg(20'000)->Arg(200'000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
