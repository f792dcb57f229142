#include "drill/Drill.h"

// frmTable ("Create Table")

TEST_P(Drill, PastesATableUnlessItIsCancelled) {
    InTextAndDesign("Y = A;\r\n", [&](const std::string& name) {
        SetClipboard("Z");
        Key("ctrl+a");
        MenuByMouse({"&Edit", "Insert T&able"}, "Create Table");
        Type("a\t2\tb\t4\t3\t");
        ClickAway("Create Table", "Cancel");
        Key("ctrl+v Right");
        Type("X = B;\n");
        SaveAndExpect(name, "Y = A;\r\nX = B;\r\n");
        SetClipboard("Z");
        Key("ctrl+End");
        Menu({"&Edit", "Insert T&able"}, "Create Table");
        Type("[a1..0]\t2\tb\t4\t0\t");
        Answer("Korvane", "The number of rows must be a positive value.", "OK");
        Type("3\t11");  // over the selected text
        Key("Down");    // 9 points, as messages have
        Click("Decreasing Value");
        Click("2h", In::Messages);
        WaitWindow("Korvane");
        Type("3\n");
        WaitWindow("Create Table");
        ExpectSeen("3h", In::Messages);
        ClickAway("Create Table");
        SaveAndExpect(
            name,
            "Y = A;\r\nX = B;\r\nTABLE [a1..0] => b {\r\n    'b'11 => 'b'0000;\r\n    'b'01 => 'b'0000;\r\n"
            "    'b'00 => 'b'0000;}\r\n");
    });
}
