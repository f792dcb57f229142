#include "drill/Drill.h"

// frmExport ("Export Files").

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
