#include "editor/HighlightFixture.h"
#include "editor/HighlightTables.h"

namespace {

struct HighlightWord : HighlightFixture {
    HighlightWord() {
        State.Delimiters = editor::MakeDelimiters();
        State.NoHighlightKeys = editor::MakeNoHighlightKeys();
        State.Keywords = {{.Name = "PIN", .Color = 'p'},
                          {.Name = "COMMENTS", .Color = 'c'},
                          {.Name = "$IF", .Color = 'd'},
                          {.Name = "IF", .Color = 'i'}};
        QObject::connect(&Box, &platform::qt::TextBox::KeyReleased, &Box, [this](int key) {
            if (editor::IsHighlightKey(State, key)) editor::HighlightWord(App, Doc);
        });
    }
    // Makes the work fail at each of its changes in turn. Gives how often it did.
    int FailEverywhere(const std::string& text, std::int32_t caret,
                       void (*work)(session::App&, session::Document&)) {
        for (int failures = 0;; ++failures) {
            Box.SetText(text);
            Box.SetSelStart(caret);
            Doc.InComment = text.ends_with("*/");
            Box.FailAfter = failures;
            bool failed = false;
            try {
                work(App, Doc);
            } catch (const base::RunTimeError&) {
                failed = true;
            }
            Box.FailAfter = -1;
            EXPECT_TRUE(Box.Hidden == 0 && Box.HiddenCarets == 0);
            EXPECT_EQ(Box.SelStart(), caret);
            EXPECT_FALSE(Desk.Desk.Hourglass);
            EXPECT_EQ(Hall.Panel(1), Hall.Panels.empty() ? "" : " ");
            if (!failed) return failures;
        }
    }
    void Type(const QString& text) {
        for (const QChar c : text) {
            const std::int32_t caret = Box.SelStart();
            const auto key = c == '\n' ? Qt::Key_Return : Qt::Key_unknown;
            QTest::sendKeyEvent(QTest::Click, &Box, key, c, Qt::NoModifier);
            EXPECT_GT(Box.SelStart(), caret);
        }
    }
    std::string Typed(const std::string& before, const char* keys, const std::string& behind = "") {
        Box.SetText(before + behind);
        editor::HighlightSyntax(App, Doc);
        Doc.InComment = false;
        Box.SetSelStart(static_cast<std::int32_t>(before.size()));
        Type(keys);
        return Box.Picture();
    }
};

TEST_F(HighlightWord, PaintsTheWordAtTheCaret) {
    struct Case {
        const char *Before, *Keys, *Behind, *Picture;
    };
    const Case cases[] = {
        {"", "pin", "", "ppp"},           {"", "PIN;", "", "ppp."},  // unlike the whole pass
        {"", "PIN ", "", "ppp."},         {"", "PINS", "", "...."},  // the word stopped being a keyword
        {"", "x=PIN=", "", "..ppp."},     {"", "$IF ", "", "ddd."},   {"", "A$IF ", "", ".ddd."},
        {"", "$$IF", "", ".ddd"},         {"PI", "N", " ;", "ppp.."},  // in front of the rest of the line
        {"P", "I", "N ;", "ppp.."},                                    // within the word
        {"PIN", "=", "PIN", "ppp.ppp"},                                // splits it: both parts
        {"A ", "=", " PIN", "....ppp"},                                // no word begins behind the delimiter
        {"PIN ", "$", "IF", "ppp..dd"},  // the typed delimiter is plain after all
        {"", "\xC3\xA4PIN", "", "..ppp"}, {"PIN", "\n", "", "ppppp"},  // a line end is not looked at
    };
    for (const Case& c : cases) {
        EXPECT_EQ(Typed(c.Before, c.Keys, c.Behind), c.Picture)
            << c.Before << "|" << c.Keys << "|" << c.Behind;
    }
}

TEST_F(HighlightWord, CommentIsPaintedWhenItIsClosed) {
    EXPECT_EQ(Typed("", "/* PIN "), ".......");
    EXPECT_TRUE(Doc.InComment);
    Type("*/");
    EXPECT_EQ(Box.Picture(), "ccccccccc");
    EXPECT_FALSE(Doc.InComment);
    Type(" PIN");
    EXPECT_EQ(Box.Picture(), "ccccccccc.ppp");

    EXPECT_EQ(Typed("", "/*/"), "ccc");
    EXPECT_EQ(Typed("/* ", "PIN", " */"), "cccpppccc");  // an old comment is not known to the typist

    State.Keywords.erase(State.Keywords.begin() + 1);
    EXPECT_EQ(Typed("", "PIN/**/"), "ppp....");
}

TEST_F(HighlightWord, CommentWhoseStartHasMovedBehindTheCaret) {
    Typed("PIN PIN ", "/*");
    Box.SetSelStart(0);
    Type("*/");  // closes it with nothing between
    EXPECT_FALSE(Doc.InComment);
    Doc.InComment = true;
    Typed("", "");
    Doc.InComment = true;
    Type("/");  // one character is no end of a comment
    EXPECT_TRUE(Doc.InComment);
}

TEST_F(HighlightWord, LeavesOtherTextsAndPlacesAlone) {
    EXPECT_EQ(Typed("", ""), "");
    Doc.SetCaption("C:\\A.TXT");
    EXPECT_EQ(Typed("", "PIN"), "...");
    Doc.SetCaption("c:\\a.pld");
    State.HighlightEnabled = false;
    EXPECT_EQ(Typed("", "PIN"), "...");
    EXPECT_TRUE(editor::IsHighlightKey(State, 46));
    EXPECT_TRUE(editor::IsHighlightKey(State, 8));
    EXPECT_FALSE(editor::IsHighlightKey(State, 144));
}

TEST_F(HighlightWord, KeepsTheViewAndHidesTheCaretMeanwhile) {
    std::string text;
    for (int line = 0; line < 400; ++line) text += "PIN ;\r\n";
    Box.SetText(text);
    Box.SetSelStart(300 * 7 + 5);
    const long first = Box.FirstVisible();
    Type("PIN;");
    EXPECT_EQ(Box.FirstVisible(), first);
    EXPECT_TRUE(Box.WasCaretHidden > 0 && Box.HiddenCarets == 0);
    Box.ScrollTo(3);
    QTest::keyClick(&Box, Qt::Key_S, Qt::ControlModifier);  // types nothing
    EXPECT_EQ(Box.FirstVisible(), 3);
    Type("/* ");
    Doc.CommentStart = 0;  // begun far above the view
    Type("*/");
    EXPECT_EQ(Box.FirstVisible(), first);
    EXPECT_EQ(Box.Formats()[0].Color, 'c');
}

TEST_F(HighlightWord, LeavesASelectionToTheUser) {
    Typed("PIN x", "y");
    QTest::keyClick(&Box, Qt::Key_Left, Qt::ShiftModifier);
    QTest::keyClick(&Box, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(Box.SelText(), "y");
}

TEST_F(HighlightWord, NoFailureLeavesTheControlFrozen) {
    EXPECT_GE(FailEverywhere("PIN;x", 4, editor::HighlightWord), 8);
    EXPECT_GE(FailEverywhere("/* a */", 7, editor::HighlightWord), 4);
    EXPECT_GE(FailEverywhere("PIN ;", 3,
                             [](session::App& app, session::Document& document) {
                                 editor::HighlightSyntax(app, document);
                             }),
              2);
}

}  // namespace
