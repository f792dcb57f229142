#include "drill/Drill.h"

// frmKorvane ("KORVANE Settings") and frmUtility ("Add Utility").

namespace {

constexpr const char* settings = ".home/config/korvane/settings.ini";

// A text as the configuration file holds it.
std::string Item(const std::string& text) {
    return static_cast<char>(text.size()) + std::string(1, '\0') + text;
}

void OpenSettings(drill::Desk& desk, const std::string& tab) {
    desk.Menu({"&Options", "&KORVANE"}, "KORVANE Settings");
    desk.Click(tab);
}

void ExitAndExpect(drill::Desk& desk, const std::string& file, const std::vector<std::string>& parts) {
    desk.Menu({"&File", "E&xit"});
    desk.ExpectEnd();
    for (const std::string& part : parts) desk.ExpectPart(file, part);
}

}  // namespace

TEST_P(Drill, KeepsColoursAKeywordAndAFontAndNothingAfterCancel) {
    StartWithText();
    OpenSettings(*this, "Syntax");
    Click("$DEFINE");
    Type("PIN");
    ExpectSeen("Sample PIN");
    Key("Tab", 3 + 13);  // past the buttons, to light red
    Key("space");
    ClickEach({"&Apply", "&Add"});
    AnswerInput("Add Keyword", "MyWord");
    ClickAway("KORVANE Settings");
    OpenSettings(*this, "Fonts");
    ClickFor("Font", "Font:");
    Click("Bold");
    ClickAway("Font");
    ClickAway("KORVANE Settings");
    OpenSettings(*this, "Tools");
    ClickEach({"&Macro", "General", "Always update symbols when adding macro", "Fonts"});
    ClickFor("Font", "Font:");
    KeyAway("Font");
    ClickAway("KORVANE Settings", "Cancel");
    ExitAndExpect(*this, settings, {"EFontBold=number:-1", "AutoSymbolUpdate=number:0", "CustUtil0P=\"\""});
    ExpectPart(".place/Korvane/KORVANE.CFG", Item("PIN") + Item("255"));
    ExpectPart(".place/Korvane/KORVANE.CFG", Item("MyWord") + Item("0") + Item("") + Item("0"));
}

TEST_P(Drill, StartsAToolOfItsOwn) {
    Copy(DRILL_TOOL, "MYTOOL.EXE");
    StartWithText();
    OpenSettings(*this, "Tools");
    ClickFor("Add Utility", "&Add Tool");
    Click("&Browse ...");
    AnswerFile("Select Program", PathOf("MYTOOL.EXE"));
    WaitGone("Select Program");
    ClickAway("Add Utility", "&OK");
    ExpectSeen("MYTOOL");
    Key("Tab", 4);  // past the other buttons
    Key("space Tab space");
    ClickAway("KORVANE Settings");
    for (const bool byMenu : {false, true}) {
        byMenu ? MenuByMouse({"&Utilities", "MYTOOL"}) : Button("custom-tool");
        WaitWindow("MYTOOL");
        KeyAway("MYTOOL", "alt+F4");
    }
    ExitAndExpect(*this, settings, {"CustUtil0N=\"MYTOOL\"\nCustUtil0M=number:-1\nCustUtil0T=number:-1"});
}
