#include "drill/Drill.h"

// Files: save, close, exit, and the boxes on the way.

TEST_P(Drill, SavesUnderAnotherName) {
    StartWith("A.TXT", "one\r\n");
    Type("new ");
    Menu({"&File", "Save &As"}, "Save As");
    Type("B.PLD\n");
    ExpectActive(CaptionOf("B.PLD"));
    ExpectFile("B.PLD", "new one\r\n");
    ExpectFile("A.TXT", "one\r\n");
    Type("very ");
    SaveAndExpect("B.PLD", "very new one\r\n");
}

TEST_P(Drill, AsksBeforeAFileIsReplaced) {
    Write("B.TXT", "old\r\n");
    StartWithText();
    ExpectActive("Untitled 1");
    Type("new");
    Key("ctrl+s");
    AnswerFile("Save As", PathOf("B.TXT"));
    Answer("Save As", "Do you want to replace it?", "&No");
    ExpectFile("B.TXT", "old\r\n");
    WaitWindow("Save As");
    Key("Return");
    Answer("Save As", "Do you want to replace it?", "&Yes");
    ExpectFile("B.TXT", "new");
    ExpectActive(CaptionOf("B.TXT"));
}

TEST_P(Drill, ClosesWithEachAnswer) {
    const std::string question = "Save changes to " + CaptionOf("A.TXT") + "?";
    StartWith("A.TXT", "one\r\n");
    Type("x");
    Menu({"&File", "&Close"});
    Answer("Save File", question, "Cancel");
    ExpectActive(CaptionOf("A.TXT"));
    Key("ctrl+F4");
    Answer("Save File", question, "&No");
    ExpectUnseen(CaptionOf("A.TXT"));
    ExpectFile("A.TXT", "one\r\n");
    Open("A.TXT");
    Type("y");
    Menu({"&File", "&Close"}, "Save File");
    Key("alt+y");
    ExpectFile("A.TXT", "yone\r\n");
    WaitGone("Save File");
    Open("A.TXT");
    Menu({"&File", "&Close"});
    ExpectButton("save", false);  // disabled: nothing was asked, no document is left
}

TEST_P(Drill, KeepsAnUntitledTextThatCannotBeSaved) {
    StartWithText();
    Type("all my work");
    Menu({"&File", "&Close"});
    Answer("Save File", "Save changes to Untitled 1?", "&Yes");
    AnswerFile("Save As", "/proc/A.TXT");
    WaitWindow("Save File Error");
    KeyAway("Save File Error", "Return");
    ExpectActive("Untitled 1");
    Key("ctrl+s");
    AnswerFile("Save As", PathOf("A.TXT"));
    WaitGone("Save As");
    ExpectFile("A.TXT", "all my work");
    NewText();
    Type("given up");
    Key("ctrl+F4");
    Answer("Save File", "Save changes to Untitled 2?", "&Yes");
    WaitWindow("Save As");
    Key("Escape");
    ExpectUnseen("Untitled 2", In::Title);
}

TEST_P(Drill, ExitsWithEachAnswer) {
    const std::string names[] = {"A.TXT", "B.TXT", "C.PLD"};
    const auto question = [&](const std::string& name) { return "Save changes to " + CaptionOf(name) + "?"; };
    for (const std::string& name : names) Write(name, "one\r\n");
    Start();
    for (const std::string& name : names) {
        Open(name);
        Type("x");
    }
    Key("alt+F4");  // the active document is asked first
    Answer("Save File", question("C.PLD"), "&No");
    Answer("Save File", question("A.TXT"), "Cancel");
    ExpectActive(CaptionOf("C.PLD"));
    Menu({"&File", "E&xit"});  // all is as before: open and to be saved
    Answer("Save File", question("C.PLD"), "&Yes");
    Answer("Save File", question("A.TXT"), "Cancel");
    ExpectFile("C.PLD", "xone\r\n");
    Type("y");  // it is open still
    Key("alt+F4");
    Answer("Save File", question("C.PLD"), "&Yes");
    Answer("Save File", question("A.TXT"), "&Yes");
    Answer("Save File", question("B.TXT"), "&No");
    ExpectEnd();
    ExpectFile("A.TXT", "xone\r\n");
    ExpectFile("B.TXT", "one\r\n");
    ExpectFile("C.PLD", "xyone\r\n");
}

TEST_P(Drill, SavesAllAndFindsThemAgain) {
    for (const char* name : {"A.TXT", "B.TXT"}) Write(name, "one\r\n");
    Start();
    for (const char* name : {"A.TXT", "B.TXT"}) {
        Open(name);
        Type("x");
    }
    Menu({"&File", "Save A&ll"});
    for (const char* name : {"A.TXT", "B.TXT"}) ExpectFile(name, "xone\r\n");
    Key("alt+F4");
    ExpectEnd();
    Start();
    MenuByMouse({"&File", CaptionOf("A.TXT")});
    ExpectActive(CaptionOf("A.TXT"));
}
