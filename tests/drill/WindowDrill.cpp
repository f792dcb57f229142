#include "drill/Drill.h"

// frmMain, what belongs to it, and frmSplash before it.

TEST_P(Drill, StartsAndEndsWithoutADocument) {
    Start();
    ExpectWindows({"Korvane"});  // frmSplash has gone
    ExpectSeen("Messages", In::Title);
    ExpectButton("open", true);
    ExpectButton("save", false);
    Key("Tab", 2);  // to "New design"
    Key("Return");
    WaitWindow("Design Properties");
    KeyAway("Design Properties");
    Menu({"&File", "E&xit"});
    ExpectEnd();
}

TEST_P(Drill, HidesAndShowsBarsFromTwoDocuments) {
    Write("B.TXT", "one\r\n");
    StartWith("A.TXT", "one\r\n");
    Open("B.TXT");
    ExpectSeen("INS");
    Menu({"&View", "&Toolbar"});
    Menu({"&View", "&Status Bar"});
    ExpectButton("open", false);
    ExpectUnseen("INS");
    ExpectChecked({"&View", "&Toolbar"}, false);
    Key("ctrl+Tab");
    ExpectActive(CaptionOf("A.TXT"));
    Menu({"&View", "&Toolbar"});
    MenuByMouse({"&View", "&Status Bar"});
    ExpectButton("open", true);
    ExpectSeen("INS");
}

TEST_P(Drill, ArrangesItsWindows) {
    Write("B.PLD", "one\r\n");
    StartWith("A.TXT", "one\r\n");
    Open("B.PLD");
    Menu({"&Window", "Tile &Horizontal"});
    ExpectSeen(CaptionOf("A.TXT"));
    ExpectSeen("Messages");
    MenuByMouse({"&Window", "&Auto Arrange"});
    ExpectUnseen(CaptionOf("A.TXT"));
}
