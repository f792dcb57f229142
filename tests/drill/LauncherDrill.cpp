#include "drill/Drill.h"

// The launcher, as the desktop's menu and the file manager start it.

TEST_P(Drill, OpensFilesFromOutside) {
    const std::string tree = ".home/data/korvane";
    Write("A.PLD", gate);
    Write("B.TXT", "to be opened later\r\n");
    Launch({PathOf("A.PLD")});  // starts the program in a new tree
    FindMain();
    ExpectActive(CaptionOf("A.PLD"));
    RunAndWait();
    ExpectFile("A.JED", CompiledByHand("A", "jasxlm4"));

    // A dialog stays the user's: the file waits for its end.
    KeyFor("Find Text", "ctrl+f");
    HandOver("B.TXT");
    Key("Escape");
    ExpectActive(CaptionOf("B.TXT"));
    HandOver("A.PLD");  // open already
    ExpectActive(CaptionOf("A.PLD"));

    // What the program keeps beside itself is the user's, and not the installation's.
    Key("alt+F4");
    ExpectEnd();
    Require(!Read(tree + "/Korvane/KORVANE.CFG").empty(), "the configuration is not in the user's tree");
    ExpectNoFile(".place/Korvane/KORVANE.CFG");
}
