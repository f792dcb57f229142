#include "drill/Drill.h"

// frmFindText, frmReplace

TEST_P(Drill, FindsTypesOverAndReplacesAll) {
    InTextAndDesign("Y = a & B;\r\nZ = A # B;\r\nX = A;\r\n", [&](const std::string& name) {
        Key("ctrl+f");
        AnswerInput("Find Text", "A");
        Key("F3");
        Type("C");
        Key("Left F3");
        Type("D");
        Key("F3");
        Answer("Korvane", "Search string A not found", "OK");
        KeyFor("Replace Text", "ctrl+r");
        Type("b\tE!");
        Key("alt+a");
        Answer("Korvane", "Search string b replaced with E! 2 times", "OK");
        SaveAndExpect(name, "Y = a & E!;\r\nZ = C # E!;\r\nX = D;\r\n");
    });
}
