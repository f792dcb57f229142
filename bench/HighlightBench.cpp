#include <benchmark/benchmark.h>

#include <QApplication>
#include <string>

#include "editor/FindText.h"
#include "editor/HighlightTables.h"
#include "editor/Highlighter.h"
#include "platform/qt/TextBox.h"
#include "support/Doubles.h"
#include "support/MemoryFiles.h"
#include "support/Rooms.h"

// Colouring in the real control: the one pass beside the definition's one search for each of the 48 words,
// and the work after one key. The argument is the size of the text in MB. And changing many places at once.
namespace {

class Document : public doubles::Document {
  public:
    platform::qt::TextBox RichBox;
    Document() {
        SetCaption("C:\\WORK\\COUNT8.PLD");
        RichBox.resize(800, 600);
        RichBox.show();
    }
    platform::RichTextBox& txtText() override { return RichBox; }
};

struct Bench {
    doubles::MemoryFiles Files;
    doubles::Desktop Desk{Files};
    doubles::Hall Hall;
    session::Session State;
    session::App App{State, Desk.Host, Hall};
    Document Doc;
    platform::qt::TextBox& Box = Doc.RichBox;

    Bench() {
        State.HighlightEnabled = true;
        State.Keywords = editor::DefaultKeywords();
        State.Delimiters = editor::MakeDelimiters();
    }
};

// A design as users write it: a header, pins, fields, equations, a state machine, comments.
std::string Design(std::int64_t megabytes) {
    const std::string page =
        "Name     COUNT8 ;\r\nPartno   CA0001 ;\r\nDate     10/12/26 ;\r\nDesigner Engineer ;\r\n"
        "Device   g22v10 ;\r\n/* an eight bit counter with load */\r\nPIN 1 = clk ; /* clock */\r\n"
        "PIN [2..9] = [d0..7] ;\r\nFIELD count = [q7..0] ;\r\n$DEFINE up 'b'0\r\n$REPEAT i = [0..7]\r\n"
        "q{i}.d = load & d{i} # !load & (q{i} $ carry{i}) & !clear ;\r\n$REPEND\r\n"
        "SEQUENCE count {\r\nPRESENT 0 IF up NEXT 1 ; IF !up NEXT 7 ; DEFAULT NEXT 0 OUT carry ;\r\n}\r\n";
    std::string text;
    while (text.size() < static_cast<std::size_t>(megabytes) << 20) text += page;
    return text;
}

// Change All of ten thousand places in as much text as it takes.
void ChangeAll(benchmark::State& run) {
    Bench bench;
    editor::SearchValues values;
    values.SearchText = "abc";
    values.ReplaceText = run.range(0) == 0 ? "x" : "xyz";
    values.ReplaceChangeAll = true;
    std::string text;
    for (int i = 0; i < 10'000; ++i) text += "abc";
    for (auto _ : run) {
        bench.Box.SetText(text);
        editor::Replace(bench.App, bench.Doc, values);
        if (bench.Box.TextLength() != static_cast<std::int32_t>(values.ReplaceText.size()) * 10'000)
            run.SkipWithError("places are left");
    }
}
BENCHMARK(ChangeAll)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void Load(benchmark::State& run) {
    Bench bench;
    const std::string text = Design(run.range(0));
    for (auto _ : run) bench.Box.SetText(text);
}

void LoadAndColour(benchmark::State& run) {
    Bench bench;
    const std::string text = Design(run.range(0));
    for (auto _ : run) {
        bench.Box.SetText(text);
        editor::HighlightSyntax(bench.App, bench.Doc);
    }
}

// With the end of the text in view, which is then scrolled to line by line.
void RefreshAtTheEnd(benchmark::State& run) {
    Bench bench;
    bench.Box.SetText(Design(run.range(0)));
    bench.Box.SetSelStart(bench.Box.TextLength());
    for (auto _ : run) editor::HighlightSyntax(bench.App, bench.Doc);
}

// The work after a key in the middle of the text; the key itself is not counted.
void Key(benchmark::State& run) {
    Bench bench;
    bench.Box.SetText(Design(run.range(0)));
    editor::HighlightSyntax(bench.App, bench.Doc);
    bench.Box.SetSelStart(bench.Box.TextLength() / 2);
    const std::string keys = " PIN 12 = clock ;";
    std::size_t next = 0;
    for (auto _ : run) {
        run.PauseTiming();
        bench.Box.SetSelText(keys.substr(next++ % keys.size(), 1));
        run.ResumeTiming();
        editor::HighlightWord(bench.App, bench.Doc);
    }
}

BENCHMARK(Load)->Arg(1)->Arg(10)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadAndColour)->Arg(1)->Arg(10)->Unit(benchmark::kMillisecond);
BENCHMARK(RefreshAtTheEnd)->Arg(1)->Arg(10)->Unit(benchmark::kMillisecond);
BENCHMARK(Key)->Arg(1)->Arg(10)->Iterations(2000)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("DISPLAY")) qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
