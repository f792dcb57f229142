#include <benchmark/benchmark.h>

#include <QApplication>
#include <QPrinter>
#include <QTest>
#include <vector>

#include "platform/qt/TextBox.h"

namespace {

using platform::FormatRun;
using platform::qt::TextBox;

constexpr std::string_view line = "PIN 12 = CLOCK; /* the clock */ $DEFINE On 'b'1 \r\n";

std::string DesignText(std::size_t size) {
    std::string text;
    text.reserve(size + line.size());
    while (text.size() < size) text += line;
    return text;
}

// Two runs a line: some 400,000 in 10 MB.
std::vector<FormatRun> Runs(std::size_t size) {
    std::vector<FormatRun> runs;
    for (std::size_t at = 0; at < size; at += line.size()) {
        runs.push_back({static_cast<std::int32_t>(at), 3, {0xFF0000}});
        runs.push_back({static_cast<std::int32_t>(at + 16), 15, {0x8000}});
    }
    return runs;
}

struct ShownBox {
    explicit ShownBox(std::size_t size) {
        Box.resize(800, 600);
        Box.SetText(DesignText(size));
        Box.show();
        QCoreApplication::processEvents();
    }
    TextBox Box;
};

void Load(benchmark::State& state) {
    const std::string text = DesignText(static_cast<std::size_t>(state.range(0)));
    TextBox box;
    for ([[maybe_unused]] auto _ : state) box.SetText(text);
}
BENCHMARK(Load)->Arg(100'000)->Arg(10'000'000)->Unit(benchmark::kMillisecond);

void Color(benchmark::State& state) {
    ShownBox shown(static_cast<std::size_t>(state.range(0)));
    auto runs = Runs(static_cast<std::size_t>(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        for (auto& run : runs) run.Format.Bold = !run.Format.Bold;
        shown.Box.ApplyFormats(runs);
    }
}
BENCHMARK(Color)->Arg(100'000)->Arg(10'000'000)->Unit(benchmark::kMillisecond);

void ResetColor(benchmark::State& state) {
    ShownBox shown(10'000'000);
    std::int32_t color = 0;
    for ([[maybe_unused]] auto _ : state) {
        shown.Box.SetVisible(false);
        shown.Box.SetSelStart(0);
        shown.Box.SetSelLength(shown.Box.TextLength());
        shown.Box.SetSelColor(++color);
        shown.Box.SetSelStart(0);
        shown.Box.SetVisible(true);
    }
}
BENCHMARK(ResetColor)->Unit(benchmark::kMillisecond);

void FindAbsent(benchmark::State& state) {
    ShownBox shown(10'000'000);
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(shown.Box.Find("SEQUENCED", 0, -1, static_cast<int>(state.range(0))));
}
BENCHMARK(FindAbsent)->Arg(0)->Arg(platform::rtfMatchCase)->Unit(benchmark::kMillisecond);

// A key in the middle of the text with the repainting of a word that follows it, painting included.
void Key(benchmark::State& state) {
    ShownBox shown(static_cast<std::size_t>(state.range(0)));
    TextBox& box = shown.Box;
    box.SetSelStart(box.TextLength() / 2);
    for ([[maybe_unused]] auto _ : state) {
        QTest::keyClick(&box, Qt::Key_X);
        const std::int32_t caret = box.SelStart();
        box.UpTo(" \r\n;", false);
        const std::int32_t start = box.SelStart();
        box.SetVisible(false);
        box.SetSelLength(caret - start);
        box.SetSelColor(255);
        box.SetSelBold(false);
        box.SetVisible(true);
        box.SetSelStart(caret);
        if (caret - start > 20) QTest::keyClick(&box, Qt::Key_Space);
        QCoreApplication::processEvents();
    }
}
BENCHMARK(Key)->Arg(10'000)->Arg(10'000'000)->Unit(benchmark::kMicrosecond);

// Some 1,000 pages of A4 to a PDF file.
void Print(benchmark::State& state) {
    constexpr std::size_t lines = 72'000;
    TextBox box;
    box.SetText(DesignText(lines * line.size()));
    box.ApplyFormats(Runs(lines * line.size()));
    for ([[maybe_unused]] auto _ : state) {
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName("/dev/null");
        if (!box.Print(printer)) state.SkipWithError("not printed");
    }
}
BENCHMARK(Print)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
