#include <filesystem>

#include "drill/Drill.h"

// Options that come back in what a run leaves: frmSimulator ("Simulator Options"), frmVhdl ("VHDL Options").

TEST_P(Drill, AppendsVectorsInPlaceOfAListing) {
    Write("A.PLD", gate);
    Write("A.SI", gateHeader + "ORDER: A, B, Y;\r\nVECTORS:\r\n01L\r\n11H\r\n");
    Start();
    Open("A.PLD");
    Key("F9");
    AcknowledgeRun();
    Menu({"&Options", "&Simulator"});
    WaitWindow("Simulator Options");
    Click("Listing File");
    Click("Append Vectors");
    Click("OK");
    WaitGone("Simulator Options");
    Key("F7");
    AcknowledgeRun();
    Require(Read("A.SO").find("ORDER: A, B, Y;") == std::string::npos, "no listing in\n" + Read("A.SO"));
    const std::string vectors = "QV2*\r\nV0001 N01NNNNNNNNNNNNNNNLN*\r\nV0002 N11NNNNNNNNNNNNNNNHN*\r\n";
    Require(Read("A.JED").find(vectors) != std::string::npos, "the vectors in\n" + Read("A.JED"));
}

TEST_P(Drill, HandsTheVhdlOptionsOver) {
    const std::string tool = ".place/Korvane/Utility/VHDLTesk";  // leaves what follows the design's name
    Write(tool, "#!/bin/sh\nprintf %s \"${*##*.VHD}\" > \"$0.flags\"\n");
    std::filesystem::permissions(PathOf(tool), std::filesystem::perms::owner_all);
    Write("A.VHD", "entity a is end;\r\n");
    Start();
    Open("A.VHD");
    Menu({"&Options", "&VHDL"});
    WaitWindow("VHDL Options");
    Click("Use Pinnodes");
    Key("Tab", 4);
    Key("Up");
    Key("Tab");
    Type("12");
    Key("Tab");
    Key("Up", 2);
    Click("Debug");
    Click("Always Close");
    Click("Apply");
    Click("Create Log File");
    Click("OK");
    WaitGone("VHDL Options");
    Menu({"&Run", "VHDL &Analysis"});
    ExpectFile(tool + ".flags", "-a-h-p17-s12-z5-g-x2");
}
