#include "platform/qt/TextBox.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>
#include <random>

#include "base/RunTimeError.h"
#include "base/Text.h"
#include "base/modLib.h"
#include "support/Doubles.h"

using namespace platform;
using namespace std::string_literals;

namespace {

class TextBoxTest : public testing::Test {
  protected:
    TextBoxTest() {
        Box.resize(400, 200);
        Box.show();
        Box.activateWindow();
        Box.setFocus();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&Box));
    }

    void Select(std::int32_t start, std::int32_t length) {
        Box.SetSelStart(start);
        Box.SetSelLength(length);
    }
    void Paint(std::int32_t start, std::int32_t length, std::int32_t color) {
        const FormatRun run{start, length, {color}};
        Box.ApplyFormats({&run, 1});
    }
    // The colour of every byte, as letters: '.' black, else 'a' + colour - 1.
    std::string Colors() {
        std::string colors;
        for (std::int32_t i = 0; i < Box.TextLength(); ++i) {
            Select(i, 1);
            const std::int32_t color = Box.SelFormat().Color;
            colors += color == 0 ? '.' : static_cast<char>('a' + color - 1);
        }
        return colors;
    }

    qt::TextBox Box;
};

TEST_F(TextBoxTest, KeepsEveryByteAndMakesLineEndsCrLf) {
    Box.SetText("a\nb\rc\r\nd");
    EXPECT_EQ(Box.Text(), "a\r\nb\r\nc\r\nd");
    std::string odd;
    for (int round = 0; round < 3; ++round)
        for (int c = 0; c < 256; ++c)
            if (c != 10 && c != 13) odd += static_cast<char>(c);
    Box.SetText(odd);
    EXPECT_EQ(Box.Text(), odd);
    EXPECT_EQ(Box.TextView(), odd);
    EXPECT_EQ(Box.TextRange(0, 3), "\0\1\2"s);
    EXPECT_EQ(Box.TextRange(-5, 1 << 30), odd);
    Box.grab();

    Select(100, 150);
    Box.SendMessage(WM_CUT);
    EXPECT_EQ(Box.Text(), odd.substr(0, 100) + odd.substr(250));
    Box.SendMessage(WM_PASTE);
    EXPECT_EQ(Box.Text(), odd);
    Select(0, 2);
    Box.SetSelText("\0x\n\0"s);
    EXPECT_EQ(Box.TextRange(0, 6), "\0x\r\n\0\2"s);
    Box.SendMessage(EM_UNDO);
    EXPECT_EQ(Box.Text(), odd);
}

TEST_F(TextBoxTest, TakesEverythingTypedAndPasted) {
    QTest::keyClicks(&Box, "ab");
    QTest::keyClick(&Box, Qt::Key_Return);
    QTest::keyClick(&Box, Qt::Key_Tab);
    for (const char16_t* sign : {u"ä", u"\U0001F600", u"\u00AD"})
        QTest::sendKeyEvent(QTest::Click, &Box, Qt::Key_unknown, QString::fromUtf16(sign), Qt::NoModifier);
    EXPECT_EQ(Box.Text(), "ab\r\n\t\xC3\xA4\xF0\x9F\x98\x80\xC2\xAD");
    QTest::keyClick(&Box, Qt::Key_Backspace);
    QTest::keyClick(&Box, Qt::Key_Backspace);
    QTest::keyClick(&Box, Qt::Key_Home);
    QTest::keyClick(&Box, Qt::Key_Backspace);
    EXPECT_EQ(Box.Text(), "ab\t\xC3\xA4");
    QGuiApplication::clipboard()->setText("1\n2\r\n3");
    QTest::keyClick(&Box, Qt::Key_End, Qt::ShiftModifier);
    QTest::keyClick(&Box, Qt::Key_Insert, Qt::ShiftModifier);
    EXPECT_EQ(Box.Text(), "ab1\r\n2\r\n3");
    EXPECT_EQ(Box.SelStart(), 9);
    QTest::sendKeyEvent(QTest::Click, &Box, Qt::Key_unknown, "\n", Qt::NoModifier);  // the line feed key
    QTest::sendKeyEvent(QTest::Click, &Box, Qt::Key_J, "\n", Qt::ControlModifier);
    EXPECT_EQ(Box.Text(), "ab1\r\n2\r\n3\r\n");
    QTest::keyClick(&Box, Qt::Key_Home, Qt::ControlModifier);
    QTest::keyClick(&Box, Qt::Key_Insert);
    QTest::keyClicks(&Box, "xyz");
    EXPECT_EQ(Box.Text(), "xyz\r\n2\r\n3\r\n");
}

TEST_F(TextBoxTest, LeavesShortcutsToTheMenu) {
    Box.SetText("one");
    QTest::keyClick(&Box, Qt::Key_A, Qt::ControlModifier);
    for (const auto key : {Qt::Key_V, Qt::Key_Z, Qt::Key_D, Qt::Key_T})
        for (const auto modifiers : {Qt::ControlModifier, Qt::AltModifier})
            QTest::keyClick(&Box, key, modifiers);
    EXPECT_EQ(Box.SelText(), "one") << "without a menu they do nothing";

    int shortcuts = 0;
    for (const char* key : {"Ctrl+D", "Ctrl+Z", "F9", "Ctrl+F7", "Ctrl+C", "Ctrl+X", "X"}) {
        auto* action = new QAction(&Box);
        action->setShortcut(QKeySequence(key));
        action->setEnabled(key != "Ctrl+C"s);
        QObject::connect(action, &QAction::triggered, [&shortcuts] { ++shortcuts; });
        Box.addAction(action);
    }
    for (const auto key : {Qt::Key_D, Qt::Key_Z, Qt::Key_F7}) QTest::keyClick(&Box, key, Qt::ControlModifier);
    QTest::keyClick(&Box, Qt::Key_F9);
    EXPECT_EQ(shortcuts, 4);
    // What is typed is no shortcut, and these two do their work whatever the menu's entry says.
    QTest::keyClick(&Box, Qt::Key_X);
    QTest::keyClick(&Box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&Box, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "x");
    QTest::keyClick(&Box, Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(Box.Text(), "");
    EXPECT_EQ(shortcuts, 4);
}

TEST_F(TextBoxTest, TheUsersSelectionIsTheOnlyOne) {
    const auto key = [this](Qt::Key name, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&Box, name, modifiers);
    };
    const auto drag = [this](long from, long to, Qt::KeyboardModifiers modifiers = {}) {
        const auto at = [this](long offset) {
            const auto x = Box.SendScintilla(QsciScintillaBase::SCI_POINTXFROMPOSITION, 0UL, offset);
            const auto y = Box.SendScintilla(QsciScintillaBase::SCI_POINTYFROMPOSITION, 0UL, offset);
            return QPointF(static_cast<double>(x) + 1, static_cast<double>(y) + 5).toPoint();
        };
        QTest::mousePress(Box.viewport(), Qt::LeftButton, modifiers, at(from));
        QTest::mouseMove(Box.viewport(), at(to));
        QTest::mouseRelease(Box.viewport(), Qt::LeftButton, modifiers, at(to));
    };
    const struct {
        std::function<void()> Move;
        EditMessage Message;
        std::string Text;
    } cases[] = {{[&] { key(Qt::Key_End, Qt::ControlModifier); }, WM_PASTE, "one\r\ntwo+"},
                 {[&] { key(Qt::Key_End, Qt::ShiftModifier); }, WM_CUT, "\r\ntwo"},
                 {[&] { drag(1, 6); }, WM_PASTE, "o+wo"}};
    for (const auto& [move, message, text] : cases) {
        for (const bool frozen : {false, true}) {
            for (const auto& [start, length] : {std::pair{0, 0}, {0, 8}, {4, 2}}) {
                Box.SetText("one\r\ntwo");
                QGuiApplication::clipboard()->setText("+");
                Select(start, length);
                key(Qt::Key_Home, Qt::ControlModifier);
                move();
                Box.SetVisible(!frozen);
                Box.SendMessage(message);
                Box.SetVisible(true);
                EXPECT_EQ(Box.Text(), text) << start << frozen;
            }
        }
    }
    Box.SetText("one\r\ntwo");
    drag(1, 7, Qt::AltModifier);
    EXPECT_EQ(Box.SelText(), "ne\r\ntw") << "no modifier makes a rectangle of it";
    for (const auto& [there, back] : {std::pair{Qt::Key_Left, Qt::Key_Right}, {Qt::Key_End, Qt::Key_End}}) {
        Box.SetSelStart(4);  // between the bytes of the line end
        EXPECT_EQ(Box.SelStart(), 4);
        key(there);
        key(back);
        EXPECT_EQ(Box.SelStart(), 3) << "ends with the user's move even if it leads back";
    }
}

TEST_F(TextBoxTest, SelectsByByte) {
    Box.SetText("a\xC3\xA4z\nlast");
    Box.SetSelStart(99);
    EXPECT_EQ(Box.SelStart(), 10);
    Box.SetSelStart(-1);
    EXPECT_EQ(Box.SelStart(), 0);
    Select(2, 1);  // inside the character
    EXPECT_EQ(Box.SelStart(), 2);
    EXPECT_EQ(Box.SelText(), "\xA4");
    Select(3, 99);
    EXPECT_EQ(Box.SelLength(), 7);
    EXPECT_EQ(Box.SendMessage(EM_GETSEL), 10 << 16 | 3);
    EXPECT_THROW(Box.SetSelLength(-1), base::RunTimeError);
    QTest::keyClick(&Box, Qt::Key_Home, Qt::ControlModifier);
    QTest::keyClick(&Box, Qt::Key_Right);
    QTest::keyClick(&Box, Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(Box.SelStart(), 1);
    EXPECT_EQ(Box.SelText(), "\xC3\xA4");
    EXPECT_EQ(Box.SendMessage(EM_LINEINDEX, -1), 0);
    EXPECT_EQ(Box.SendMessage(EM_LINEINDEX, 1), 6);
    EXPECT_EQ(Box.SendMessage(EM_LINEINDEX, 2), -1);
    EXPECT_EQ(Box.SendMessage(EM_LINEFROMCHAR, 7), 1);
    Box.SetText(std::string(70000, 'x'));
    Select(65537, 2);
    EXPECT_EQ(Box.SendMessage(EM_GETSEL), 3 << 16 | 1) << "two words of 16 bits";
}

TEST_F(TextBoxTest, FormattingStaysWithItsText) {
    Box.SetText("one two three");
    Paint(4, 3, 1);
    Box.SetSelStart(7);
    QTest::keyClicks(&Box, "xy");
    EXPECT_EQ(Colors(), "....aaaaa......");
    Select(2, 7);
    Box.SetSelText("-");
    EXPECT_EQ(Colors(), ".........");
    Box.SendMessage(EM_UNDO);
    EXPECT_EQ(Box.Text(), "one twoxy three");
    EXPECT_EQ(Colors(), "....aaaaa......") << "removed text comes back with its formatting";
    Box.SendMessage(EM_UNDO);
    QTest::keyClick(&Box, Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(Colors(), "....aaaaa......");

    Box.SetText("again");
    EXPECT_EQ(Colors(), ".....") << "a new text drops the formatting";
    Paint(0, 1, 2);
    Box.SetSelStart(0);
    QTest::keyClicks(&Box, "x");
    EXPECT_EQ(Colors(), "bb....");
}

TEST_F(TextBoxTest, FormattingIsNoChangeAndNoUndoStep) {
    Box.SetText("abc");
    Box.SetSelStart(3);
    QTest::keyClicks(&Box, "d");
    QSignalSpy changes(&Box, &qt::TextBox::Changed);
    Paint(0, 4, 3);
    Select(1, 2);
    Box.SetSelBold(true);
    Box.SetSelItalic(true);
    Box.SetSelUnderline(true);
    EXPECT_EQ(changes.size(), 0);
    EXPECT_EQ(Box.SelFormat(), (CharFormat{3, true, true, true}));
    Box.SendMessage(EM_UNDO);
    EXPECT_EQ(Box.Text(), "abc");
    EXPECT_GT(changes.size(), 0);
    EXPECT_EQ(Colors(), "ccc");
}

TEST_F(TextBoxTest, EmptySelectionFormatsWhatIsTypedNextHere) {
    Box.SetText("abc");
    Box.SetSelStart(1);
    Box.SetSelColor(5);
    Box.SetSelLength(0);
    EXPECT_EQ(Box.SelFormat().Color, 5);
    QTest::keyClicks(&Box, "xy");
    EXPECT_EQ(Colors(), ".ee..");
    Box.SetSelStart(0);
    Box.SetSelColor(6);
    QTest::keyClick(&Box, Qt::Key_Right);
    QTest::keyClick(&Box, Qt::Key_Left);
    QTest::keyClicks(&Box, "z");
    EXPECT_EQ(Colors(), "..ee..");
    Paint(2, 1, 7);
    Box.SetText("z\xC3\xA4z");
    Select(2, 1);
    Box.SetSelColor(1);
    EXPECT_EQ(Colors(), ".aa.") << "a character is coloured whole";
}

TEST_F(TextBoxTest, FontsAreKeptByCharacter) {
    Box.SetDefaultFont("Courier New", 12.5);
    Box.SetSelBold(true);
    Box.SetText("abcd");
    EXPECT_EQ(Box.SelFontName(), "Courier New");
    EXPECT_EQ(Box.SelFontSize(), 12.5);
    EXPECT_TRUE(Box.SelFormat().Bold) << "set in an empty text it is the control's own";
    Select(1, 2);
    Box.SetSelFontName("No Such Font");
    Box.SetSelFontSize(48);
    Paint(0, 3, 1);
    EXPECT_EQ(Box.SelFontSize(), 48);
    const long tall = Box.SendScintilla(QsciScintillaBase::SCI_TEXTHEIGHT, 0UL, 0L);
    Select(0, 4);
    Box.SetSelFontSize(8);
    QCoreApplication::processEvents();
    EXPECT_EQ(Colors(), "aaa.");
    EXPECT_LT(Box.SendScintilla(QsciScintillaBase::SCI_TEXTHEIGHT, 0UL, 0L), tall / 2)
        << "a font that has gone keeps no lines tall";
    Box.SetDefaultFont("Courier New", 40);
    Box.SetText("x");
    Box.SetDefaultFont("Courier New", 8);
    Select(0, 1);
    Box.SetSelFontSize(8);
    QCoreApplication::processEvents();
    EXPECT_LT(Box.SendScintilla(QsciScintillaBase::SCI_TEXTHEIGHT, 0UL, 0L), tall / 2);
}

TEST_F(TextBoxTest, MoreFormatsOneAfterAnotherThanStyleNumbers) {
    Box.SetText(std::string(100, 'x'));
    for (std::int32_t i = 0; i < 1000; ++i) Paint(i % 100, 1, i + 1);
    for (std::int32_t i = 0; i < 100; ++i) {
        Select(i, 1);
        ASSERT_EQ(Box.SelFormat().Color, 901 + i);
    }
}

TEST_F(TextBoxTest, AppliesManyRunsAndLeavesTheRest) {
    Box.SetText(std::string(200000, 'x'));
    Paint(0, 200000, 1);
    Select(100, 50);
    std::vector<FormatRun> runs{
        {-5, 10, {2}}, {70000, 70000, {3, true}}, {150000, 3, {2}}, {199999, 50, {4}}};
    Box.ApplyFormats(runs);
    EXPECT_EQ(Box.SelStart(), 100);
    EXPECT_EQ(Box.SelLength(), 50);
    const std::pair<int, int> colors[] = {{0, 2},      {50, 1},     {69999, 1},  {70000, 3},
                                          {131071, 3}, {139999, 3}, {140000, 1}, {149999, 1},
                                          {150002, 2}, {150003, 1}, {199998, 1}, {199999, 4}};
    for (const auto& [offset, color] : colors) {
        Select(offset, 1);
        EXPECT_EQ(Box.SelFormat().Color, color) << offset;
    }
}

// The searches of the control against the plainest way to say what is meant.
std::int32_t NaiveFind(const std::string& text, const std::string& part, int start, int end, int options) {
    for (int at = start; !part.empty() && at + static_cast<int>(part.size()) <= end; ++at) {
        const std::string here = text.substr(at, part.size());
        if ((options & rtfMatchCase) ? here != part : !base::EqualNoCase(here, part)) continue;
        const std::size_t behind = at + part.size();
        const bool joined = (at > 0 && base::IsWordChar(text[at - 1])) ||
                            (behind < text.size() && base::IsWordChar(text[behind]));
        if (!(options & rtfWholeWord) || !joined) return at;
    }
    return -1;
}

TEST_F(TextBoxTest, FindsAsTheNaiveSearchDoes) {
    std::mt19937 random(7);
    const std::string letters = "aAbB \xC3\xA4\xE4_$\0"s;
    const auto below = [&random](std::size_t limit) { return static_cast<int>(random() % limit); };
    const auto word = [&](std::size_t length) {
        std::string made;
        while (made.size() < length) made += letters[random() % letters.size()];
        return made;
    };
    int hits = 0;
    for (int round = 0; round < 4000; ++round) {
        const std::string text = word(random() % 60), part = word(1 + random() % 3);
        const int start = below(70), end = start + below(70);
        const int options = below(4) * 2;
        if (round % 10 == 0) Box.SetText(text);
        const std::string held = Box.Text();
        const int from = std::min(start, Box.TextLength()), to = std::min(end, Box.TextLength());
        const std::int32_t expected = NaiveFind(held, part, from, to, options);
        ASSERT_EQ(Box.Find(part, from, to, options | rtfNoHighlight), expected);
        if (expected < 0) continue;
        ++hits;
        Box.Find(part, from, to, options);
        ASSERT_EQ(Box.SelStart(), expected);
        ASSERT_EQ(Box.SelText().size(), part.size());
    }
    EXPECT_GT(hits, 300);

    std::string large(300000, 'a');
    large.replace(2040, 12, "Needle needl");  // across the searcher's blocks
    large.replace(299990, 6, "NEEDLE");
    Box.SetText(large);
    EXPECT_EQ(Box.Find("needle", 0, -1, rtfNoHighlight), 2040);
    EXPECT_EQ(Box.Find("needle", 2041, -1, rtfNoHighlight), 299990);
    EXPECT_EQ(Box.Find("needle", 2041, -1, rtfNoHighlight | rtfMatchCase), -1);
    EXPECT_EQ(Box.Find("needle", 2041, 299995, rtfNoHighlight), -1);
    EXPECT_EQ(Box.SelLength(), 0) << "no highlight moves no selection";
}

TEST_F(TextBoxTest, MovesUpToASet) {
    const std::string text = "one two" + std::string(2000, 'x') + "\xC3\xA4;end";
    Box.SetText(text);
    const struct {
        std::int32_t From;
        const char* Set;
        bool Forward;
        std::int32_t To;
    } moves[] = {{1, " ;", true, 3},      {3, " ;", true, 3}, {4, ";", true, 2009},
                 {2010, ";", true, 2013}, {7, " ", false, 4}, {2009, " ", false, 4},
                 {4, " ", false, 4},      {3, " ", false, 0}, {2013, "\xC3", false, 2008},
                 {0, "\xA4", true, 2008}, {5, "", true, 2013}};
    for (const auto& move : moves) {
        Box.SetSelStart(move.From);
        Box.UpTo(move.Set, move.Forward);
        EXPECT_EQ(Box.SelStart(), move.To) << move.From << move.Set;
        EXPECT_EQ(Box.SelLength(), 0);
    }
}

TEST_F(TextBoxTest, FrozenKeepsScrollAndSelectsWithoutShowing) {
    std::string text;
    for (int i = 0; i < 500; ++i) text += "line\n";
    Box.SetText(text);
    for (int i = 0; i < 40; ++i) Box.SendMessage(EM_SCROLL, SB_LINEDOWN);
    EXPECT_EQ(Box.SendMessage(EM_GETFIRSTVISIBLELINE), 40);
    Box.SetVisible(false);
    Select(0, 3000);
    Box.SetSelColor(1);
    EXPECT_EQ(Box.SendMessage(EM_LINEINDEX, -1), 3000);
    Select(6, 4);
    Box.SetSelText("new");
    EXPECT_EQ(Box.SelStart(), 9);
    Box.SendMessage(EM_UNDO);
    EXPECT_EQ(Box.TextRange(6, 4), "line");
    Select(2, 3);
    EXPECT_TRUE(Box.hasFocus());
    Box.SetVisible(true);
    EXPECT_EQ(Box.SendMessage(EM_GETFIRSTVISIBLELINE), 40);
    EXPECT_EQ(Box.SelStart(), 2);
    EXPECT_EQ(Box.SelLength(), 3);
    QTest::keyClicks(&Box, "x");
    EXPECT_EQ(Box.TextRange(0, 6), "lix\r\nl") << "a line end is taken whole or not at all";
}

TEST_F(TextBoxTest, TellsKeysAndButtons) {
    QSignalSpy keys(&Box, &qt::TextBox::KeyReleased);
    QSignalSpy buttons(&Box, &qt::TextBox::RightButtonPressed);
    const struct {
        Qt::Key Key;
        int Code;
        Qt::KeyboardModifiers Modifiers = Qt::NoModifier;
    } codes[] = {{Qt::Key_Return, 13},
                 {Qt::Key_Backspace, 8},
                 {Qt::Key_A, 65},
                 {Qt::Key_Z, 90},
                 {Qt::Key_0, 48},
                 {Qt::Key_9, 57},
                 {Qt::Key_0, 96, Qt::KeypadModifier},
                 {Qt::Key_9, 105, Qt::KeypadModifier},
                 {Qt::Key_F1, 112},
                 {Qt::Key_F24, 135},
                 {Qt::Key_Delete, 46},
                 {Qt::Key_Left, 37},
                 {Qt::Key_Exclam, 49},
                 {Qt::Key_Shift, 16},
                 {Qt::Key_Down, 40},
                 {Qt::Key_NumLock, 144}};
    for (const auto& [key, code, modifiers] : codes) {
        QTest::keyClick(&Box, key, modifiers);
        ASSERT_FALSE(keys.isEmpty());
        EXPECT_EQ(keys.takeLast().at(0).toInt(), code);
    }
    keys.clear();
    QKeyEvent repeated(QEvent::KeyRelease, Qt::Key_B, Qt::NoModifier, "b", true);
    QApplication::sendEvent(&Box, &repeated);
    EXPECT_EQ(keys.size(), 0);
    Box.SetText("abc");
    Select(1, 1);
    QTest::mouseClick(Box.viewport(), Qt::RightButton);
    EXPECT_EQ(buttons.size(), 1);
    EXPECT_EQ(Box.SelText(), "b");
}

TEST_F(TextBoxTest, TakesFromInputMethodsAndLeavesFiles) {
    QSignalSpy keys(&Box, &qt::TextBox::KeyReleased);
    QInputMethodEvent compose("ni", {});
    QApplication::sendEvent(&Box, &compose);
    QInputMethodEvent commit;
    commit.setCommitString(u"\u4F60"_qs);
    QApplication::sendEvent(&Box, &commit);
    EXPECT_EQ(Box.Text(), "\u4F60");
    ASSERT_EQ(keys.size(), 1);
    EXPECT_EQ(keys[0][0].toInt(), 229);
    std::string line(5000, 'x');
    line += "\u00E4";
    Box.SetText(line);
    Box.SetSelStart(5002);
    const QString near = static_cast<QWidget&>(Box).inputMethodQuery(Qt::ImSurroundingText).toString();
    EXPECT_LT(near.size(), 2000);
    EXPECT_TRUE(near.endsWith(u"x\u00E4"_qs));

    QMimeData files;
    files.setUrls({QUrl("file:///tmp/A.PLD")});
    files.setText("file:///tmp/A.PLD");
    QMimeData text;
    text.setText("text");
    for (const auto& [data, taken] : {std::pair{&files, false}, std::pair{&text, true}}) {
        QDragEnterEvent enter({50, 10}, Qt::CopyAction, data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(Box.viewport(), &enter);
        EXPECT_EQ(enter.isAccepted(), taken);
    }
}

}  // namespace
