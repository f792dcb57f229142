#include <sys/resource.h>

#include <QApplication>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>

#include "platform/qt/HostApplication.h"
#include "platform/qt/HostClipboard.h"
#include "platform/qt/HostClock.h"
#include "platform/qt/HostDialogs.h"
#include "platform/qt/HostFileSystem.h"
#include "platform/qt/HostInputJournal.h"
#include "platform/qt/HostLink.h"
#include "platform/qt/HostPrinters.h"
#include "platform/qt/HostProcesses.h"
#include "platform/qt/HostRegistry.h"
#include "platform/qt/HostSystem.h"
#include "platform/qt/HostWindows.h"
#include "platform/qt/StateFolder.h"
#include "platform/qt/ToolHost.h"
#include "shell/windows/Shell.h"

// The start of the program as a user has it, from the first instruction to the shown main window, with one
// small design open: CPU time and resident memory of this process. Run it on a display to measure the real
// drawing; without one the offscreen platform is taken.

namespace {

double CpuMilliseconds() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

long ResidentKilobytes() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        long value = 0;
        if (word == "VmRSS:" && status >> value) return value;
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    namespace qt = platform::qt;
    namespace fs = std::filesystem;
    if (argc < 2) {
        std::fprintf(stderr, "usage: bench_StartUpBench INSTALLATION\n");
        return 1;
    }
    const fs::path installation = fs::canonical(argv[1]);
    const fs::path own = fs::temp_directory_path() / ("korvane-bench-" + std::to_string(getpid()));
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR"}) {
        const fs::path folder = own / name;
        fs::create_directories(folder);
        qputenv(name, QByteArray(folder.c_str()));
    }
    if (!qEnvironmentVariableIsSet("DISPLAY")) qputenv("QT_QPA_PLATFORM", "offscreen");
    {
        qt::HostApplication application(argc, argv);
        qt::HostFileSystem files;
        qt::HostRegistry settings;
        qt::HostDialogs boxes(files);
        qt::HostClipboard clip;
        qt::HostClock time;
        qt::HostProcesses programs(files, time);
        qt::ToolHost libraries(time);
        qt::HostSystem desktop(files, (installation / "Korvane/Korvane").string());
        qt::HostWindows screen;
        qt::HostInputJournal journal(time);
        qt::HostLink link;
        qt::HostPrinters paper([&] { return boxes.Parent(); });
        platform::Host host{files,   settings, boxes,  clip,  programs, libraries,
                            desktop, time,     screen, paper, link,     journal};
        session::Session state;
        shell::Shell shell(state, host, qt::StateFolder(files));
        if (!shell.Start()) return 1;
        for (int i = 0; i < 20; ++i) QApplication::processEvents();
        std::printf("start to the shown main window: %.0f ms CPU\n", CpuMilliseconds());
        shell.TheApp().Hall.Editor->OpenDocument(
            files.FromHostPath((installation / "Examples/COUNT8.PLD").string()));
        for (int i = 0; i < 20; ++i) QApplication::processEvents();
        const double resident = static_cast<double>(ResidentKilobytes()) / 1024;
        std::printf("resident with one small design: %.1f MB\n", resident);
        for (int i = 0; i < 19; ++i) shell.TheApp().Hall.Editor->OpenDocument();
        constexpr int ticks = 1000;
        const double before = CpuMilliseconds();
        for (int i = 0; i < ticks; ++i) shell.TickToolbar();
        std::printf("a tick of the toolbar with 20 documents: %.3f ms CPU\n",
                    (CpuMilliseconds() - before) / ticks);
    }
    fs::remove_all(own);
    return 0;
}
