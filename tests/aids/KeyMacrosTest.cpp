#include "aids/KeyMacros.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QDialog>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "base/RunTimeError.h"
#include "platform/qt/HostFileSystem.h"
#include "platform/qt/HostInputJournal.h"
#include "platform/qt/TextBox.h"
#include "support/Doubles.h"
#include "support/Rooms.h"

namespace {

struct KeyMacros : testing::Test {
    class Window : public doubles::Document {
      public:
        platform::qt::TextBox Text;
        platform::RichTextBox& txtText() override { return Text; }
    };
    KeyMacros() {
        State.CustUtils[2] = {.Program = "MACRO*", .Name = "Old"};
        Shown.Text.show();
        Shown.Text.activateWindow();
        Shown.Text.setFocus();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&Shown.Text));
    }
    // At the window that has the keyboard, as the desktop delivers it.
    static void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QGuiApplication::focusWindow(), key, modifiers);
    }
    void Record() {
        Desktop.Boxes.Inputs = {"Keys"};
        Macros.SetMacro(Shown, 2);
    }
    // Another one can start only then.
    void WaitPlayed() {
        QTimer clock;  // runs in the loops of dialogs, too
        QObject::connect(&clock, &QTimer::timeout, [this] { Time.Advance(std::chrono::milliseconds(100)); });
        clock.start(1);
        EXPECT_TRUE(QTest::qWaitFor([&] { return Journal.Play([] { return std::nullopt; }); }));
    }
    void Play() {
        Macros.RunMacro(Shown, 2);
        const std::size_t size = Desktop.Boxes.Shown.size();
        WaitPlayed();
        EXPECT_EQ(Desktop.Boxes.Shown.size(), size);
    }

    doubles::Clock Time;
    platform::qt::HostInputJournal Journal{Time};
    platform::qt::HostFileSystem Files;
    doubles::Clipboard Clip;
    doubles::Desktop Desktop{Files, Clip, Journal};
    session::Session State;
    doubles::Hall Hall;
    session::App App{State, Desktop.Host, Hall};
    aids::KeyMacros Macros{App};
    Window Shown;
};

}  // namespace

TEST_F(KeyMacros, ATextOfUpTo255CharactersIsTypedAsItStands) {
    const std::string text = "a\r\n" + std::string(252, 'x');
    Shown.Text.SetText(text + "y");
    Macros.SetMacro(Shown, 2);  // no name: nothing changes
    EXPECT_EQ(State.CustUtils[2].Name + State.CustUtils[2].Program, "OldMACRO*");
    Desktop.Boxes.Inputs = {"Long", "Text"};
    Shown.Text.SetSelStart(0);
    Shown.Text.SetSelLength(256);
    Macros.SetMacro(Shown, 2);
    EXPECT_EQ(State.CustUtils[2].Name + State.CustUtils[2].Program, "LongMACRO*");
    EXPECT_EQ(Desktop.Boxes.LastText(),
              "Selected text is too long.\r\nMaximum length is 255 characters, you have selected 256.");
    Shown.Text.SetSelLength(255);
    Macros.SetMacro(Shown, 2);
    EXPECT_EQ(State.CustUtils[2].Name + State.CustUtils[2].Program, "TextMACRO:" + text);
    EXPECT_EQ(Shown.Text.SelLength(), 0);
    Shown.Text.SetText("");
    Macros.ChooseMacro(Shown, 2);
    EXPECT_EQ(Shown.Text.Text(), text);
    EXPECT_EQ(Hall.Calls, std::vector<std::string>{"HighlightSyntax"});
    Shown.ClearMacroPending = true;
    Macros.ChooseMacro(Shown, 2);
    EXPECT_EQ(State.CustUtils[2].Program + Desktop.Boxes.LastText(), "MACRO*Macro cleared.");
    EXPECT_THROW(Macros.RunMacro(Shown, 6), base::RunTimeError);
}

TEST_F(KeyMacros, KeysAreRecordedUntilBreakAndPlayed) {
    Record();
    EXPECT_EQ(State.CustUtils[2].Program, "MACROKS:2");
    EXPECT_EQ(Hall.Panels[1], "Recording keystroke macro, press CTRL+BREAK to end recording.");
    for (const Qt::Key key : {Qt::Key_A, Qt::Key_B, Qt::Key_Left, Qt::Key_Return}) Press(key);
    Macros.RunMacro(Shown, 2);
    EXPECT_EQ(Desktop.Boxes.LastText(),
              "A Macro is currently being recorded, press CTRL+BREAK to end recording.");
    Press(Qt::Key_Pause, Qt::ControlModifier);
    EXPECT_EQ(Hall.Panels[1], "Macro recording stopped.");
    Press(Qt::Key_C);  // heard by nobody
    EXPECT_EQ(Shown.Text.Text(), "a\r\ncb");
    EXPECT_EQ(State.KsMacroSets[2].Count(), 9u);
    Play();
    EXPECT_EQ(Shown.Text.Text(), "a\r\nca\r\nbb");
    Record();  // throws the old one away
    EXPECT_EQ(State.KsMacroSets[2].Count(), 0u);
}

// A shortcut opens a dialog; the mouse in it is part of the macro.
TEST_F(KeyMacros, DialogsAreRecordedAndPlayed) {
    int closed = 0;
    QAction open(&Shown.Text);
    open.setShortcut(Qt::CTRL | Qt::Key_D);
    Shown.Text.addAction(&open);
    std::function<void(QDialog&)> user;
    QObject::connect(&open, &QAction::triggered, [&] {
        QDialog dialog(&Shown.Text);
        QPushButton button("OK", &dialog);
        button.move(0, 100);
        dialog.resize(300, 200);
        QObject::connect(&button, &QPushButton::clicked, &dialog, &QDialog::accept);
        if (user) QTimer::singleShot(0, &dialog, [&] { user(dialog); });
        dialog.exec();
        ++closed;
        Shown.Text.activateWindow();  // as the desktop does it
    });
    user = [](QDialog& dialog) {
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
        QTest::mouseClick(dialog.windowHandle(), Qt::LeftButton, {}, QPoint(20, 110));
    };
    Record();
    Press(Qt::Key_D, Qt::ControlModifier);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Shown.Text));
    Press(Qt::Key_Pause, Qt::ControlModifier);
    user = nullptr;
    Play();
    EXPECT_EQ(closed, 2);
}

TEST_F(KeyMacros, APlaybackThatMeetsNoWindowEnds) {
    Record();
    for (int i = 0; i < 5; ++i) Press(Qt::Key_A);
    Press(Qt::Key_Pause, Qt::ControlModifier);
    Macros.RunMacro(Shown, 2);
    Shown.Text.hide();
    WaitPlayed();
    EXPECT_EQ(Shown.Text.Text(), "aaaaa");
}
