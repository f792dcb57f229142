#include "platform/qt/HostApplication.h"

#include <gtest/gtest.h>

#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <stdexcept>

#include "base/RunTimeError.h"
#include "support/Doubles.h"

// Errors that unwind through the toolkit leave some of its own objects behind: no leak of ours.
extern "C" const char* __asan_default_options();
extern "C" const char* __asan_default_options() { return "detect_leaks=0"; }

namespace platform::qt {
namespace {

HostApplication& Application() { return *static_cast<HostApplication*>(qApp); }

class HostApplicationTest : public testing::Test {
  protected:
    HostApplicationTest() { Application().ShowErrorsWith(boxes_); }

    std::vector<std::string> Texts() const {
        std::vector<std::string> texts;
        for (const auto& request : boxes_.Shown) texts.push_back(request.Text + request.Title);
        return texts;
    }

    doubles::Dialogs boxes_;
};

TEST_F(HostApplicationTest, ShowsWhatNobodyTrappedOnceAndGoesOn) {
    const std::function<void()> failures[] = {
        [] { throw base::RunTimeError(base::errOverflow); },
        [] { throw base::RunTimeError(75, "Cannot write C:\\A.PLD"); },
        [] { throw std::bad_alloc(); },
        [] { throw std::runtime_error("broken"); },
        [] { throw 1; },
    };
    QPushButton button;
    button.show();
    std::function<void()> action;
    QObject::connect(&button, &QPushButton::clicked, [&] { action(); });
    for (const auto& failure : failures) {
        action = failure;
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
        QTest::mouseClick(&button, Qt::LeftButton);
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    }
    bool works = false;
    action = [&] { works = true; };
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_TRUE(works);
    EXPECT_EQ(Texts(), (std::vector<std::string>{"Overflow", "Cannot write C:\\A.PLD", "Out of memory",
                                                 "broken", "Unexpected error"}));
}

// A box that lets events run, as a real one does.
class NestedBoxes : public doubles::Dialogs {
  public:
    std::size_t Depth = 0;
    std::size_t Deepest = 0;
    Answer MessageBox(const MessageBoxRequest& request) override {
        Deepest = std::max(Deepest, ++Depth);
        QTest::qWait(100);
        --Depth;
        return doubles::Dialogs::MessageBox(request);
    }
};

TEST_F(HostApplicationTest, ATimerThatFailsAgainAndAgainDoesNotPileUpBoxes) {
    NestedBoxes boxes;
    Application().ShowErrorsWith(boxes);
    QTimer same;
    QTimer others;
    int number = 0;
    QObject::connect(&same, &QTimer::timeout, [] { throw base::RunTimeError(base::errSubscript); });
    QObject::connect(&others, &QTimer::timeout, [&] { throw std::runtime_error(std::to_string(++number)); });
    same.start(5);
    QTest::qWait(60);
    same.stop();
    EXPECT_EQ(boxes.Shown.size(), 1U);
    others.start(5);
    QTest::qWait(20);
    others.stop();
    EXPECT_LE(boxes.Deepest, 4U);
    Application().ShowErrorsWith(boxes_);
}

TEST_F(HostApplicationTest, GuardsTheStart) {
    EXPECT_TRUE(Application().Attempt([] {}));
    EXPECT_FALSE(Application().Attempt([] { throw base::RunTimeError(base::errPathNotFound); }));
    EXPECT_EQ(Texts(), std::vector<std::string>{"Path not found"});
}

}  // namespace
}  // namespace platform::qt

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    platform::qt::HostApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
