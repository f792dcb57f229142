#include <benchmark/benchmark.h>

#include <QApplication>

#include "editor/HighlightTables.h"
#include "editor/frmKorvane.h"
#include "support/Doubles.h"
#include "support/MemoryFiles.h"
#include "support/Rooms.h"

namespace {

// frmKorvane until each of its tabs has been painted once.
void OpenSettings(benchmark::State& run) {
    session::Session state;
    state.Keywords = editor::DefaultKeywords();
    doubles::MemoryFiles files;
    doubles::Desktop desk{files};
    doubles::Hall hall;
    session::App app{state, desk.Host, hall};
    for (auto _ : run) {
        editor::frmKorvane form(app);
        form.show();
        auto& tabs = *form.findChild<QTabWidget*>("SSTab1");
        for (int i = 0; i < tabs.count(); ++i) {
            tabs.setCurrentIndex(i);
            QApplication::processEvents();
            form.repaint();
        }
    }
}
BENCHMARK(OpenSettings)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
