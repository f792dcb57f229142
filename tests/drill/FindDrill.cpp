#include "drill/Drill.h"

// frmFindText, frmReplace

TEST_P(Drill, FindsTypesOverAndReplacesAll) {
    InTextAndDesign("Y = a & B;\r\nZ = A # B;\r\nX = A;\r\n", [&](const std::string& name) {
        Key("ctrl+f");
        WaitWindow("Find Text");
        Type("A\n");
        WaitGone("Find Text");
        Key("F3");
        Type("C");
        Key("Left");
        Key("F3");
        Type("D");
        Key("F3");
        Answer("Korvane", "Search string A not found", "OK");
        Key("ctrl+r");
        WaitWindow("Replace Text");
        Type("b\tE!");
        Key("alt+a");
        Answer("Korvane", "Search string b replaced with E! 2 times", "OK");
        SaveAndExpect(name, "Y = a & E!;\r\nZ = C # E!;\r\nX = D;\r\n");
    });
}
