#include "editor/PrintDocument.h"

#include "editor/HighlightFixture.h"

using PrintDocument = HighlightFixture;

TEST_F(PrintDocument, PrintsWhatWasChosen) {
    constexpr int asked = 264, selection = 1, noSelection = 4;
    const struct {
        std::int32_t Length;  // of the selection, at 2
        std::optional<int> Choice;
        int Asked;
        std::string Printed, After;
    } rows[] = {
        {3, asked | selection, asked, "cde", "2+3"},
        {3, asked, asked, "", "0+0"},
        {0, asked | noSelection, asked | noSelection, "", "0+0"},
        {3, std::nullopt, asked, "nothing", "2+3"},
    };
    for (const auto& row : rows) {
        Box.SetText("abcdef");
        Box.SetSelStart(2);
        Box.SetSelLength(row.Length);
        Hall.Panels.clear();
        Desk.Paper.Choices = {row.Choice};
        std::string printed = "nothing";
        Desk.Paper.OnPrint = [&](platform::RichTextBox& text) {
            EXPECT_EQ(Hall.Panels[1], "Printing...");
            EXPECT_TRUE(Desk.Desk.Hourglass);
            printed = text.SelText();
        };
        editor::FilePrint(App, Doc);
        EXPECT_EQ(Desk.Paper.Asked.back(), row.Asked);
        EXPECT_EQ(printed, row.Printed);
        EXPECT_EQ(std::to_string(Box.SelStart()) + "+" + std::to_string(Box.SelLength()), row.After);
        EXPECT_EQ(Hall.Panels[1], "");
        EXPECT_FALSE(Desk.Desk.Hourglass);
    }
    Desk.Paper.There = 0;
    editor::FilePrint(App, Doc);
    EXPECT_EQ(Desk.Boxes.LastText(), "A printer must be defined to print.");
    EXPECT_EQ(Desk.Paper.Asked.size(), std::size(rows));
}
