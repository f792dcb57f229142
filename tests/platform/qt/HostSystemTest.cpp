#include "platform/qt/HostSystem.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QGuiApplication>
#include <QMainWindow>
#include <QTest>
#include <future>

#include "platform/qt/HostFileSystem.h"
#include "platform/qt/KeyLocks.h"
#include "support/Doubles.h"

namespace platform::qt {
namespace {

TEST(HostSystemTest, FindsTheInstallationAroundTheProgram) {
    const HostFileSystem files;
    const HostSystem system(files, "/opt/Korvane 5/Korvane/Korvane");
    EXPECT_EQ(system.ProgramPath(), "C:\\opt\\Korvane 5\\Korvane\\Korvane");
    EXPECT_EQ(system.WindowsDirectory(), "C:\\opt\\Korvane 5\\Windows");
    EXPECT_EQ(HostSystem(files, "/" + std::string(150, 'x') + "/Korvane/Korvane").WindowsDirectory(), "");
    EXPECT_FALSE(HostSystem(files).ProgramPath().empty());
}

TEST(HostSystemTest, ASecondInstanceBringsTheFirstForward) {
    const doubles::TemporaryFolder folder;
    const HostFileSystem files;
    HostSystem first(files, {}, folder.Path().string());
    HostSystem second(files, {}, folder.Path().string());
    QMainWindow window;
    window.setWindowTitle("Korvane - COUNT8");
    window.showMinimized();
    EXPECT_FALSE(first.HasEarlierInstance());
    EXPECT_FALSE(first.HasEarlierInstance());
    EXPECT_TRUE(second.HasEarlierInstance());

    const pid_t other = ::fork();
    if (other == 0) {  // only socket calls of its own: asks and ends
        const HostInstance asker(folder.Path().string(), {});
        ::_exit(asker.AskToRaise("Korvane") ? 7 : 8);
    }
    int status = 0;
    EXPECT_TRUE(QTest::qWaitFor([&] { return ::waitpid(other, &status, WNOHANG) == other; }, 10000));
    EXPECT_EQ(WEXITSTATUS(status), 7);
    EXPECT_FALSE(window.isMinimized());
}

TEST(HostSystemTest, APlaceLeftByACrashIsTaken) {
    const doubles::TemporaryFolder folder;
    const pid_t crashed = ::fork();
    if (crashed == 0) {
        HostInstance instance(folder.Path().string(), {});
        instance.Take();
        ::_exit(1);  // without a clean end: lock file and socket stay
    }
    ::waitpid(crashed, nullptr, 0);
    EXPECT_TRUE(folder.Exists("korvane.socket"));
    const HostFileSystem files;
    HostSystem next(files, {}, folder.Path().string());
    EXPECT_FALSE(next.AppActivate("Korvane"));
    EXPECT_FALSE(next.HasEarlierInstance());
    HostSystem later(files, {}, folder.Path().string());
    EXPECT_TRUE(later.HasEarlierInstance());
}

TEST(HostSystemTest, TheHourglassDoesNotNest) {
    const HostFileSystem files;
    HostSystem system(files);
    system.SetHourglass(true);
    system.SetHourglass(true);
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    system.SetHourglass(false);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    system.SetHourglass(false);
}

TEST(KeyLocksTest, AreTheKeyboardsLights) {
    static unsigned lights, asked;
    static int result;
    const GetIndicatorState get = [](void*, unsigned device, unsigned* state) {
        asked = device;
        *state = lights;
        return result;
    };
    int display = 0;
    for (lights = 0; lights < 16; ++lights) {
        const KeyLockState state = ReadKeyLocks(get, &display);
        EXPECT_EQ(state.Caps | state.Num << 1 | state.Scroll << 2, lights & 7U);
    }
    EXPECT_EQ(asked, 0x100u) << "the core keyboard";
    EXPECT_FALSE(ReadKeyLocks(nullptr, &display).Caps);
    EXPECT_FALSE(ReadKeyLocks(get, nullptr).Caps);
    lights = 7;
    result = 1;
    EXPECT_FALSE(ReadKeyLocks(get, &display).Caps);
}

}  // namespace
}  // namespace platform::qt
