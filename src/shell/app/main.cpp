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

// The command line is the toolkit's alone: no argument of it opens or changes anything.
int main(int argc, char** argv) {
    namespace qt = platform::qt;
    qt::HostApplication application(argc, argv);
    qt::HostFileSystem files;
    qt::HostRegistry settings;
    qt::HostDialogs boxes(files);
    qt::HostClipboard clip;
    qt::HostClock time;
    qt::HostProcesses programs(files, time);
    qt::ToolHost libraries(time);
    qt::HostSystem desktop(files);
    qt::HostWindows screen;
    qt::HostInputJournal journal(time);
    qt::HostLink link;
    qt::HostPrinters paper([&] { return boxes.Parent(); });
    application.ShowErrorsWith(&boxes);
    platform::Host host{files,   settings, boxes,  clip,  programs, libraries,
                        desktop, time,     screen, paper, link,     journal};
    session::Session state;
    shell::Shell shell(state, host, qt::StateFolder(files));
    bool started = false;
    application.Attempt([&] { started = shell.Start(); });
    if (started) return qt::HostApplication::exec();
    return desktop.HasEarlierInstance() ? 0 : 1;  // that one came forward
}
