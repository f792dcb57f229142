// Floods of messages from a tool library, through the tool host, into the shown windows of a run.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <cstring>

#include "platform/qt/HostFileSystem.h"
#include "platform/qt/ToolHost.h"
#include "support/Doubles.h"
#include "support/Rooms.h"
#include "toolchain/frmMessage.h"
#include "toolchain/frmStatus.h"

namespace {

void Flood(benchmark::State& state, const char* order) {
    platform::qt::HostFileSystem files;
    doubles::Desktop parts{files};
    platform::qt::ToolHost libraries(parts.Time, platform::PathMap(), TOOLHOST);
    platform::Host host{files,      parts.Settings, parts.Boxes,  parts.Clip,  parts.Programs, libraries,
                        parts.Desk, parts.Time,     parts.Screen, parts.Paper, parts.Link,     parts.Journal};
    session::Session shared;
    doubles::Hall hall;
    session::App app{shared, host, hall};
    toolchain::ErrorCodes codes;
    toolchain::frmMessage messages(app, codes);
    toolchain::frmStatus status(libraries, parts.Boxes);
    messages.show();
    status.show();
    base::RunRecord record = base::EmptyRecord();
    record.hWndStatus = status.Handle();
    record.hWndMessages = messages.Handle();
    base::SetText(record.szOptions, order);
    const auto module = libraries.Load(files.FromHostPath(BADLIB));
    for ([[maybe_unused]] auto _ : state) libraries.Call(module, "TeskkVB", record.Bytes());
    state.SetItemsProcessed(state.iterations() * 100'000);
}

BENCHMARK_CAPTURE(Flood, list, "flood 100000")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(Flood, status, "tell 100000")->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
