#include "platform/qt/HostApplication.h"

#include <gtest/gtest.h>

#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <stdexcept>

#include "base/RunTimeError.h"
#include "platform/qt/Guard.h"
#include "platform/qt/HostClock.h"
#include "support/Doubles.h"
#include "support/QtMain.h"

namespace platform::qt {
namespace {

using Strings = std::vector<std::string>;

// Lets events run behind the box, as a real one does.
class OpenBoxes : public doubles::Dialogs {
  public:
    std::size_t Depth = 0;
    std::size_t Deepest = 0;
    bool Fail = false;
    Answer MessageBox(const MessageBoxRequest& request) override {
        Deepest = std::max(Deepest, ++Depth);
        for (int i = 0; i < 10; ++i) QCoreApplication::processEvents();
        --Depth;
        if (Fail) throw base::RunTimeError(base::errInvalidCall);
        return doubles::Dialogs::MessageBox(request);
    }
    Strings Texts() const {
        Strings texts;
        for (const auto& request : Shown) texts.push_back(request.Text + request.Title);
        return texts;
    }
};

class HostApplicationTest : public testing::Test {
  protected:
    HostApplicationTest() { Application().ShowErrorsWith(&boxes_); }
    ~HostApplicationTest() override { Application().ShowErrorsWith(&UnexpectedErrors()); }

    static HostApplication& Application() { return *static_cast<HostApplication*>(qApp); }
    static bool IsBusy() { return QGuiApplication::overrideCursor() != nullptr; }

    OpenBoxes boxes_;
};

[[noreturn]] void Overflow() { throw base::RunTimeError(base::errOverflow); }

TEST_F(HostApplicationTest, ShowsWhatNobodyTrappedAndGoesOn) {
    const std::function<void()> failures[] = {
        Overflow,
        Overflow,
        [] { throw base::RunTimeError(75, "Cannot write C:\\A.PLD"); },
        [] { throw std::bad_alloc(); },
        [] { throw std::runtime_error("broken"); },
        [] { throw 1; },
    };
    QPushButton button;
    button.show();
    std::function<void()> action;
    On(&button, &QPushButton::clicked, &button, [&] { action(); });
    for (const auto& failure : failures) {
        action = [&] {
            QGuiApplication::setOverrideCursor(Qt::WaitCursor);
            failure();
        };
        QTest::mouseClick(&button, Qt::LeftButton);
        EXPECT_FALSE(IsBusy());
        QCoreApplication::processEvents();
    }
    bool works = false;
    action = [&] { works = true; };
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_TRUE(works);
    EXPECT_EQ(boxes_.Texts(), (Strings{"Overflow", "Overflow", "Cannot write C:\\A.PLD", "Out of memory",
                                       "broken", "Unexpected error"}));
}

TEST_F(HostApplicationTest, AnErrorAmidOtherWorkLeavesItsHourglass) {
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    EXPECT_TRUE(Guarded([] {}));
    EXPECT_FALSE(Guarded(Overflow));
    EXPECT_TRUE(boxes_.Shown.empty());  // not before the work is done
    EXPECT_TRUE(IsBusy());
    QGuiApplication::restoreOverrideCursor();
    QCoreApplication::processEvents();
    EXPECT_EQ(boxes_.Texts(), Strings{"Overflow"});
}

TEST_F(HostApplicationTest, WhatFailsAgainAndAgainDoesNotPileUpBoxes) {
    QTimer timer;
    int number = 0;
    std::function<void()> action = Overflow;
    On(&timer, &QTimer::timeout, &timer, [&] { action(); });
    timer.start(0);
    while (boxes_.Shown.empty()) QCoreApplication::processEvents();
    EXPECT_EQ(boxes_.Deepest, 1U);
    action = [&] { throw std::runtime_error(std::to_string(++number)); };
    testing::internal::CaptureStderr();
    while (number < 50) QCoreApplication::processEvents();
    timer.stop();
    QCoreApplication::processEvents();
    EXPECT_EQ(boxes_.Deepest, 4U);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("Korvane: 5\n"), std::string::npos);
}

TEST_F(HostApplicationTest, ATimerThatKeepsFailingTellsItOnce) {
    HostClock clock;
    int turn = 0;
    const auto from = clock.Now();
    const auto timer = clock.Every(Clock::Milliseconds(1), [&] {
        if (++turn != 3) Overflow();
    });
    while (turn < 6) QCoreApplication::processEvents();
    EXPECT_EQ(boxes_.Texts(), (Strings{"Overflow", "Overflow"}));
    EXPECT_GE(clock.Now() - from, Clock::Milliseconds(5));
}

TEST_F(HostApplicationTest, CatchesWhatIsNotGuarded) {
    struct Thrower : QObject {
        bool event(QEvent*) override { Overflow(); }
    } thrower;
    QEvent event(QEvent::User);
    EXPECT_TRUE(QCoreApplication::sendEvent(&thrower, &event));
    QCoreApplication::processEvents();
    EXPECT_EQ(boxes_.Texts(), Strings{"Overflow"});
}

TEST_F(HostApplicationTest, GuardsTheStart) {
    EXPECT_TRUE(Application().Attempt([] {}));
    EXPECT_FALSE(Application().Attempt([] { throw base::RunTimeError(base::errPathNotFound); }));
    EXPECT_EQ(boxes_.Texts(), Strings{"Path not found"});
}

TEST_F(HostApplicationTest, PrintsWhatCantBeShown) {
    testing::internal::CaptureStderr();
    boxes_.Fail = true;
    EXPECT_FALSE(Application().Attempt(Overflow));
    Application().ShowErrorsWith(nullptr);
    EXPECT_FALSE(Application().Attempt([] { throw base::RunTimeError(base::errSubscript); }));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Korvane: Overflow\nKorvane: Subscript out of range\n");
}

}  // namespace
}  // namespace platform::qt
