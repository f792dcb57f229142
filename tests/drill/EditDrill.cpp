#include "drill/Drill.h"

// Texts and what is done to them: frmDocument.

namespace {

const std::string text =
    "Name Gate;\r\n"
    "PIN 1 = A; /* first */\r\n"
    "PIN 2 = B;\r\n"
    "Y = A & B;\r\n";

}  // namespace

TEST_P(Drill, CopiesByKeysPastesAndTypesAtTheEnd) {
    InTextAndDesign(text, [&](const std::string& name) {
        Key("shift+Right", 4);
        Key("ctrl+c ctrl+End ctrl+v ctrl+v");
        Type("/* A{1} */\nZ=!B");
        SaveAndExpect(name, text + "NameName/* A{1} */\r\nZ=!B");
        ExpectClipboard("Name");
    });
}

TEST_P(Drill, CutsByKeysAndPastesInTheMiddle) {
    InTextAndDesign(text, [&](const std::string& name) {
        Key("Down Down shift+End ctrl+x Up End ctrl+v");
        SaveAndExpect(name, "Name Gate;\r\nPIN 1 = A; /* first */PIN 2 = B;\r\n\r\nY = A & B;\r\n");
        ExpectClipboard("PIN 2 = B;");
    });
}

TEST_P(Drill, CutsByMenuAndPastesOverASelection) {
    InTextAndDesign(text, [&](const std::string& name) {
        DoubleClick("Gate");
        MenuByMouse({"&Edit", "&Copy"});
        PopUp("Gate", "Cu&t");
        ExpectClipboard("Gate");
        DragOver("first");
        Menu({"&Edit", "&Paste"});
        SaveAndExpect(name, "Name ;\r\nPIN 1 = A; /* Gate */\r\nPIN 2 = B;\r\nY = A & B;\r\n");
    });
}

TEST_P(Drill, CutsCopiesAndPastesByToolbar) {
    InTextAndDesign(text, [&](const std::string& name) {
        DragOver("PIN 2");
        Button("copy");
        ExpectClipboard("PIN 2");
        Click("Y = A", In::Document);
        Key("Home");
        Button("paste");
        DragOver("Name");
        Button("cut");
        ExpectClipboard("Name");
        Key("ctrl+End");
        Button("paste");
        Button("save");
        ExpectFile(name, " Gate;\r\nPIN 1 = A; /* first */\r\nPIN 2 = B;\r\nPIN 2Y = A & B;\r\nName");
    });
}

TEST_P(Drill, SelectsAllAndReplacesIt) {
    InTextAndDesign(text, [&](const std::string& name) {
        Key("ctrl+a ctrl+c ctrl+x");
        Type("/* ");
        Key("ctrl+v");
        Type("*/");
        SaveAndExpect(name, "/* " + text + "*/");
        ExpectClipboard(text);
    });
}

TEST_P(Drill, CarriesTextBetweenDocuments) {
    Write("B.TXT", "one two\r\n");
    StartWith("A.PLD", text);
    Open("B.TXT");
    DoubleClick("two");
    Key("ctrl+x");
    MenuByMouse({"&Window", CaptionOf("A.PLD")});
    ExpectActive(CaptionOf("A.PLD"));
    DoubleClick("Gate");
    Key("ctrl+v");
    SaveAndExpect("A.PLD", "Name two" + text.substr(9));
    Key("ctrl+Home shift+Down ctrl+c ctrl+Tab");
    ExpectActive(CaptionOf("B.TXT"));
    Key("ctrl+v");
    SaveAndExpect("B.TXT", "one Name two;\r\n\r\n");
}

TEST_P(Drill, TradesTextWithAnotherProgram) {
    InTextAndDesign(text, [&](const std::string& name) {
        SetClipboard("Grüße, Ωμέγα 漢字 🙂\nline two\n");
        Key("Down ctrl+v shift+Up ctrl+c");
        ExpectClipboard("line two\r\n");
        SaveAndExpect(name,
                      "Name Gate;\r\nGrüße, Ωμέγα 漢字 🙂\r\nline two\r\n" + text.substr(12));
    });
}

TEST_P(Drill, TypesWhatAGermanKeyboardHas) {
    UseKeyboard("de");
    InTextAndDesign(text, [&](const std::string& name) {
        Type("/*ä5µ€{[\\]}@ß*/");
        SaveAndExpect(name, "/*ä5µ€{[\\]}@ß*/" + text);
    });
}

TEST_P(Drill, UndoesToTheStart) {
    InTextAndDesign(text, [&](const std::string& name) {
        Type("new ");
        Key("ctrl+Delete shift+End ctrl+x ctrl+End ctrl+v Return");
        SaveAndExpect(name, "new \r\n" + text.substr(12) + "Gate;\r\n");
        for (int i = 0; i < 5; ++i) Key("ctrl+z", 2);
        Menu({"&Edit", "&Undo"});
        SaveAndExpect(name, text);
    });
}

TEST_P(Drill, Overtypes) {
    InTextAndDesign(text, [&](const std::string& name) {
        Key("Insert");
        Type("NAME");
        ExpectUnseen("INS");
        Key("Insert");
        Type("S");
        ExpectSeen("INS");
        SaveAndExpect(name, "NAMES" + text.substr(4));
    });
}

TEST_P(Drill, TypesSixtyLinesAtOnce) {
    std::string lines;
    for (int i = 10; i < 70; ++i) lines += "Q" + std::to_string(i) + ".d = Q & {x} # /* y */ !A;\n";
    std::string written;
    for (const char c : lines) written += c == '\n' ? "\r\n" : std::string(1, c);
    InTextAndDesign(text, [&](const std::string& name) {
        Key("Down", 2);
        TypeAtOnce(lines);
        SaveAndExpect(name, text.substr(0, 36) + written + text.substr(36));
        ExpectSeen("Line:63 Col:1");
    });
}

TEST_P(Drill, DeletesLines) {
    InTextAndDesign(text, [&](const std::string& name) {
        Key("Down shift+Down Delete Down BackSpace ctrl+End shift+Up shift+Home BackSpace ctrl+BackSpace");
        SaveAndExpect(name, "Name Gate;");
    });
}

TEST_P(Drill, EditsOnAfterANewFont) {
    InTextAndDesign(text, [&](const std::string& name) {
        Key("shift+Right", 4);
        Key("ctrl+c");
        Menu({"&View", "&Font"}, "Font");
        ClickAway("Font");
        ExpectSeen("PIN 1", In::Document);  // in the font it had
        Key("ctrl+End ctrl+v");
        SaveAndExpect(name, text + "Name");
    });
}
