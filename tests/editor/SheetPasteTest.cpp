#include "editor/SheetPaste.h"

#include "editor/HighlightFixture.h"
#include "platform/qt/HostClipboard.h"

namespace {

std::string Begin(const std::string& name) { return "/*## Begin Schematic Sheet:" + name + "##*/"; }
std::string End(const std::string& name) { return "/*## End Schematic Sheet:" + name + "##*/"; }
std::string Sheet(const std::string& name, const std::string& lines) {
    return Begin(name) + "\r\n" + lines + "\r\n" + End(name);
}

struct SheetPaste : HighlightFixture {
    platform::qt::HostClipboard Clip;
    doubles::Desktop WithClip{Files, Clip};
    session::App Pasting{State, WithClip.Host, Hall};

    SheetPaste() { State.Keywords = {{"PIN", 'p', false, false, false}}; }

    // The text afterwards, with "|" at the caret; the number of the error instead if there is one.
    std::string Pasted(const std::string& text, std::int32_t caret, const std::string& clipboard) {
        Box.SetText(text);
        Box.SetSelStart(caret);
        Clip.SetText(clipboard);
        try {
            editor::EditPaste(Pasting, Doc);
        } catch (const base::RunTimeError& error) {
            EXPECT_EQ(Box.Text(), text);
            return std::to_string(error.Number());
        }
        EXPECT_EQ(Box.Hidden, 0);
        return Box.TextRange(0, Box.SelStart()) + "|" + Box.TextRange(Box.SelStart(), Box.TextLength());
    }
};

}  // namespace

TEST_F(SheetPaste, PutsBlocksInAndReplacesThem) {
    const std::string one = Sheet("S1", "Y = A;"), other = Sheet("S10", "Z = B;"),
                      fresh = Sheet("S1", "Y = B & C;");
    const std::string lineFeeds = Begin("S1") + "\nY = 1;\n" + End("S1") + "\n";
    const struct {
        std::string Text;
        std::int32_t Caret;
        std::string Clipboard, Result;
    } rows[] = {
        {"a\r\n", 1, "PIN\n", "aPIN\r\n|\r\n"},
        {"a\r\n", 1, one, "a" + one + "|\r\n"},
        {"mine " + one + " mine " + other, 2, fresh, "mi|ne " + fresh + " mine " + other},
        {other + " mine " + one + "\r\nend", 0, fresh, "|" + other + " mine " + fresh + "\r\nend"},
        {other + "\r\n", 0, fresh, fresh + "|" + other + "\r\n"},
        {one + ".", 0, lineFeeds, "|" + Sheet("S1", "Y = 1;") + "\r\n."},
        {one + ".", 0, "x\n" + one, "x\r\n" + one + "|" + one + "."},  // its head begins with the x
        {"x\r\n" + one + ".", 0, "x\n" + one,
         "|x\r\n" + one + "#*/\r\nY = A;\r\n" + End("S1") + "."},  // a tail without end mark
        {"a", 0, "/*## Begin Schematic Sheet:S1", "/*## Begin Schematic Sheet:S1|a"},
        {"a", 0, "/*## begin Schematic Sheet:S1##*/", "/*## begin Schematic Sheet:S1##*/|a"},
        {"PIN", 2, "", "PI|N"},
    };
    for (const auto& row : rows) EXPECT_EQ(Pasted(row.Text, row.Caret, row.Clipboard), row.Result);
}

TEST_F(SheetPaste, UnbalancedMarksLoseNothing) {
    const std::string head = Begin("S1"), fresh = Sheet("S1", "Y = B;");
    const std::string lines(40, 'x');
    EXPECT_EQ(Pasted(head + "\r\nY = A;", 0, fresh), "|" + fresh + "#*/\r\nY = A;");
    Box.SendMessage(platform::EM_UNDO);
    EXPECT_EQ(Box.Text(), head + "\r\nY = A;");
    EXPECT_EQ(Pasted(lines + head + "\r\nY = A;", 0, fresh), "380");
    EXPECT_EQ(Pasted(End("S1") + lines + head, 0, fresh), "380");
}

TEST_F(SheetPaste, ColoursSheetsAlone) {
    Pasted("", 0, "PIN");
    EXPECT_EQ(Box.Picture(), "...");
    Pasted("PIN ", 4, Sheet("S", ""));
    EXPECT_EQ(Box.Picture().substr(0, 5), "ppp..");
    Pasted("PIN " + Sheet("S", ""), 4, Sheet("S", " PIN "));
    EXPECT_EQ(Box.Picture(), "ppp." + std::string(Begin("S").size() + 3, '.') + "ppp" +
                                 std::string(End("S").size() + 3, '.'));
    Box.SetSelStart(1);
    Box.SetSelLength(1);
    Clip.SetText("x");
    editor::EditPaste(Pasting, Doc);
    EXPECT_EQ(Box.Text().substr(0, 4), "PxN ");
}
