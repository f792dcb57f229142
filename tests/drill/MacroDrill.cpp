#include "drill/Drill.h"

// frmMacroDef, frmMacroCreate, frmMacroRef, and the macros of the toolbar.

TEST_P(Drill, IncludesALibraryFileAndCreatesAMacro) {
    StartWith("A.PLD", "");
    Menu({"&Edit", "Insert TESK Macro &Definition"}, "Insert Macro Definition");
    Type("co");  // of the files
    ExpectSeen("COUNTER");
    ClickAway("Insert Macro Definition");
    SaveAndExpect("A.PLD", "$INCLUDE COUNTER.MAC\r\n");
    ExpectFile("COUNTER.MAC", Read(".place/MACRO/COUNTER.MAC"));
    Menu({"&Edit", "Insert TESK Macro &Definition"}, "Insert Macro Definition");
    Key("alt+n");
    for (const char* answer : {"INV\n", "2\n", "y\n", "a\n"}) {
        WaitWindow("New Tesk Macro");
        Type(answer);
    }
    WaitWindow("Create Tesk Macro");
    Type("y = !a ;");
    ClickFor("New Tesk Macro", "OK");
    Type("MINE\n");
    WaitGone("Create Tesk Macro");
    ExpectFile(".place/MACRO/MINE.MAC", " \r\n$MACRO INV y a\r\ny = !a ;\r\n\r\n\r\n$MEND\r\n");
    KeyAway("Insert Macro Definition");
    SaveAndExpect("A.PLD", "$INCLUDE COUNTER.MAC\r\n");
}

TEST_P(Drill, RefersToAMacroWithTheSymbolsOfTheDesign) {
    const std::string design = "PIN 1 = CLK ;\r\n$MACRO INV y a\r\ny = !a ;\r\n$MEND\r\n";
    StartWith("A.PLD", design);
    Key("ctrl+End");
    KeyFor("Insert Macro Reference", "ctrl+i");
    Key("Down");  // the first of the macros
    Click("a:NC");
    Key("Tab");
    Type("CLK");
    ExpectSeen("a:CLK");
    KeyAway("Insert Macro Reference", "Return");
    SaveAndExpect("A.PLD", design + "INV NC CLK;\r\n");
}

TEST_P(Drill, TypesATextAndPlaysKeysByTheToolbar) {
    WriteSettings("CustUtil0P=\"MACRO*\"\nCustUtil0N=\"Slot\"\nCustUtil0M=number:-1\nCustUtil0T=number:-1\n");
    InTextAndDesign("Y = A;\r\n", [&](const std::string& name) {
        Key("shift+End");
        MenuByMouse({"&Utilities", "Slot"});
        AnswerInput("Macro", "Text");
        Key("ctrl+End");
        Button("macro");
        SaveAndExpect(name, "Y = A;\r\nY = A;");
        Menu({"&Utilities", "Clear &Macro"});
        Answer("Korvane", "From the Utilities menu, select the macro you wish to clear.", "OK");
        MenuByMouse({"&Utilities", "Text"});
        Answer("Korvane", "Macro cleared.", "OK");
        MenuByMouse({"&Utilities", "Text"}, "Macro");
        Type("Slot\n");
        Answer("Korvane", "Recording keystroke macro, press CTRL+BREAK to end recording.", "OK");
        Type("\nz");
        Key("ctrl+f");
        AnswerInput("Find Text", "A");
        Key("ctrl+End ctrl+Pause");
        Button("macro");
        ExpectSeen("Line:4 Col:1");  // where the playback ends
        SaveAndExpect(name, "Y = A;\r\nY = A;\r\nz\r\nz");
        Menu({"&Utilities", "Clear &Macro"});
        Answer("Korvane", "From the Utilities menu, select the macro you wish to clear.", "OK");
        MenuByMouse({"&Utilities", "Slot"});
        Answer("Korvane", "Macro cleared.", "OK");
    });
}
