#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "ToolHostFixture.h"
#include "support/InProcessLibraries.h"

namespace platform::qt {
namespace {

TEST_F(ToolHostTest, RelaysMessagesInOrderWithTheirTexts) {
    EXPECT_EQ(Run("report"), "-5");
    std::string seen;
    for (const ToolMessage& m : Status) seen += std::to_string(m.Number) + m.First + m.Second + " ";
    EXPECT_EQ(seen, "101Fitting 102dropped 103pin 3 104 105 104 104 106 ");
    ASSERT_EQ(List.size(), 1u);
    EXPECT_EQ(List[0].Second, "[0012ta] bad symbol");
}

TEST_F(ToolHostTest, TheFormInTheProcessDeliversTheSame) {
    doubles::InProcessLibraries inside;
    EXPECT_EQ(Run("report"), "-5");
    const auto status = std::exchange(Status, {});
    Put(0, inside.Register([&](const ToolMessage& m) { Status.push_back(m); }));
    Put(4, inside.Register([&](const ToolMessage& m) { List.push_back(m); }));
    const auto module = inside.Load(Folder.Logic("teskk.dll"));
    EXPECT_EQ(inside.Call(module, "TeskkVB", Record), -5);
    EXPECT_THROW(inside.Call(module, "Missing", Record), base::RunTimeError);
    inside.Free(module);
    EXPECT_EQ(Status, status);
    ASSERT_EQ(List.size(), 2u);
    EXPECT_EQ(List[0], List[1]);
}

TEST_F(ToolHostTest, OddMessagesAndNoiseDoNoHarm) {
    for (const char* order : {"junk", "stranger", "number", "print", "thread", "bytes", "huge"}) {
        EXPECT_EQ(Run(order), "-5") << order;
    }
    ASSERT_EQ(List.size(), 5u);
    EXPECT_EQ(List[0].First + List[0].Second, "");
    EXPECT_EQ(List[1].Number, 999u);
    EXPECT_EQ(List[2].Second, "from a thread");
    EXPECT_EQ(List[3].Second, "[0012ta] \xFF\x80 \xC3");
    EXPECT_EQ(List[4].Second.size(), ToolLibraries::MaxTextLength);
}

TEST_F(ToolHostTest, ALibraryThatEndsBadlyIsToldAndTheNextRunWorks) {
    const std::pair<const char*, const char*> cases[] = {
        {"crash", "51: signal 11 (Segmentation fault)"},
        {"throw", "51: signal 6 (Aborted)"},
        {"exit 3", "51: exit code 3"},
        {"exit 0", "51: exit code 0"},
        {"fork", "51: exit code 4"},
        {"behind", "51: signal 11 (Segmentation fault)"},
        {"before", "51: it wrote outside its record"},
    };
    for (const auto& [order, outcome] : cases) {
        const auto before = Record;
        EXPECT_EQ(Run(order), outcome);
        EXPECT_EQ(std::vector(Record.begin() + 600, Record.end()),
                  std::vector(before.begin() + 600, before.end()));
        EXPECT_EQ(Run("report"), "-5");
    }
    EXPECT_EQ(Run("write"), "-5");
    EXPECT_EQ(Record.back(), 'w');
    EXPECT_EQ(Run("report", "Missing"), "453: The tool library has no entry point Missing.");
}

TEST_F(ToolHostTest, WhatCannotBeLoadedIsZero) {
    for (const char* name : {"none.dll", "text.dll", "badload.dll", ""}) {
        EXPECT_EQ(Host.Load(Folder.Logic(name)), 0u) << name;
        EXPECT_FALSE(Host.IsRunning());
    }
    EXPECT_NE(Host.Load(Folder.Logic("Teskk")), 0u);  // the extension of a library goes without saying
    ToolHost without(Time, PathMap(), "/nowhere/toolhost");
    EXPECT_EQ(without.Load(Folder.Logic("teskk.dll")), 0u);
    without.Free(0);
    without.Free(77);
}

TEST_F(ToolHostTest, ACrashWhileLoadingTakesTheLibrariesAlong) {
    const auto module = Host.Load(Folder.Logic("teskk.dll"));
    EXPECT_EQ(Host.Load(Folder.Logic("badload.dll")), 0u);
    EXPECT_THROW(Host.Call(module, "TeskkVB", Record), base::RunTimeError);
    Host.Free(module);
    EXPECT_EQ(Run("report"), "-5");
}

TEST_F(ToolHostTest, AHandlersErrorReachesTheCallerBehindTheRun) {
    Put(0, Host.Register([](const ToolMessage&) { throw base::RunTimeError(base::errOverflow); }));
    EXPECT_EQ(Run("report"), "6: Overflow");
    EXPECT_EQ(List.size(), 1u);  // the library went on to its end
}

TEST_F(ToolHostTest, WindowsPaintAndTakeNoInputDuringACall) {
    struct Button : QPushButton {
        int Paints = 0;
        void paintEvent(QPaintEvent* event) override {
            ++Paints;
            QPushButton::paintEvent(event);
        }
    } button;
    int clicks = 0;
    QObject::connect(&button, &QPushButton::clicked, [&] { ++clicks; });
    button.setShortcut(Qt::Key_F5);
    button.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&button));
    const int paintsBefore = button.Paints;
    QTimer user;
    QObject::connect(&user, &QTimer::timeout, [&] {
        button.update();
        QTest::mouseClick(button.windowHandle(), Qt::LeftButton, {}, QPoint(5, 5));
        QTest::keyClick(button.windowHandle(), Qt::Key_F5);
        EXPECT_THROW(Host.Call(1, "TeskkVB", Record), base::RunTimeError);
    });
    user.start(50);
    EXPECT_EQ(Run("slow 400"), "-5");
    user.stop();
    QApplication::processEvents();
    EXPECT_GE(button.Paints, paintsBefore + 2);
    EXPECT_EQ(clicks, 0);
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(clicks, 1);
}

TEST_F(ToolHostTest, ABoxOfAHandlerTakesInput) {
    Put(0, Host.Register([&](const ToolMessage& m) {
        QDialog box;
        QTimer::singleShot(50, &box, [&] { QTest::keyClick(box.windowHandle(), Qt::Key_Escape); });
        box.exec();
        Status.push_back(m);
    }));
    EXPECT_EQ(Run("box"), "-5");
    ASSERT_EQ(Status.size(), 1u);
    EXPECT_EQ(Status[0].Second + Status[0].First, "BA");
}

TEST_F(ToolHostTest, AFloodArrivesWholeAndInOrder) {
    EXPECT_EQ(Run("flood 20000"), "-5");
    ASSERT_EQ(List.size(), 20000u);
    for (std::size_t i = 0; i < List.size(); i += 999) {
        EXPECT_EQ(List[i].Second, "[0012ta] line " + std::to_string(i));
    }
}

}  // namespace
}  // namespace platform::qt
