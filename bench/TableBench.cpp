#include <benchmark/benchmark.h>

#include <QApplication>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>

#include "aids/frmTable.h"
#include "aids/windows/TableSurfaces.h"
#include "support/Doubles.h"
#include "support/MemoryFiles.h"

// The grid of a table of 32,768 rows by 64 bits in a window of the size of a screen.
namespace {

struct Bench {
    doubles::MemoryFiles Files;
    doubles::Desktop Desk{Files};
    aids::frmTable Form{Desk.Host, nullptr};
    QWidget& Grid = *Form.findChild<QWidget*>("picGrid");

    Bench() {
        Form.resize(1920, 1080);
        Form.show();
        Form.activateWindow();
        (void)QTest::qWaitForWindowActive(&Form);
        for (const char* text : {"in", "32", "out", "32", "32768"}) {
            QTest::keyClicks(Form.focusWidget(), text);
            QTest::keyClick(Form.focusWidget(), Qt::Key_Tab);
        }
        QApplication::processEvents();
    }
};

// A row further down, with what that draws anew.
void ScrollARow(benchmark::State& run) {
    Bench bench;
    auto& bar = *bench.Form.findChild<QScrollBar*>("VScroll");
    int row = 0;
    for (auto _ : run) {
        bar.setValue(row = row == 100 ? 0 : row + 1);
        QApplication::processEvents();
    }
}

// All that is seen.
void Repaint(benchmark::State& run) {
    Bench bench;
    for (auto _ : run) bench.Grid.repaint();
}

void Toggle(benchmark::State& run) {
    Bench bench;
    const auto& grid = dynamic_cast<aids::GridSurface&>(bench.Grid);
    const aids::TableGeometry geometry(grid.Sizes(), 32, 32);
    const auto x = static_cast<int>(geometry.BitLeft(aids::Half::Input, 3) + 100) / 15;
    for (auto _ : run) {
        QTest::mousePress(&bench.Grid, Qt::LeftButton, {}, {x, 100});
        QApplication::processEvents();
    }
}

BENCHMARK(ScrollARow)->Unit(benchmark::kMicrosecond);
BENCHMARK(Repaint)->Unit(benchmark::kMicrosecond);
BENCHMARK(Toggle)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("DISPLAY")) qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
