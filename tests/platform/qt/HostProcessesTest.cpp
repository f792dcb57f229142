#include "platform/qt/HostProcesses.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QLineEdit>
#include <QMainWindow>
#include <fstream>

#include "base/PosixFile.h"
#include "base/RunTimeError.h"
#include "platform/qt/HostFileSystem.h"
#include "support/Doubles.h"
#include "support/ScriptedUser.h"

namespace platform::qt {
namespace {

namespace fs = std::filesystem;

class HostProcessesTest : public testing::Test {
  protected:
    void Script(const std::string& name, const std::string& text) {
        folder_.Write(name, "#!/bin/sh\n" + text);
        fs::permissions(folder_.Path() / name, fs::perms(0755));
    }
    int ErrorOf(const std::string& line) {
        try {
            processes_.Start(line);
        } catch (const base::RunTimeError& error) {
            return error.Number();
        }
        return 0;
    }

    doubles::TemporaryFolder folder_;
    HostFileSystem files_;
    doubles::Clock time_;
    HostProcesses processes_{files_, time_};
};

TEST_F(HostProcessesTest, SplitsCommandLines) {
    for (const char* name : {"My Tools/ntr.exe", "My Tools/ntr.exe two", "VHDLTesk.exe", "Work/count8.vhd"})
        folder_.Write(name, "");
    const std::string root = folder_.Logic();
    const std::string host = folder_.Path().string();
    const struct {
        std::string Line;
        std::string Program;
        std::vector<std::string> Arguments;
    } rows[] = {
        {root + "\\MY TOOLS\\NTR.EXE two /x", "/My Tools/ntr.exe", {"two", "/x"}},
        {" " + root + "\\My Tools\\ntr  a\t b ", "/My Tools/ntr.exe", {"a", "b"}},
        {"\"" + root + "\\my tools\\ntr.exe two\" x", "/My Tools/ntr.exe two", {"x"}},
        {"\"" + root + "\\vhdltesk", "/VHDLTesk.exe", {}},
        {root + "\\VHDLTesk " + root + "\\WORK  \"a b\"c \"\" " + root + "\\WORK\\COUNT8.VHD",
         "/VHDLTesk.exe",
         {host + "/Work", "a bc", "", host + "/Work/count8.vhd"}},
        {root + "\\VHDLTesk " + root + "\\work\\COUNT8.VHD-a -i" + root,
         "/VHDLTesk.exe",
         {host + "/Work/COUNT8.VHD-a", "-i" + root}},
    };
    for (const auto& row : rows) {
        const CommandLine line = ReadCommandLine(row.Line, files_);
        EXPECT_EQ(line.Program, host + row.Program) << row.Line;
        EXPECT_EQ(line.Arguments, row.Arguments) << row.Line;
    }
    EXPECT_TRUE(ReadCommandLine("sh -c x", files_).Program.ends_with("/sh"));
}

// Takes from this process the descriptors that it does not have yet.
class NoMoreDescriptors {
  public:
    NoMoreDescriptors() {
        ::getrlimit(RLIMIT_NOFILE, &before_);
        const base::Descriptor next(::dup(STDIN_FILENO));
        const rlimit none{.rlim_cur = static_cast<rlim_t>(next.Get()), .rlim_max = before_.rlim_max};
        ::setrlimit(RLIMIT_NOFILE, &none);
    }
    ~NoMoreDescriptors() { ::setrlimit(RLIMIT_NOFILE, &before_); }

  private:
    rlimit before_{};
};

TEST_F(HostProcessesTest, RunsAProgramAndWaitsForItsEnd) {
    const std::string gate = (folder_.Path() / "gate").string();
    ASSERT_EQ(::mkfifo(gate.c_str(), 0600), 0);
    Script("tool.exe", "read go < \"" + gate + "\"; printf '%s|' \"$@\" > \"" +
                           (folder_.Path() / "out").string() + "\"; exit 3\n");
    for (const bool isWithoutDescriptor : {false, true}) {
        std::optional<NoMoreDescriptors> none;
        bool isOpen = false;
        QTimer timer;  // it runs while the program is waited for, and lets it end
        QObject::connect(&timer, &QTimer::timeout, [&] {
            none.reset();
            if (!std::exchange(isOpen, true)) std::ofstream(gate) << "go\n";
        });
        timer.start(0);
        folder_.Write("out", "");
        const auto id = processes_.Start(folder_.Logic("TOOL") + " a " + folder_.Logic("out"));
        EXPECT_TRUE(processes_.IsRunning(id));
        if (isWithoutDescriptor) none.emplace();
        processes_.Wait(id);
        EXPECT_FALSE(processes_.IsRunning(id));
        EXPECT_EQ(folder_.Read("out"), "a|" + (folder_.Path() / "out").string() + "|");
        EXPECT_LT(::waitpid(static_cast<pid_t>(id), nullptr, WNOHANG), 0) << "left as a zombie";
        processes_.Wait(id);
        processes_.Wait(0);
    }
}

// What is typed meanwhile is for no one, neither then nor later.
TEST_F(HostProcessesTest, AProgramThatGoesOnAndOnIsAskedAboutAndStopped) {
    using namespace std::chrono_literals;
    // Who is started by a deaf shell is deaf too.
    Script("deaf.exe", "exec >/dev/null 2>&1\ntrap '' TERM\necho ready > \"$1\"\nsleep 30 &\nsleep 30\n");
    QMainWindow window;
    QLineEdit text;
    window.setCentralWidget(&text);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    const auto type = [&] {
        window.activateWindow();
        return window.isActiveWindow() && doubles::PressKey(Qt::Key_X);
    };
    const auto later = [&](auto time) {
        return [this, time] {
            time_.Advance(time);
            return true;
        };
    };
    const auto wait = [] { return doubles::PressKey(Qt::Key_Return); };
    const auto stop = [] { return doubles::PressKey(Qt::Key_S, Qt::AltModifier); };
    const auto id = processes_.Start(folder_.Logic("deaf.exe") + " " + folder_.Logic("out"));
    const auto runs = [&] { return !folder_.Read("out").empty(); };
    {
        const doubles::ScriptedUser user({runs, type, later(10s), doubles::BoxOpens, wait, doubles::BoxGoes,
                                          type, later(60s), doubles::BoxOpens, stop});
        EXPECT_THROW(processes_.Wait(id), base::RunTimeError);
    }
    EXPECT_FALSE(processes_.IsRunning(id));
    EXPECT_TRUE(QTest::qWaitFor([&] { return ::kill(-static_cast<pid_t>(id), 0) != 0; })) << "not alone";
    EXPECT_EQ(text.text(), "");
}

TEST_F(HostProcessesTest, StartedProgramsHaveOrdinarySignalsAndASessionOfTheirOwn) {
    files_.WriteFile(folder_.Logic("x"), "");  // sets aside a signal
    Script("tool",
           "read line; cut -d' ' -f6 /proc/$$/stat > \"$1\"; kill -XFSZ $$; echo lives >> "
           "\"$1\"\n");
    const auto id = processes_.Start(folder_.Logic("tool") + " " + folder_.Logic("out"));
    processes_.Wait(id);
    EXPECT_EQ(folder_.Read("out"), std::to_string(id) + "\n");
}

// The small programs of the installation's Windows folder.
TEST_F(HostProcessesTest, StandardToolsOpenWhatTheDesktopHas) {
    const struct {
        std::string Tool;
        std::string Program;
        std::string Output;
    } rows[] = {
        {"calc.exe", "xcalc", "|\n"},
        {"explorer.exe", "thunar", "|/home/my user\n"},
        {"system32/command.com", "xterm", "|\n"},
    };
    const std::string bin = (folder_.Path() / "bin").string();
    for (const auto& row : rows) {
        const auto run = [&] {
            return std::system(("cd " + folder_.Path().string() + "; HOME='/home/my user' PATH=" + bin +
                                " '" + KORVANE_DATA_DIR "/Windows/" + row.Tool + "' >out 2>errors")
                                   .c_str());
        };
        EXPECT_EQ(WEXITSTATUS(run()), 1) << row.Tool;
        EXPECT_TRUE(folder_.Read("errors").find(row.Program) != std::string::npos) << row.Tool;
        Script("bin/" + row.Program, "echo \"|$*\"\n");
        EXPECT_EQ(run(), 0) << row.Tool;
        EXPECT_EQ(folder_.Read("out"), row.Output) << row.Tool;
    }
}

TEST_F(HostProcessesTest, TellsWhyAProgramCannotStart) {
    folder_.Write("plain.exe", "no program");
    Script("lost.exe", "");
    folder_.Write("lost.exe", "#!/no/such/interpreter\n");
    folder_.Write("folder/x", "");
    const struct {
        std::string Line;
        int Number;
    } rows[] = {
        {"", 5},
        {" \t", 5},
        {std::string(40000, 'x'), 5},
        {folder_.Logic("missing.exe") + " a b", 53},
        {folder_.Logic("folder\\"), 53},
        {"no-such-command-anywhere", 53},
        {"\"\"", 53},
        {folder_.Logic("lost.exe"), 53},
        {folder_.Logic("plain.exe"), 75},
    };
    for (const auto& row : rows) EXPECT_EQ(ErrorOf(row.Line), row.Number) << row.Line.substr(0, 80);
}

}  // namespace
}  // namespace platform::qt
