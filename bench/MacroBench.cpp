#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <QKeyEvent>
#include <QWindow>

#include "aids/MacroLibrary.h"
#include "platform/qt/HostClock.h"
#include "platform/qt/HostInputJournal.h"
#include "support/MemoryFiles.h"

// A macro file of 5 MB, and the playing of a recording: the time of an event must not grow with their number.
namespace {

void ReadFile(benchmark::State& run) {
    constexpr std::size_t size = std::size_t{5} << 20;
    const std::string equation = "y{i} = (en) & [s{i}..0]:{i} # hold & !load ; /* a line of a body */\r\n";
    const std::size_t body = size / 100;  // a table holds little more than a hundred
    std::string text;
    for (int i = 0; i < 100; ++i) {
        const std::size_t from = text.size();
        text += "$MACRO M" + std::to_string(i) + " y s en\r\n";
        while (text.size() - from < body) text += equation;
        text += "$MEND\r\n";
    }
    doubles::MemoryFiles files;
    files.WriteFile("C:\\M.MAC", text);
    for (auto _ : run) {
        aids::MacroTable table;
        aids::LoadMacroFile(files, "C:\\M.MAC", table);
        if (table.Count != 100) run.SkipWithError("macros are missing");
    }
    run.counters["MB"] = static_cast<double>(text.size()) / (1 << 20);
}
BENCHMARK(ReadFile)->Unit(benchmark::kMillisecond);

void Play(benchmark::State& run) {
    const auto count = static_cast<std::size_t>(run.range(0));
    platform::qt::HostClock time;
    platform::qt::HostInputJournal journal(time);
    QWindow window;
    window.setGeometry(0, 0, 200, 200);
    window.show();
    window.requestActivate();
    while (QGuiApplication::focusWindow() != &window) QGuiApplication::processEvents();
    std::vector<platform::InputEvent> events;
    journal.Record([&](const platform::InputEvent& event) { events.push_back(event); }, [] {});
    QKeyEvent press(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, "a");
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_A, Qt::NoModifier, "a");
    QCoreApplication::sendEvent(&window, &press);
    QCoreApplication::sendEvent(&window, &release);
    journal.Stop();
    if (events.size() != 2) return run.SkipWithError("nothing was recorded");
    for (auto _ : run) {
        std::size_t next = 0;
        bool isOver = false;
        journal.Play([&]() -> std::optional<platform::InputEvent> {
            if (next < count) return events[next++ % 2];
            isOver = true;
            return std::nullopt;
        });
        while (!isOver) QGuiApplication::processEvents();
    }
    run.counters["event"] =
        benchmark::Counter(static_cast<double>(count),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(Play)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
