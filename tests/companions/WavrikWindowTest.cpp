#include <gtest/gtest.h>

#include <QAction>
#include <QScrollBar>
#include <QTest>
#include <filesystem>

#include "platform/qt/HostLink.h"
#include "support/Doubles.h"
#include "support/FormUser.h"
#include "wavrik/frmMain.h"

using namespace wavrik;

namespace {

class WavrikTest : public testing::Test, protected doubles::FormUser {
  protected:
    WavrikTest() {
        std::filesystem::permissions(folder_.Path(), std::filesystem::perms::owner_all);
        qputenv("XDG_RUNTIME_DIR", folder_.Path().c_str());
        window_ = std::make_unique<frmMain>(platform::PathMap(folder_.Path()));
    }
    ~WavrikTest() override { qputenv("XDG_RUNTIME_DIR", before_); }

    // A counter's list of 1000 vectors; found was another value than expected in those of `wrong`.
    void WriteList(const std::set<int>& wrong) {
        std::string text = "\r\n      C\r\n      L Q\r\n      K 0\r\n\r\n";
        for (int i = 1; i <= 1000; ++i) {
            const std::string number = std::to_string(i);
            text += std::string(4 - number.size(), '0') + number + ": C " + (i % 2 == 0 ? "L" : "H") + "\r\n";
            if (wrong.contains(i))
                text += std::string("   >> Q0: expected Z, found ") + (i % 2 == 0 ? "L" : "H") + "\r\n";
        }
        folder_.Write("A.SO", text + "\r\n1000 vectors, " + std::to_string(wrong.size()) + " mismatches\r\n");
    }
    void Show(const std::set<int>& wrong) {
        WriteList(wrong);
        window_->Open("C:\\A.SO");
        Use(*window_);
    }

    WavePane& Pane() { return *window_->findChild<WavePane*>(); }
    void Turn(QPoint at, int notches, Qt::KeyboardModifiers keys = {}) {
        QWheelEvent turn(at, Pane().viewport()->mapToGlobal(at), {}, {0, 120 * notches}, Qt::NoButton, keys,
                         Qt::NoScrollPhase, false);
        QApplication::sendEvent(Pane().viewport(), &turn);
    }
    int Reds() {
        const QImage image =
            Pane().viewport()->grab(Pane().WavesArea()).toImage().convertToFormat(QImage::Format_RGB32);
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) {
                const QColor color = image.pixelColor(x, y);
                count += color.red() > color.green() + 40 && color.red() > color.blue() + 40 ? 1 : 0;
            }
        return count;
    }

    const QByteArray before_ = qgetenv("XDG_RUNTIME_DIR");
    const doubles::TemporaryFolder folder_;
    std::unique_ptr<frmMain> window_;
};

}  // namespace

TEST_F(WavrikTest, TheWheelZoomsAtThePointerAndScrolls) {
    Show({});
    const QPoint at = Pane().WavesArea().topLeft() + QPoint(240, 20);
    const Time under = Pane().View().ToTime(240);
    const double scale = Pane().View().PerPixel();
    Turn(at, 4);
    EXPECT_LT(Pane().View().PerPixel(), scale / 2);
    EXPECT_NEAR(static_cast<double>(Pane().View().ToTime(240)), static_cast<double>(under), 2);
    Turn(at, -1, Qt::ShiftModifier);
    EXPECT_GT(Pane().View().ToTime(240), under);
    EXPECT_GT(Pane().horizontalScrollBar()->value(), 0);
    Key(Qt::Key_Home);
    EXPECT_EQ(Pane().View().ToTime(0), 0);
    Key(Qt::Key_F);
    EXPECT_EQ(Pane().View().ToTime(Pane().View().Width()), 100000);
}

TEST_F(WavrikTest, AClickSetsTheCursorAndF3FollowsTheMismatches) {
    Show({300, 900});
    EXPECT_EQ(Reds(), 0);
    window_->resize(700, window_->height() - Pane().WavesArea().height() + 30);  // one row is in view
    const QPoint at = Pane().WavesArea().topLeft() + QPoint(Pane().View().ToX(130), 3);
    QTest::mouseClick(Pane().viewport(), Qt::LeftButton, {}, at);
    EXPECT_TRUE(Text("lblTime").ends_with(", vector 2")) << Text("lblTime");
    EXPECT_EQ(Text("lblMismatches"), "2 mismatches: F3");
    for (const char* vector : {"29900 ns, vector 300", "89900 ns, vector 900", "89900 ns, vector 900"}) {
        Key(Qt::Key_F3);
        EXPECT_EQ(Text("lblTime"), vector);
        EXPECT_GT(Reds(), 0) << "it is not in view";
    }
    Key(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(Text("lblTime"), "29900 ns, vector 300");
}

TEST_F(WavrikTest, WhatIsWrongWithAFileIsToldAndTheWavesStay) {
    Show({3});
    folder_.Write("B.VCD",
                  "\x7f"
                  "ELF");
    window_->Open("C:\\B.VCD");
    EXPECT_TRUE(Control<QLabel>("lblMessage").isVisible());
    EXPECT_EQ(Text("lblMessage"), "C:\\B.VCD, line 1: \"?ELF\" is no declaration of a value change dump");
    EXPECT_EQ(Text("lblFile"), "C:\\A.SO");
    EXPECT_EQ(Pane().Shown().Signals.size(), 2u);
    Key(Qt::Key_F3);
    WriteList({1, 3});
    window_->Open("C:\\A.SO");
    EXPECT_FALSE(Control<QLabel>("lblMessage").isVisible());
    EXPECT_EQ(Text("lblMismatches"), "2 mismatches: F3");
    EXPECT_EQ(Text("lblTime"), "200 ns, vector 3") << "the cursor of a file that is read again";
    const std::filesystem::path results = folder_.Path() / "A.SO";
    std::filesystem::last_write_time(results,
                                     std::filesystem::last_write_time(results) - std::chrono::hours(1));
    folder_.Write("A.SI", "ORDER: A; VECTORS:\nH\n");
    window_->Open("C:\\A.SI");
    EXPECT_EQ(Text("lblFile"), "C:\\A.SI") << "newer than its results";
    EXPECT_EQ(Text("lblMismatches"), "") << "nothing was compared";
}

TEST_F(WavrikTest, ShowsItsCaptionsInWhole) {
    window_.reset();
    const platform::PathMap paths(folder_.Path());
    EXPECT_EQ(doubles::FormFaults<frmMain>(paths), "");
}

TEST_F(WavrikTest, TakesItsPlaceFromTheSettings) {
    doubles::Registry settings;
    auto& key = settings.Keys["Software\\Brennick Labs\\Wavrik\\1.0\\Settings"];
    for (const auto& [name, twips] : {std::pair{"MainLeft", 1500u}, {"MainTop", 300u}, {"MainWidth", 9000u}})
        key[name] = twips;
    const QRect own = window_->geometry();
    window_->Place(settings);
    EXPECT_EQ(window_->geometry(), own) << "a part is no place";
    key["MainHeight"] = 6000u;
    window_->Place(settings);
    Use(*window_);
    EXPECT_EQ(window_->frameGeometry(), QRect(100, 20, 600, 400));
    EXPECT_EQ(window_->windowTitle(), "Wavrik");
}

TEST_F(WavrikTest, CarriesOutTheCommandsOfTheLink) {
    WriteList({});
    Use(*window_);
    std::string answers;
    QThread* client = QThread::create([&] {
        platform::qt::HostLink link;
        link.SetLinkTopic("Wavrik|frmMain");
        for (const char* command : {"Tile 0 1500 6000 4500", "Open C:\\A.SO", "Display", "Shut"}) try {
                link.SetLinkMode(platform::LinkMode::Manual);
                link.LinkExecute(command);
                answers += "+";
            } catch (const base::RunTimeError& error) {
                answers += std::to_string(error.Number());
            }
    });
    client->start();
    EXPECT_TRUE(QTest::qWaitFor([&] { return client->isFinished(); }));
    delete client;
    EXPECT_EQ(answers, "+++285");
    EXPECT_EQ(window_->frameGeometry(), QRect(100, 0, 400, 300));
    EXPECT_EQ(Text("lblFile"), "C:\\A.SO");
    EXPECT_TRUE(QApplication::activeModalWidget() == nullptr);
}
