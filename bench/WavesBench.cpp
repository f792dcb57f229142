#include <benchmark/benchmark.h>

#include <QApplication>
#include <QImage>
#include <QScrollBar>

#include "wavrik/WavePane.h"
#include "wavrik/WaveReaders.h"

// The waveform viewer: one frame while scrolling through a million changes, with all of them in view and with
// few.
namespace {

constexpr int rows = 40;
constexpr int changes = 1'000'000;

wavrik::Waves MillionChanges() {
    wavrik::WavesBuilder builder;
    for (int i = 0; i < rows; ++i) builder.AddSignal("S" + std::to_string(i) + "_", 0);
    for (int i = 0; i < changes; ++i)
        builder.Add(static_cast<std::size_t>(i % rows), i * 10, i / rows % 2 == 0 ? '0' : '1', 0);
    return builder.Finish(changes * 10);
}

void Scroll(benchmark::State& run) {
    wavrik::WavePane pane;
    pane.resize(1600, 1000);
    pane.show();
    pane.ShowAnew(MillionChanges());
    pane.Zoom(static_cast<double>(run.range(0)));
    QImage frame(pane.viewport()->size(), QImage::Format_RGB32);
    const int steps = pane.horizontalScrollBar()->maximum();
    int at = 0;
    for (auto _ : run) {
        at = (at + 97) % steps;
        pane.horizontalScrollBar()->setValue(at);
        pane.viewport()->render(&frame);
    }
    run.SetItemsProcessed(static_cast<std::int64_t>(run.iterations()));  // frames
}
BENCHMARK(Scroll)->Arg(2)->Arg(50)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);

// A simulator's list of a million vectors.
void ReadList(benchmark::State& run) {
    std::string text = "\r\n         C\r\n         L QQQQQQQQ\r\n         K 76543210\r\n\r\n";
    for (int i = 1; i <= changes; ++i) {
        const std::string number = std::to_string(i);
        text += std::string(7 - number.size(), '0') + number + ": C ";
        for (int bit = 7; bit >= 0; --bit) text += (i >> bit & 1) != 0 ? 'H' : 'L';
        text += "\r\n";
    }
    text += "\r\n1000000 vectors, 0 mismatches\r\n";
    for (auto _ : run) benchmark::DoNotOptimize(wavrik::ReadResults(text));
}
BENCHMARK(ReadList)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
