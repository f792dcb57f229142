#include <gtest/gtest.h>

#include <random>

#include "editor/FormattedTextBox.h"
#include "editor/Highlighter.h"
#include "editor/SearchingHighlight.h"
#include "session/HighlightTables.h"
#include "support/Doubles.h"
#include "support/MemoryFiles.h"
#include "support/Rooms.h"

namespace {

using session::KeywordRec;

struct HighlightSyntax : testing::Test {
    doubles::MemoryFiles Files;
    doubles::Desktop Desk{Files};
    doubles::Hall Hall;
    session::Session State;
    session::App App{State, Desk.Host, Hall};
    doubles::FormattedDocument Doc;
    doubles::FormattedTextBox& Box = Doc.Rich;

    HighlightSyntax() {
        State.HighlightEnabled = true;
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
    EXPECT_EQ(Box.SelStart(), 8);
}

TEST_F(HighlightSyntax, WholePassResetsColourOnly) {
    Box.SetText("xyz NAME");
    Box.Formats[0] = {'r', true, true, true};
    Box.Formats[5] = {'r', true, true, true};
    editor::HighlightSyntax(App, Doc);
    EXPECT_EQ(Box.Formats[0], (platform::CharFormat{0, true, true, true}));
    State.HighlightEnabled = false;
    State.DefaultTextColor = 'z';
    editor::HighlightSyntax(App, Doc);
    EXPECT_EQ(Box.Picture(), "zzzzzzzz");

    State.HighlightEnabled = true;
    State.Keywords.clear();
    Doc.Title = "C:\\X.PLD\\READ.ME";
    State.DefaultTextColor = 0;
    editor::HighlightSyntax(App, Doc);
    EXPECT_EQ(Box.Picture(), "zzzzzzzz");  // no design
}

TEST_F(HighlightSyntax, ShowsItselfAndBringsCaretAndViewBack) {
    std::string text;
    for (int line = 0; line < 40; ++line) text += "NAME ;\r\n";
    Box.SetText(text);
    const std::pair<std::int32_t, std::int32_t> cases[] = {// line of the caret, first visible line
                                                           {0, 0},
                                                           {20, 18},
                                                           {20, 20},
                                                           {3, 20},
                                                           {35, 20}};  // the last two out of view
    for (const auto& [line, firstVisible] : cases) {
        Box.SetSelStart(line * 8 + 3);
        Box.FirstVisible = firstVisible;
        editor::HighlightSyntax(App, Doc);
        EXPECT_EQ(Box.FirstVisible, firstVisible) << line;
        EXPECT_EQ(Box.SelStart(), line * 8 + 3);
        EXPECT_EQ(Box.SelLength(), 0);
    }
    EXPECT_EQ(Hall.Panels[1], " ");
    EXPECT_FALSE(Desk.Desk.Hourglass);
    EXPECT_EQ(Box.Log.front(), "hidden");
    EXPECT_EQ(Box.Log.back(), "visible");
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
    for (int round = 0; round < 4000; ++round) {
        nasty.Choose();
        State.Keywords = round % 50 == 0 ? session::DefaultKeywords() : nasty.Table();
        State.HighlightEnabled = nasty.Below(10) != 0;
        Box.SetText(nasty.Text(nasty.Below(60)));
        for (auto& format : Box.Formats) format = {nasty.Below(3), nasty.Below(2) == 0, false, false};
        const std::int32_t length = Box.TextLength();
        Box.SetSelStart(nasty.Below(length + 1));
        Box.SetSelLength(nasty.Below(3) == 0 ? nasty.Below(10) : 0);
        std::optional<std::int32_t> start, end;
        if (nasty.Below(2) == 0) start = nasty.Below(length + 2);
        if (start && nasty.Below(2) == 0) end = nasty.Below(length + 2);

        doubles::FormattedTextBox expected = Box;
        searching::HighlightSyntax(State, expected, start, end);
        editor::HighlightSyntax(App, Doc, start, end);
        ASSERT_EQ(Box.Formats, expected.Formats) << round << ": " << Box.Content;
        ASSERT_EQ(Box.SelStart(), expected.SelStart());
        ASSERT_EQ(std::count(Box.Log.begin(), Box.Log.end(), "bad run"), 0);
        Box.Log.clear();
    }
}

TEST_F(HighlightSyntax, OneWordAndCommentsAlone) {
    Nasty nasty(11);
    for (int round = 0; round < 300; ++round) {
        nasty.Choose();
        State.Keywords = {{nasty.Text(2), 'k', true, false, true}};
        Box.SetText(nasty.Text(40));
        doubles::FormattedTextBox expected = Box;
        searching::ColorKeyword(expected, State.Keywords[0], 3, 60);
        searching::ColorComments(expected, State.Keywords[0], 3, 60);
        editor::ColorKeyword(State, Box, 0, 3, 60);
        editor::ColorComments(State, Box, 0, 3, 60);
        ASSERT_EQ(Box.Formats, expected.Formats) << Box.Content;
    }
}

}  // namespace
