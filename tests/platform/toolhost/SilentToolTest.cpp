// Tools that never return, talk on and on, eat memory, or leave processes behind.
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <fstream>

#include "ToolHostFixture.h"
#include "platform/qt/ToolHostChild.h"
#include "support/ScriptedUser.h"

namespace platform::qt {
namespace {

using namespace std::chrono_literals;
using doubles::BoxGoes;
using doubles::BoxOpens;
using doubles::PressKey;
using doubles::ScriptedUser;
using doubles::ToolBox;

constexpr auto stopped = "51: it was stopped";

bool IsAlive(const std::string& process) {
    std::ifstream file("/proc/" + process + "/stat");
    std::string state;
    file >> state >> state >> state;
    return !state.empty() && state != "Z";
}

class SilentTool : public ToolHostTest {
  protected:
    SilentTool() {
        Main.setCentralWidget(&Text);
        Main.show();
        Main.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&Main));
    }
    ScriptedUser::Step After(Clock::Milliseconds time) {
        return [this, time] {
            Time.Advance(time);
            return true;
        };
    }
    // Time for the box to open if it would.
    static ScriptedUser::Step NoBox() {
        return [looks = 0]() mutable {
            EXPECT_EQ(ToolBox(), nullptr);
            return ++looks == 3;
        };
    }
    // Runs while the user does these steps during the call.
    std::string RunWith(std::vector<ScriptedUser::Step> steps, const std::string& order) {
        const auto module = Host.Load(Folder.Logic("teskk.dll"));
        const ScriptedUser user(std::move(steps));
        const std::string outcome = Call(module, order, "TeskkVB");
        Host.Free(module);
        EXPECT_FALSE(Host.IsRunning());
        EXPECT_EQ(ToolBox(), nullptr);
        return outcome;
    }
    static bool PressStop() { return PressKey(Qt::Key_S, Qt::AltModifier); }

    QMainWindow Main;
    QLineEdit Text;
};

TEST_F(SilentTool, IsAskedAboutAfterTenSecondsAndThenEveryMinute) {
    for (const auto& [order, messages] : {std::pair("hang 0", 0u), std::pair("hang 3", 3u)}) {
        Status.clear();
        const auto spoken = [&, count = messages] { return Status.size() == count; };
        const auto read = [] {
            EXPECT_EQ(ToolBox()->findChild<QLabel*>("Text")->text(), "The tool does not answer.");
            return true;
        };
        const auto typeOn = [] { return PressKey(Qt::Key_S) && ToolBox() != nullptr; };
        const auto pressEnter = [] { return PressKey(Qt::Key_Return); };
        EXPECT_EQ(RunWith({spoken, After(9'999ms), NoBox(), After(1ms), BoxOpens, read, typeOn, pressEnter,
                           BoxGoes, After(59'999ms), NoBox(), After(1ms), BoxOpens, PressStop},
                          order),
                  stopped)
            << order;
        EXPECT_EQ(Run("report"), "-5");
    }
    EXPECT_EQ(Text.text(), "");
    Main.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Main));
    PressKey(Qt::Key_X);
    EXPECT_EQ(Text.text(), "x");
}

TEST_F(SilentTool, ThatAnswersTakesTheBoxAway) {
    const std::string sign = (Folder.Path() / "sign").string();
    const auto letItAnswer = [&] {
        Folder.Write("sign", "");
        return true;
    };
    const auto letItEnd = [&] { return std::filesystem::remove(sign); };
    EXPECT_EQ(RunWith({After(10s), BoxOpens, letItAnswer, BoxGoes, After(10s), BoxOpens, letItEnd},
                      "await " + sign),
              "-5");
    EXPECT_EQ(Status.size(), 1u);
}

TEST_F(SilentTool, IsAskedAboutAtOnceWhenTheMainWindowShallClose) {
    QDialog other(&Main);
    other.show();
    const auto closeOther = [&] { return !other.close(); };
    const auto close = [&] { return !Main.close(); };
    const auto pressEscape = [] { return PressKey(Qt::Key_Escape); };
    EXPECT_EQ(
        RunWith({closeOther, NoBox(), close, BoxOpens, pressEscape, BoxGoes, close, BoxOpens, PressStop},
                "hang"),
        stopped);
    EXPECT_TRUE(Main.isVisible());
    EXPECT_TRUE(Main.close());
}

// Nothing else would stop it: its messages leave the box in place.
TEST_F(SilentTool, ThatTalksOnAndOnIsStoppedAfterATryToClose) {
    const auto close = [&] { return Status.size() > 10 && !Main.close(); };
    const auto clickStop = [&, before = std::size_t{0}]() mutable {
        if (before == 0) before = Status.size();
        if (Status.size() < before + 100) return false;
        auto* stop = ToolBox()->findChild<QPushButton*>("Stop");
        const QPoint middle = stop->mapTo(ToolBox(), stop->rect().center());
        QTest::mouseClick(ToolBox()->windowHandle(), Qt::LeftButton, {}, middle);
        return true;
    };
    EXPECT_EQ(RunWith({close, BoxOpens, clickStop}, "chatter"), stopped);
}

TEST_F(SilentTool, ThatNeverEndsLoadingCanBeStopped) {
    const ScriptedUser user({After(10s), BoxOpens, PressStop});
    EXPECT_EQ(Host.Load(Folder.Logic("hangload.dll")), 0u);
    EXPECT_EQ(Run("report"), "-5");
}

TEST_F(SilentTool, TakesItsProcessesAlongThoughTheyAreDeaf) {
    const auto close = [&] { return !Status.empty() && !Main.close(); };
    EXPECT_EQ(RunWith({close, BoxOpens, PressStop}, "deaf"), stopped);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !IsAlive(Status[0].First); }));
}

// The program itself is killed in the midst of a call.
TEST_F(SilentTool, EndsWithTheProgramAndAllItsProcessesToo) {
    int line[2];
    ASSERT_EQ(::pipe(line), 0);
    const pid_t program = ::fork();
    if (program == 0) {
        using toolhost::FrameKind;
        ToolHostChild child(TOOLHOST, Memory);
        const std::string order = "deaf";
        std::copy_n(order.c_str(), order.size() + 1, Record.begin() + 268);
        child.Send(FrameKind::Load, {toolhost::Pack({1}), (Folder.Path() / "TESKK.DLL").string()});
        child.Send(FrameKind::Call,
                   {toolhost::Pack({1, 7}), "TeskkVB", std::string(Record.begin(), Record.end())});
        toolhost::Frame frame;
        while (frame.Kind != FrameKind::Message) child.Receive(frame, 1000);
        const std::string deaf = frame.Payload.substr(16) + "\n";
        (void)!::write(line[1], deaf.data(), deaf.size());
        ::kill(::getpid(), SIGKILL);
    }
    ::close(line[1]);
    char text[20] = "";
    ASSERT_GT(::read(line[0], text, sizeof text - 1), 0);
    ::close(line[0]);
    ::waitpid(program, nullptr, 0);
    const std::string deaf = std::to_string(std::atol(text));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !IsAlive(deaf); }));
}

TEST_F(SilentTool, HasItsShareOfTheMemoryAndNoMore) {
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the sanitizer's own reserve is beyond any share";
#endif
    EXPECT_EQ(Run("new"), "51: out of memory (it may take 256 MB), signal 6 (Aborted)");
    EXPECT_EQ(Run("malloc"), "51: out of memory (it may take 256 MB), signal 11 (Segmentation fault)");
    EXPECT_EQ(Run("catch"), "-5");
    ASSERT_EQ(List.size(), 1u);
    EXPECT_EQ(List[0].Second, "too large");
}

}  // namespace
}  // namespace platform::qt
