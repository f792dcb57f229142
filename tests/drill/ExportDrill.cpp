#include <filesystem>

#include "drill/Drill.h"

// frmExport ("Export Files"), and the pins of a fit carried back into the design by backpin.exe.

TEST_P(Drill, ExportsWhatIsCheckedAndStaysAtThat) {
    StartWith("A.PLD", gate);
    MenuByMouse({"&File", "&Export "}, "Export Files");
    ClickEach({"EDIF", "PLA"});
    Key("Return");
    Answer("Run KORVANE Compiler?", "KORVANE is about to create the export files. Do you want to continue",
           "&Yes");
    AcknowledgeRun();
    CompiledByHand("A", "bt", "virtual");
    for (const char* name : {"A.EDF", "A.PLA"}) ExpectFile(name, Read(std::string("byhand/") + name));
    ExpectSeen("A.EDF", In::Messages);  // in the tree of the project
    RunAndWait();
    ExpectSeen("[4000tc] Written: A.PLA, A.EDF for G16V8", In::Messages);
}

TEST_P(Drill, FloatsThePinsAndAssignsThemAgain) {
    const std::string name = "My work/COUNT8.PLD";
    const std::string text = Read(".place/Examples/COUNT8.PLD");
    std::string floated = text;
    for (const char* pins : {" 1", " [2..9]", " 10", " 11", " 13", " [15..22]", " 23"})
        floated.erase(floated.find(std::string("PIN") + pins) + 3, std::string(pins).size());
    StartWith(name, text);
    Type("Junk");
    ExpectSeen("JunkName", In::Document);
    Menu({"&Utilities", "&BackPin", "&Assign Pins And Pinnodes"});  // fails: there is no fit yet
    ExpectUnseen("JunkName", In::Document);
    SaveAndExpect(name, text);
    RunAndWait();
    Menu({"&Utilities", "&BackPin", "&Float All Pins and Nodes"});
    ExpectSeen("PIN = [D7..0]", In::Document);
    SaveAndExpect(name, floated);
    KeyFor("Device Selection", "ctrl+d");  // a command line with a device
    ClickEach({"Lattice Semiconductor", "GAL22V10", "Device In File"});
    ClickAway("Device Selection", "&Ok");
    MenuByMouse({"&Utilities", "&BackPin", "&Assign Pins And Pinnodes"});
    ExpectSeen("PIN [2..9] = [D7..0]", In::Document);
    SaveAndExpect(name, text);
    std::filesystem::remove(PathOf(".place/Korvane/Utility/backpin.exe"));
    Menu({"&Utilities", "&BackPin", "Assign &Pins Only"});
    Answer("Korvane", "Unable to execute  C:", "OK");
    SaveAndExpect(name, text);
}
