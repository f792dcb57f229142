#include "editor/FindText.h"

#include "editor/HighlightFixture.h"

namespace {

constexpr int limit = 32767;

struct FindText : HighlightFixture {
    editor::SearchValues Values;

    // What is selected, as "start+length", and what was said.
    std::string Seen() {
        return std::to_string(Box.SelStart()) + "+" + std::to_string(Box.SelLength()) + "|" +
               Desk.Boxes.TakeTexts();
    }
    std::string First() { return editor::FindFirst(App, Doc, Values), Seen(); }
    std::string Next() { return editor::FindNext(App, Doc, Values), Seen(); }
    // The text afterwards, and what was said or asked.
    std::string Replaced(const std::string& text, const std::string& what, const std::string& by,
                         int options = 0) {
        Box.SetText(text);
        Values.SearchText = what;
        Values.ReplaceText = by;
        Values.SearchOptions = options;
        editor::Replace(App, Doc, Values);
        std::string result = Box.Text();
        for (const auto& box : Desk.Boxes.Shown) {
            const bool asks = box.Choice == platform::Buttons::YesNo;
            EXPECT_EQ(box.Title, asks ? "Search and Replace" : "");
            EXPECT_TRUE(!asks || box.Text == "Do you want to replace this occurence?");
            result += "|" + (asks ? "?" : box.Text);
        }
        Desk.Boxes.Shown.clear();
        EXPECT_EQ(Box.Hidden, 0);
        EXPECT_FALSE(Desk.Desk.Hourglass);
        return result;
    }
};

}  // namespace

TEST_F(FindText, FindsFromTheTopInAnyCase) {
    Box.SetText("one TWO two\r\ntwotwo");
    Box.SetSelStart(9);
    Values.SearchText = "two";
    Values.SearchOptions = platform::rtfMatchCase | platform::rtfWholeWord;
    Values.SearchDirection = Values.SearchScope = Values.SearchOrigin = 1;
    EXPECT_EQ(First(), "4+3|");
    EXPECT_EQ(Next(), "8+3|");
    EXPECT_EQ(Next(), "13+3|");
    EXPECT_EQ(Next(), "17+0|Search string two not found|");  // that at 16 follows directly
    EXPECT_EQ(Next(), "18+0|Search string two not found|");
    EXPECT_EQ(First(), "4+3|");
}

TEST_F(FindText, SaysWhatIsNotThere) {
    EXPECT_EQ(Next(), "0+0|Search string  not found|");
    Values.SearchText = "x";
    EXPECT_EQ(First(), "0+0|Search string x not found|");
    Box.SetText("abc");
    EXPECT_EQ(First(), "0+0|Search string x not found|");
    EXPECT_EQ(Next(), "1+0|Search string x not found|");
}

TEST_F(FindText, ReplacesOneAfterTheQuestion) {
    using platform::Answer;
    Desk.Boxes.Answers = {Answer::Yes, Answer::No};
    EXPECT_EQ(Replaced("Aa a\r\n", "a", "xy", platform::rtfMatchCase), "Axy a\r\n|?");
    EXPECT_EQ(Replaced("Aa a", "a", "xy"), "Aa a|?");
    EXPECT_EQ(Seen(), "0+1|");  // what is asked about is selected
    EXPECT_EQ(Replaced("Aa a", "a", "", platform::rtfMatchCase | platform::rtfWholeWord), "Aa |?");
    EXPECT_EQ(Replaced("Aa", "b", ""), "Aa|Search string b not found");
    EXPECT_EQ(Replaced("", "b", ""), "|Search string b not found");
}

TEST_F(FindText, ReplacesAll) {
    Values.ReplaceChangeAll = true;
    const struct {
        const char *Text, *What, *By;
        int Options;
        const char* Result;
    } cases[] = {
        {"a\r\nA a.", "a", "c", 0, "c\r\nc c.|Search string a replaced with c 3 times"},
        {"a\r\nA a", "A", "", platform::rtfMatchCase, "a\r\n a|Search string A replaced with  1 times"},
        {"ab a", "a", "c", platform::rtfWholeWord, "ab c|Search string a replaced with c 1 times"},
        {"a", "x", "y", 0, "a|Search string x replaced with y 0 times"},
        {"aab", "ab", "b", 0, "b|Search string ab replaced with b 2 times"},  // what it makes counts too
        {"a-a-a", "a", "1234", 0, "1234-a-a|Search string a replaced with 1234 1 times"},  // past the end
        {"", "a", "b", 0, ""},
    };
    for (const auto& row : cases) EXPECT_EQ(Replaced(row.Text, row.What, row.By, row.Options), row.Result);

    Values.PromptOnReplace = true;
    Desk.Boxes.Answers = {platform::Answer::Yes, platform::Answer::No, platform::Answer::No};
    EXPECT_EQ(Replaced("a a", "a", "b"), "b b|?|?|?|?|Search string a replaced with b 2 times");

    Values.ReplaceCancelled = true;
    EXPECT_EQ(Replaced("a", "a", "b"), "a");
}

TEST_F(FindText, ReplacingLeavesNoColours) {
    Box.SetText("$abc x $abc");
    Box.Format(0, 4, {'r', true, false, false});
    ASSERT_EQ(Box.Picture(), "rrrr.......");
    Values.SearchText = "x";
    editor::Replace(App, Doc, Values);
    EXPECT_EQ(Box.Picture(), "..........");
    EXPECT_EQ(Hall.Calls.size(), 0U);
}

TEST_F(FindText, StopsBeyondSixteenBits) {
    const auto stops = [&](void (*command)(session::App&, session::Document&, const editor::SearchValues&)) {
        return doubles::ErrorOf([&] { command(App, Doc, Values); }) == 6 && Desk.Boxes.Shown.empty() &&
               Box.Hidden == 0;
    };
    Values.SearchText = "b";
    Box.SetText(std::string(limit - 1, 'a') + "b");
    EXPECT_EQ(First(), "32766+1|");
    EXPECT_TRUE(stops(editor::FindNext));  // its start
    Box.SetText("b" + std::string(limit, 'a'));
    for (const auto command : {editor::FindFirst, editor::FindNext, editor::Replace}) {
        EXPECT_TRUE(stops(command));
    }
    Values.ReplaceChangeAll = true;
    EXPECT_TRUE(stops(editor::Replace));
    Box.SetText("b");
    Values.ReplaceText = "bb";
    EXPECT_TRUE(stops(editor::Replace));  // its count
    EXPECT_EQ(Box.TextLength(), 1 + limit + 1);
}
