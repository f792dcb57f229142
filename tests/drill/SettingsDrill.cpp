#include "drill/Drill.h"

// frmKorvane ("KORVANE Settings") and frmUtility ("Add Utility").

namespace {

constexpr const char* settings = ".home/config/korvane/settings.ini";

// A text as the configuration file holds it.
std::string Item(const std::string& text) {
    return static_cast<char>(text.size()) + std::string(1, '\0') + text;
}

void OpenSettings(drill::Desk& desk, const std::string& tab) {
    desk.Menu({"&Options", "&KORVANE"});
    desk.WaitWindow("KORVANE Settings");
    desk.Click(tab);
}

void Close(drill::Desk& desk, const std::string& button) {
    desk.Click(button);
    desk.WaitGone("KORVANE Settings");
}

void ExitAndExpect(drill::Desk& desk, const std::string& file, const std::vector<std::string>& parts) {
    desk.Menu({"&File", "E&xit"});
    desk.ExpectEnd();
    for (const std::string& part : parts)
        desk.Require(desk.Read(file).find(part) != std::string::npos, part + " in\n" + desk.Read(file));
}

}  // namespace

TEST_P(Drill, KeepsColoursAndANewKeyword) {
    Start();
    NewText();
    OpenSettings(*this, "Syntax");
    Click("$DEFINE");
    Type("PIN");
    ExpectSeen("Sample PIN");
    Key("Tab", 3 + 13);  // past the buttons, to light red
    Key("space");
    Click("&Apply");
    Click("&Add");
    AnswerInput("Add Keyword", "MyWord");
    Close(*this, "OK");
    ExitAndExpect(*this, ".place/Korvane/KORVANE.CFG",
                  {Item("PIN") + Item("255"), Item("MyWord") + Item("0") + Item("") + Item("0")});
}

TEST_P(Drill, StartsAToolOfItsOwn) {
    Copy(DRILL_TOOL, "MYTOOL.EXE");
    Start();
    NewText();
    OpenSettings(*this, "Tools");
    Click("&Add Tool");
    WaitWindow("Add Utility");
    Click("&Browse ...");
    AnswerFile("Select Program", PathOf("MYTOOL.EXE"));
    WaitGone("Select Program");
    Click("&OK");
    WaitGone("Add Utility");
    ExpectSeen("MYTOOL");
    Key("Tab", 4);  // past the other buttons
    Key("space");
    Key("Tab");
    Key("space");
    Close(*this, "OK");
    for (const bool byMenu : {false, true}) {
        byMenu ? MenuByMouse({"&Utilities", "MYTOOL"}) : Button("custom-tool");
        WaitWindow("MYTOOL");
        Key("alt+F4");
        WaitGone("MYTOOL");
    }
    ExitAndExpect(*this, settings, {"CustUtil0N=\"MYTOOL\"\nCustUtil0M=number:-1\nCustUtil0T=number:-1"});
}

TEST_P(Drill, ChangesTheFontAndNothingAfterCancel) {
    Start();
    NewText();
    OpenSettings(*this, "Fonts");
    Click("Font:");
    WaitWindow("Font");
    Click("Bold");
    Click("OK");
    WaitGone("Font");
    Close(*this, "OK");
    OpenSettings(*this, "Tools");
    Click("&Macro");
    Click("General");
    Click("Always update symbols when adding macro");
    Click("Fonts");
    Click("Font:");
    WaitWindow("Font");
    Key("Escape");
    WaitGone("Font");
    Close(*this, "Cancel");
    ExitAndExpect(*this, settings, {"EFontBold=number:-1", "AutoSymbolUpdate=number:0", "CustUtil0P=\"\""});
}
