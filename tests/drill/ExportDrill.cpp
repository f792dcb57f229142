#include <filesystem>

#include "drill/Drill.h"

// frmExport ("Export Files"), and the pins of a fit carried back into the design by backpin.exe.

TEST_P(Drill, ExportsWhatIsCheckedAndStaysAtThat) {
    Write("A.PLD", gate);
    Start();
    Open("A.PLD");
    MenuByMouse({"&File", "&Export "});
    WaitWindow("Export Files");
    Click("EDIF");
    Click("PLA");
    Key("Return");
    Answer("Run KORVANE Compiler?", "KORVANE is about to create the export files. Do you want to continue",
           "&Yes");
    AcknowledgeRun();
    CompiledByHand("A", "bt", "virtual");
    for (const char* name : {"A.EDF", "A.PLA"}) ExpectFile(name, Read(std::string("byhand/") + name));
    ExpectSeen("A.EDF", In::Messages);  // in the tree of the project
    Key("F9");
    AcknowledgeRun();
    ExpectSeen("[4000tc] Written: A.PLA, A.EDF for G16V8", In::Messages);
}

TEST_P(Drill, FloatsThePinsAndAssignsThemAgain) {
    const std::string name = "My work/COUNT8.PLD";
    const std::string text = Read(".place/Examples/COUNT8.PLD");
    std::string floated = text;
    for (const char* pins : {" 1", " [2..9]", " 10", " 11", " 13", " [15..22]", " 23"})
        floated.erase(floated.find(std::string("PIN") + pins) + 3, std::string(pins).size());
    Write(name, text);
    Start();
    Open(name);
    Type("Junk");
    ExpectSeen("JunkName", In::Document);
    Menu({"&Utilities", "&BackPin", "&Assign Pins And Pinnodes"});  // fails: there is no fit yet
    ExpectUnseen("JunkName", In::Document);
    SaveAndExpect(name, text);
    Key("F9");
    AcknowledgeRun();
    Menu({"&Utilities", "&BackPin", "&Float All Pins and Nodes"});
    ExpectSeen("PIN = [D7..0]", In::Document);
    SaveAndExpect(name, floated);
    Key("ctrl+d");  // a command line with a device
    WaitWindow("Device Selection");
    Click("Lattice Semiconductor");
    Click("GAL22V10");
    Click("Device In File");
    Click("&Ok");
    WaitGone("Device Selection");
    MenuByMouse({"&Utilities", "&BackPin", "&Assign Pins And Pinnodes"});
    ExpectSeen("PIN [2..9] = [D7..0]", In::Document);
    SaveAndExpect(name, text);
    std::filesystem::remove(PathOf(".place/Korvane/Utility/backpin.exe"));
    Menu({"&Utilities", "&BackPin", "Assign &Pins Only"});
    Answer("Korvane", "Unable to execute  C:", "OK");
    SaveAndExpect(name, text);
}
