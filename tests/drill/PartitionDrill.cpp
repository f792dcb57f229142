#include "drill/Drill.h"

// A design of sixteen outputs, two devices full.
namespace {

const std::string wide = gateHeader +
                         "PIN = [A7..0];\r\nPIN = [Y15..0];\r\n"
                         "[Y15..8] = [A7..0] & A0;\r\n[Y7..0] = [A7..0] # A1;\r\n";

}  // namespace

// frmZrxParams ("Zonerex Fitting Parameters"), frmZonerex ("Zonerex").
TEST_P(Drill, PartitionsADesign) {
    Write("A.PLD", wide);
    Start();
    Open("A.PLD");
    Key("ctrl+F9");
    AcknowledgeRun();
    Menu({"&Utilities", "&Zonerex", "&Setup Zonerex"});
    WaitWindow("Zonerex Fitting Parameters");
    Click("Files");
    Click("Generate a text solution list");
    Click("Devices");
    Click("G16V8A");
    Click("OK");
    WaitGone("Zonerex Fitting Parameters");
    ExpectFile(".place/Korvane/ZrxPart/TEMP.DEV", "G16V8A\r\n");
    MenuByMouse({"&Utilities", "&Zonerex", "&Run Zonerex"});
    WaitWindow("Zonerex");
    Click("Find Solutions");
    Click("Fit Selection");  // enabled once there are solutions
    ExpectFile(".place/Korvane/ZrxPart/solution.slf", "G16V8A*2\r\n");
    ExpectSeen("Written: A_2.PLD");
    Key("Escape");
    WaitGone("Zonerex");
    for (const std::string name : {"A_1", "A_2"}) {
        Open(name + ".PLD");
        Key("F9");
        Answer("Project", "The current PLD file is not part of the current project.", "&Yes");
        AcknowledgeRun();
        ExpectFile(name + ".JED", CompiledByHand(name, "jaxlbm4"));
        Key("ctrl+F4");
    }
}

// frmZrxParams: an Apply on one tab leaves a string that lacks the others.
TEST_P(Drill, CompletesParametersThatLack) {
    Start();
    NewText();
    const auto open = [this] { Menu({"&Utilities", "&Zonerex", "&Setup Zonerex"}); };
    open();
    WaitWindow("Zonerex Fitting Parameters");
    Click("Files");
    Click("Apply");
    Key("Escape");
    WaitGone("Zonerex Fitting Parameters");
    open();
    WaitWindow("Korvane");
    ExpectSeen("Type mismatch: the fitting parameters have no number for");
    Key("Return");
    WaitWindow("Zonerex Fitting Parameters");
    Key("Return");
    WaitGone("Zonerex Fitting Parameters");
    Menu({"&File", "E&xit"});
    ExpectEnd();
    const std::string settings = Read(".place/Korvane/KORVANE.CFG");
    Require(settings.find("hm005l025u100t00:00:55roc2p3N1") != std::string::npos, "the parameters whole");
}

// frmZrxEditor ("Zonerex Database Editor").
TEST_P(Drill, UpdatesThePartitionersLibrary) {
    Start();
    NewText();
    const std::string library = ".place/Korvane/ZrxPart/zrxlib.db";
    const std::string before = Read(library);
    Menu({"&Utilities", "&Zonerex", "Zonerex &Database"});
    WaitWindow("Zonerex Database Editor");
    Click("Update");
    ExpectFile(library + ".bak", before);
    Key("Escape");
    WaitGone("Zonerex Database Editor");
    Require(Read(library) != before, "the library was not written");
}
