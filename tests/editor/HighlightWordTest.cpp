#include <gtest/gtest.h>

#include "editor/FormattedTextBox.h"
#include "editor/Highlighter.h"
#include "session/HighlightTables.h"
#include "support/Doubles.h"
#include "support/MemoryFiles.h"
#include "support/Rooms.h"

namespace {

struct HighlightWord : testing::Test {
    doubles::MemoryFiles Files;
    doubles::Desktop Desk{Files};
    doubles::Hall Hall;
    session::Session State;
    session::App App{State, Desk.Host, Hall};
    doubles::FormattedDocument Doc;
    doubles::FormattedTextBox& Box = Doc.Rich;

    HighlightWord() {
        State.HighlightEnabled = true;
        State.Delimiters = session::MakeDelimiters();
        State.NoHighlightKeys = session::MakeNoHighlightKeys();
        State.Keywords = {{.Name = "PIN", .Color = 'p'},
                          {.Name = "COMMENTS", .Color = 'c'},
                          {.Name = "$IF", .Color = 'd'},
                          {.Name = "IF", .Color = 'i'}};
    }
    // Makes the work fail at each of its changes in turn. Gives how often it did.
    int FailEverywhere(const std::string& text, std::int32_t caret,
                       void (*work)(session::App&, session::Document&)) {
        for (int failures = 0;; ++failures) {
            Box.SetText(text);
            Box.SetSelStart(caret);
            Doc.InComment = text.ends_with("*/");
            Box.Log.clear();
            Box.FailAfter = failures;
            bool failed = false;
            try {
                work(App, Doc);
            } catch (const base::RunTimeError&) {
                failed = true;
            }
            Box.FailAfter = -1;
            const auto count = [&](const char* what) {
                return std::count(Box.Log.begin(), Box.Log.end(), what);
            };
            EXPECT_EQ(count("hidden"), count("visible"));
            EXPECT_EQ(count("caret off"), count("caret on"));
            EXPECT_EQ(Box.SelStart(), caret);
            EXPECT_FALSE(Desk.Desk.Hourglass);
            EXPECT_EQ(Hall.Panel(1), Hall.Panels.empty() ? "" : " ");
            if (!failed) return failures;
        }
    }
    // Types each character and releases its key.
    void Type(const std::string& text) {
        for (const char c : text) {
            Box.SetSelText(std::string(1, c));
            const std::int32_t caret = Box.SelStart();
            editor::HighlightWord(App, Doc);
            EXPECT_EQ(Box.SelStart(), caret) << text;
        }
    }
    std::string Typed(const std::string& before, const std::string& keys, const std::string& behind = "") {
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
        {"PIN ", "$", "IF", "ppp..dd"},  // the typed delimiter is plain after all
        {"", "\xC3\xA4PIN", "", "..ppp"}, {"PIN", "\n", "", "pppp"},  // a line end is not looked at
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
    Doc.Title = "C:\\A.TXT";
    EXPECT_EQ(Typed("", "PIN"), "...");
    Doc.Title = "c:\\a.pld";
    State.HighlightEnabled = false;
    EXPECT_EQ(Typed("", "PIN"), "...");
    EXPECT_TRUE(editor::IsHighlightKey(State, 46));
    EXPECT_TRUE(editor::IsHighlightKey(State, 8));
    EXPECT_FALSE(editor::IsHighlightKey(State, 144));
}

TEST_F(HighlightWord, KeepsTheViewAndHidesTheCaretMeanwhile) {
    std::string text;
    for (int line = 0; line < 40; ++line) text += "PIN ;\r\n";
    Box.SetText(text);
    Box.SetSelStart(24 * 7 + 5);
    Box.FirstVisible = 20;  // the caret is in the last line of the view
    Box.Log.clear();
    Type("PIN;");
    EXPECT_EQ(Box.FirstVisible, 20);
    Box.FirstVisible = 3;  // scrolled away from the caret, then a key that types nothing
    editor::HighlightWord(App, Doc);
    EXPECT_EQ(Box.FirstVisible, 3);
    Doc.InComment = true;  // begun above the view
    Doc.CommentStart = 0;
    Type("*/");
    EXPECT_EQ(Box.FirstVisible, 20);
    EXPECT_EQ(Box.Log.front(), "caret off");
    EXPECT_EQ(Box.Log.back(), "caret on");
    EXPECT_EQ(std::count(Box.Log.begin(), Box.Log.end(), "hidden"),
              std::count(Box.Log.begin(), Box.Log.end(), "visible"));
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
