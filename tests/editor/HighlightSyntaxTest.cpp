#include <algorithm>
#include <limits>
#include <optional>
#include <random>

#include "base/modLib.h"
#include "editor/HighlightFixture.h"
#include "editor/HighlightTables.h"

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

// The colouring as it is defined: one search of the control for each word of the table, then one for
// comments. The highlighter has to give the same picture.
struct Searching {
    using Offset = std::int32_t;
    explicit Searching(WatchedBox& box) : Box(box), Formats(box.Formats()) {}
    WatchedBox& Box;
    std::vector<platform::CharFormat> Formats;

    void Paint(Offset start, Offset length, const KeywordRec& word) {
        const platform::CharFormat format{word.Color, word.Bold, word.Italic, word.Underline};
        std::fill_n(Formats.begin() + start, length, format);
    }
    void ColorKeyword(const KeywordRec& word, Offset start, Offset end) {
        const std::string_view text = Box.TextView();
        const auto n = static_cast<Offset>(word.Name.size());
        const auto isBlank = [&](Offset at) { return base::IsBlankChar(text[static_cast<std::size_t>(at)]); };
        for (Offset pos = start;;) {
            const Offset found =
                Box.Find(word.Name, pos, -1, platform::rtfWholeWord | platform::rtfNoHighlight);
            if (found == -1 || found > end) return;
            pos = found + n;
            if ((found <= 1 || isBlank(found - 2)) && (pos >= Box.TextLength() || isBlank(pos)))
                Paint(found, n, word);
        }
    }
    void ColorComments(const KeywordRec& word, Offset start, Offset end) {
        for (Offset pos = start;;) {
            const Offset a = Box.Find("/*", pos, -1, platform::rtfNoHighlight);
            const Offset b = a == -1 || a > end ? -1 : Box.Find("*/", a, -1, platform::rtfNoHighlight);
            if (b == -1) return;
            pos = b + 2;
            Paint(a, pos - a, word);
        }
    }
    void HighlightSyntax(const session::Session& state, std::optional<Offset> start,
                         std::optional<Offset> end) {
        for (platform::CharFormat& format : Formats)
            if (!start) format.Color = state.DefaultTextColor;
        const Offset last = end.value_or(std::numeric_limits<Offset>::max());
        const KeywordRec* comments = nullptr;
        for (const KeywordRec& word : state.Keywords) {
            if (!state.HighlightEnabled) break;
            if (word.Name != "COMMENTS")
                ColorKeyword(word, start.value_or(0), last);
            else if (!comments)
                comments = &word;
        }
        if (comments) ColorComments(*comments, start.value_or(0), last);
    }
};

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
    for (int round = 0; round < 250; ++round) {
        nasty.Choose();
        State.Keywords = round % 25 == 0 ? editor::DefaultKeywords() : nasty.Table();
        State.HighlightEnabled = nasty.Below(10) != 0;
        const std::string text = nasty.Text(nasty.Below(60));
        Box.SetText(text);
        const std::int32_t length = Box.TextLength();
        for (std::int32_t at = 0; at < length; ++at) Box.Format(at, 1, {nasty.Below(3), nasty.Below(2) == 0});
        Box.SetSelStart(nasty.Below(length + 1));
        Box.SetSelLength(nasty.Below(3) == 0 ? nasty.Below(10) : 0);
        std::optional<std::int32_t> start, end;
        if (nasty.Below(2) == 0) start = nasty.Below(length + 2);
        if (start && nasty.Below(2) == 0) end = nasty.Below(length + 2);

        const std::int32_t caret = Box.SelStart();
        Searching expected(Box);
        expected.HighlightSyntax(State, start, end);
        editor::HighlightSyntax(App, Doc, start, end);
        ASSERT_EQ(Box.SelStart(), caret);
        ASSERT_EQ(Box.Formats(), expected.Formats) << round << ": " << text;
    }
}

TEST_F(HighlightSyntax, OneWordAndCommentsAlone) {
    Nasty nasty(11);
    for (int round = 0; round < 150; ++round) {
        nasty.Choose();
        State.Keywords = {{nasty.Text(2), 'k', true, false, true}};
        const std::string text = nasty.Text(40);
        Box.SetText(text);
        Searching expected(Box);
        expected.ColorKeyword(State.Keywords[0], 3, 60);
        expected.ColorComments(State.Keywords[0], 3, 60);
        editor::ColorKeyword(State, Box, 0, 3, 60);
        editor::ColorComments(State, Box, 0, 3, 60);
        ASSERT_EQ(Box.Formats(), expected.Formats) << text;
    }
}

}  // namespace
