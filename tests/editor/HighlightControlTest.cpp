#include <gtest/gtest.h>

#include <QTest>
#include <random>

#include "editor/FormattedTextBox.h"
#include "editor/Highlighter.h"
#include "platform/qt/TextBox.h"
#include "session/HighlightTables.h"
#include "support/Doubles.h"
#include "support/MemoryFiles.h"
#include "support/Rooms.h"

namespace {

class ControlDocument : public doubles::Document {
  public:
    platform::qt::TextBox Rich;
    ControlDocument() { Title = "C:\\WORK\\COUNT8.PLD"; }
    platform::RichTextBox& txtText() override { return Rich; }
};

// The real control beside the plain one: what is done to both has to look the same.
struct HighlightControl : testing::Test {
    doubles::MemoryFiles Files;
    doubles::Desktop Desk{Files};
    doubles::Hall Hall;
    session::Session State;
    session::App App{State, Desk.Host, Hall};
    ControlDocument Real;
    doubles::FormattedDocument Plain;
    std::mt19937 Random{3};

    HighlightControl() {
        State.HighlightEnabled = true;
        State.Delimiters = session::MakeDelimiters();
        State.Keywords = session::DefaultKeywords();
        State.Keywords[21].Bold = State.Keywords[27].Underline = true;
    }
    std::string Piece() {
        static const char* const pieces[] = {"PIN", "if", "$", "$IF", "ELSE", " ",        " ",
                                             ";",   "x",  "_", "/*",  "*/",   "\xC3\xA4", "\r\n"};
        return pieces[Random() % std::size(pieces)];
    }
    std::string Text(int count) {
        std::string text;
        for (; count > 0; --count) text += Piece();
        return text;
    }
    template <typename Act>
    void Both(Act act) {
        act(static_cast<session::Document&>(Real));
        act(static_cast<session::Document&>(Plain));
    }
    void ExpectSame() {
        ASSERT_EQ(Real.Rich.SelStart(), Plain.Rich.SelStart());
        ASSERT_EQ(Real.Rich.Text(), Plain.Rich.Content);
        ASSERT_EQ(Real.InComment, Plain.InComment);
        const std::int32_t caret = Real.Rich.SelStart();
        for (std::int32_t at = 0; at < Real.Rich.TextLength(); ++at) {
            Real.Rich.SetSelStart(at);
            Real.Rich.SetSelLength(1);
            ASSERT_EQ(Real.Rich.SelFormat(), Plain.Rich.Formats[static_cast<std::size_t>(at)])
                << at << ": " << Plain.Rich.Content;
        }
        Real.Rich.SetSelStart(caret);
    }
};

TEST_F(HighlightControl, WholePassAndTypingAsOnThePlainControl) {
    for (int round = 0; round < 60; ++round) {
        const std::string text = Text(25);
        const auto caret = static_cast<std::int32_t>(text.find(' ') + 1);
        Both([&](session::Document& doc) {
            doc.txtText().SetText(text);
            doc.txtText().SetSelStart(caret);
            editor::HighlightSyntax(App, doc);
        });
        ASSERT_NO_FATAL_FAILURE(ExpectSame());
        for (int key = 0; key < 12; ++key) {
            std::string typed = Piece();
            if (typed == "\xC3\xA4") typed = "=";  // the real control formats such a character as one
            Both([&](session::Document& doc) {
                doc.txtText().SetSelText(typed);
                editor::HighlightWord(App, doc);
            });
            ASSERT_NO_FATAL_FAILURE(ExpectSame()) << "after " << typed;
        }
        Both([&](session::Document& doc) { editor::HighlightSyntax(App, doc, caret, caret + 20); });
        ASSERT_NO_FATAL_FAILURE(ExpectSame());
    }
}

TEST_F(HighlightControl, ViewStaysWithTheCaretOutOfSight) {
    std::string text;
    for (int line = 0; line < 500; ++line) text += "PIN 1 = clk ;" + std::string(200, '-') + "\r\n";
    Real.Rich.resize(400, 200);
    Real.Rich.show();
    Real.Rich.SetText(text);
    for (const std::int32_t line : {0, 100, 102, 400}) {
        const std::int32_t caret = 215 * line + 4;
        Real.Rich.SetSelStart(caret);
        Real.Rich.SendScintilla(QsciScintillaBase::SCI_SETFIRSTVISIBLELINE, 100UL);
        Real.Rich.SendScintilla(QsciScintillaBase::SCI_SETXOFFSET, 150UL);
        editor::HighlightSyntax(App, Real);
        editor::HighlightWord(App, Real);
        EXPECT_EQ(Real.Rich.SendMessage(platform::EM_GETFIRSTVISIBLELINE), 100) << line;
        EXPECT_EQ(Real.Rich.SendScintilla(QsciScintillaBase::SCI_GETXOFFSET), 150);
        EXPECT_EQ(Real.Rich.SelStart(), caret);
        EXPECT_TRUE(Real.Rich.updatesEnabled());
    }
}

TEST_F(HighlightControl, ARangeLeavesWhatTheProgramHadSelectedAlone) {
    Real.Rich.SetText("PIN 1 ;\r\nPIN 2 ;");
    editor::HighlightSyntax(App, Real);
    Real.Rich.SetSelStart(0);
    Real.Rich.SetSelLength(5);
    QTest::keyClick(&Real.Rich, Qt::Key_End, Qt::ControlModifier);
    editor::HighlightSyntax(App, Real, 9, 12);
    EXPECT_EQ(Real.Rich.SelStart(), Real.Rich.TextLength());
    Real.Rich.SetSelStart(4);
    Real.Rich.SetSelLength(1);
    EXPECT_EQ(Real.Rich.SelFormat().Color, 0);
}

}  // namespace
