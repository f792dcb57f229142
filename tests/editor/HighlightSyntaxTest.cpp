#include <random>

#include "editor/HighlightFixture.h"
#include "editor/HighlightTables.h"
#include "editor/SearchingHighlight.h"

namespace {

using session::KeywordRec;

struct HighlightSyntax : HighlightFixture {
    HighlightSyntax() {
        State.Keywords = {{.Name = "NAME", .Color = 'n'},    {.Name = "COMMENTS", .Color = 'c'},
                          {.Name = "$DEFINE", .Color = 'd'}, {.Name = "PIN NODE", .Color = 'o'},
                          {.Name = "PIN", .Color = 'p'},     {.Name = "", .Color = 'e'}};
    }
    std::string Picture(const std::string& text) {
        Box.SetText(text);
        editor::HighlightSyntax(App, Doc);
        return Box.Picture();
    }
};

TEST_F(HighlightSyntax, PaintsWordsSetOffByBlanksAndClosedComments) {
    const std::pair<std::string, std::string> cases[] = {
        {"NAME X ;", "nnnn...."},
        {"name", "nnnn"},
        {"NAME=X", "......"},  // the character behind is no blank
        {"x NAME", "......"},  // two places before, not the one next to it
        {"; NAME", "......"},
        {" ;NAME ", "..nnnn."},
        {";NAME", ".nnnn"},  // offsets 0 and 1 have no test on the left
        {"  NAME1 NAMES _NAME", "..................."},
        {"  NAME;", "......."},
        {"\r\nNAME\x7F", "..nnnn."},
        {"  NAME\xC3\xA4", "..nnnn.."},
        {"  $define X", "..ddddddd.."},
        {"  $DEFINEX A$DEFINE", "..................."},
        {"PIN NODE", "pppooooo"},                // the later entry shows, of the earlier what is left
        {"/* NAME */ NAME", "cccccccccc....."},  // ... whose blank test sees the "*"
        {"/*/ PIN", "ccc...."},
        {"/*  PIN", "....ppp"},  // never closed
        {"*/ /* a */x/**/", "...ccccccc.cccc"},
    };
    for (const auto& [text, picture] : cases) EXPECT_EQ(Picture(text), picture) << text;
}

TEST_F(HighlightSyntax, RangeStopsAtTheFirstMatchBeyondItsEnd) {
    const std::string text = "NAME  NAME  NAME  /* a */ /* b */";
    Box.SetText(text);
    Box.SetSelStart(8);
    editor::HighlightSyntax(App, Doc, 1, 12);
    EXPECT_EQ(Box.Picture(), "......nnnn..nnnn.................");  // a match at the end itself counts
    editor::HighlightSyntax(App, Doc, 17, 18);
    EXPECT_EQ(Box.Picture(), "......nnnn..nnnn..ccccccc........");
    editor::HighlightSyntax(App, Doc, 0, 0);
    EXPECT_EQ(Box.Picture(), "nnnn..nnnn..nnnn..ccccccc........");
    EXPECT_EQ(Box.SelStart(), 8);
}

TEST_F(HighlightSyntax, WholePassResetsColourOnly) {
    Box.SetText("xyz NAME");
    Box.Format(0, 1, {'r', true, true, true});
    Box.Format(5, 1, {'r', true, true, true});
    editor::HighlightSyntax(App, Doc);
    EXPECT_EQ(Box.Formats()[0], (platform::CharFormat{0, true, true, true}));
    State.HighlightEnabled = false;
    State.DefaultTextColor = 'z';
    editor::HighlightSyntax(App, Doc);
    EXPECT_EQ(Box.Picture(), "zzzzzzzz");

    State.HighlightEnabled = true;
    State.Keywords.clear();
    Doc.SetCaption("C:\\X.PLD\\READ.ME");
    State.DefaultTextColor = 0;
    editor::HighlightSyntax(App, Doc);
    EXPECT_EQ(Box.Picture(), "zzzzzzzz");  // no design
}

TEST_F(HighlightSyntax, ShowsItselfAndLeavesCaretAndViewAlone) {
    std::string text;
    for (int line = 0; line < 500; ++line) text += "NAME ;" + std::string(200, '-') + "\r\n";
    Box.SetText(text);
    for (const std::int32_t line : {0, 100, 102, 400}) {  // of the caret, mostly out of sight
        Box.SetSelStart(208 * line + 4);
        Box.ScrollTo(100, 150);
        editor::HighlightSyntax(App, Doc);
        EXPECT_EQ(Box.FirstVisible(), 100) << line;
        EXPECT_EQ(Box.SendScintilla(QsciScintillaBase::SCI_GETXOFFSET), 150);
        EXPECT_EQ(Box.SelStart(), 208 * line + 4);
        EXPECT_EQ(Box.SelLength(), 0);
    }
    EXPECT_EQ(Hall.Panels[1], " ");
    EXPECT_FALSE(Desk.Desk.Hourglass);
    EXPECT_GT(Box.WasHidden, 0);
    EXPECT_TRUE(Box.updatesEnabled());
}

TEST_F(HighlightSyntax, ARangeLeavesTheSelectionBesideItAlone) {
    Picture("PIN 1 ;\r\nPIN 2 ;");
    for (const bool isKept : {false, true}) {
        Box.SetSelStart(0);
        Box.SetSelLength(5);
        if (!isKept) QTest::keyClick(&Box, Qt::Key_End, Qt::ControlModifier);
        editor::HighlightSyntax(App, Doc, 9, 12);
        EXPECT_EQ(Box.SelStart(), isKept ? 0 : Box.TextLength());
        EXPECT_EQ(Box.Picture(), "ppp......ppp....");
    }
}

// Random text of a few pieces that make words, near-words and overlaps, a new choice of them each round.
class Nasty {
  public:
    explicit Nasty(unsigned seed) : random_(seed) { Choose(); }
    int Below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(random_); }
    void Choose() {
        static const std::vector<std::string> all = {
            "a", "A", "b", "_", "$",  " ",  "\t",   "\r\n",     ";",    "/*",   "*/",  "/",
            "*", "1", " ", " ", "aa", "ab", "pin ", "\xC3\xA4", "\xE4", "\x7F", "a a", std::string(1, '\0')};
        for (std::string& piece : pieces_) piece = all[Below(static_cast<int>(all.size()))];
    }
    std::string Text(int length) {
        std::string text;
        for (; length > 0; --length) text += pieces_[Below(static_cast<int>(pieces_.size()))];
        return text;
    }
    std::vector<KeywordRec> Table() {
        std::vector<KeywordRec> table;
        for (int n = Below(10); n > 0; --n) {
            const std::string name = Below(5) == 0 ? "COMMENTS" : Text(Below(4));
            table.push_back({name, 'A' + n, Below(2) == 0, Below(2) == 0, Below(2) == 0});
        }
        return table;
    }

  private:
    std::mt19937 random_;
    std::array<std::string, 6> pieces_;
};

TEST_F(HighlightSyntax, GivesThePictureOfOneSearchForEachWord) {
    Nasty nasty(7);
    platform::qt::TextBox expected;
    for (int round = 0; round < 250; ++round) {
        nasty.Choose();
        State.Keywords = round % 25 == 0 ? editor::DefaultKeywords() : nasty.Table();
        State.HighlightEnabled = nasty.Below(10) != 0;
        const std::string text = nasty.Text(nasty.Below(60));
        Box.SetText(text);
        expected.SetText(text);
        const std::int32_t length = Box.TextLength();
        std::vector<platform::FormatRun> runs;
        for (std::int32_t at = 0; at < length; ++at)
            runs.push_back({at, 1, {nasty.Below(3), nasty.Below(2) == 0}});
        const std::int32_t from = nasty.Below(length + 1),
                           selected = nasty.Below(3) == 0 ? nasty.Below(10) : 0;
        for (platform::qt::TextBox* box : {static_cast<platform::qt::TextBox*>(&Box), &expected}) {
            box->platform::qt::TextBox::ApplyFormats(runs);
            box->SetSelStart(from);
            box->SetSelLength(selected);
        }
        std::optional<std::int32_t> start, end;
        if (nasty.Below(2) == 0) start = nasty.Below(length + 2);
        if (start && nasty.Below(2) == 0) end = nasty.Below(length + 2);

        if (start) expected.SetSelLength(0);  // what is selected has no part in a range
        searching::HighlightSyntax(State, expected, start, end);
        editor::HighlightSyntax(App, Doc, start, end);
        ASSERT_EQ(Box.SelStart(), expected.SelStart());
        ASSERT_EQ(Box.Formats(), WatchedBox::FormatsOf(expected)) << round << ": " << text;
    }
}

TEST_F(HighlightSyntax, OneWordAndCommentsAlone) {
    Nasty nasty(11);
    platform::qt::TextBox expected;
    for (int round = 0; round < 150; ++round) {
        nasty.Choose();
        State.Keywords = {{nasty.Text(2), 'k', true, false, true}};
        const std::string text = nasty.Text(40);
        Box.SetText(text);
        expected.SetText(text);
        searching::ColorKeyword(expected, State.Keywords[0], 3, 60);
        searching::ColorComments(expected, State.Keywords[0], 3, 60);
        editor::ColorKeyword(State, Box, 0, 3, 60);
        editor::ColorComments(State, Box, 0, 3, 60);
        ASSERT_EQ(Box.Formats(), WatchedBox::FormatsOf(expected)) << text;
    }
}

}  // namespace
