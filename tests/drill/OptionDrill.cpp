#include <filesystem>

#include "drill/Drill.h"

// Options that come back in what a run leaves: frmSimulator ("Simulator Options"), frmVhdl ("VHDL Options").

TEST_P(Drill, AppendsVectorsInPlaceOfAListing) {
    Write("A.SI", gateHeader + "ORDER: A, B, Y;\r\nVECTORS:\r\n01L\r\n11H\r\n");
    StartWith("A.PLD", gate);
    RunAndWait();
    Menu({"&Options", "&Simulator"}, "Simulator Options");
    ClickEach({"Listing File", "Append Vectors"});
    ClickAway("Simulator Options");
    RunAndWait("F7");
    Require(Read("A.SO").find("ORDER: A, B, Y;") == std::string::npos, "no listing in\n" + Read("A.SO"));
    const std::string vectors = "QV2*\r\nV0001 N01NNNNNNNNNNNNNNNLN*\r\nV0002 N11NNNNNNNNNNNNNNNHN*\r\n";
    ExpectPart("A.JED", vectors);
}

TEST_P(Drill, HandsTheVhdlOptionsOver) {
    const std::string tool = ".place/Korvane/Utility/VHDLTesk";  // leaves what follows the design's name
    Write(tool, "#!/bin/sh\nprintf %s \"${*##*.VHD}\" > \"$0.flags\"\n");
    std::filesystem::permissions(PathOf(tool), std::filesystem::perms::owner_all);
    StartWith("A.VHD", "entity a is end;\r\n");
    Menu({"&Options", "&VHDL"}, "VHDL Options");
    Click("Use Pinnodes");
    Key("Tab", 4);
    Key("Up Tab");
    Type("12");
    Key("Tab Up Up");
    ClickEach({"Debug", "Always Close", "Apply", "Create Log File"});
    ClickAway("VHDL Options");
    Menu({"&Run", "VHDL &Analysis"});
    ExpectFile(tool + ".flags", "-a-h-p17-s12-z5-g-x2");
}
