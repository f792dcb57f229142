#include "drill/Drill.h"

// A design of sixteen outputs, two devices full.
namespace {

const std::string wide = gateHeader +
                         "PIN = [A7..0];\r\nPIN = [Y15..0];\r\n"
                         "[Y15..8] = [A7..0] & A0;\r\n[Y7..0] = [A7..0] # A1;\r\n";

}  // namespace

// frmZrxParams ("Zonerex Fitting Parameters"), frmZonerex ("Zonerex").
TEST_P(Drill, PartitionsADesign) {
    StartWith("A.PLD", wide);
    RunAndWait("ctrl+F9");
    Menu({"&Utilities", "&Zonerex", "&Setup Zonerex"}, "Zonerex Fitting Parameters");
    ClickEach({"Files", "Generate a text solution list", "Devices", "G16V8A"});
    ClickAway("Zonerex Fitting Parameters");
    ExpectFile(".place/Korvane/ZrxPart/TEMP.DEV", "G16V8A\r\n");
    MenuByMouse({"&Utilities", "&Zonerex", "&Run Zonerex"}, "Zonerex");
    Click("Find Solutions");
    Click("Fit Selection");  // enabled once there are solutions
    ExpectFile(".place/Korvane/ZrxPart/solution.slf", "G16V8A*2\r\n");
    ExpectSeen("Written: A_2.PLD");
    KeyAway("Zonerex");
    for (const std::string name : {"A_1", "A_2"}) {
        Open(name + ".PLD");
        Key("F9");
        Answer("Project", "The current PLD file is not part of the current project.", "&Yes");
        AcknowledgeRun();
        ExpectFile(name + ".JED", CompiledByHand(name, "jaxlbm4"));
        Key("ctrl+F4");
    }
}

// frmZrxParams, where an Apply on one tab leaves a string that lacks the others, and frmZrxEditor ("Zonerex
// Database Editor").
TEST_P(Drill, CompletesParametersAndUpdatesTheLibrary) {
    StartWithText();
    const auto open = [this] { Menu({"&Utilities", "&Zonerex", "&Setup Zonerex"}); };
    open();
    WaitWindow("Zonerex Fitting Parameters");
    ClickEach({"Files", "Apply"});
    KeyAway("Zonerex Fitting Parameters");
    open();
    WaitWindow("Korvane");
    ExpectSeen("Type mismatch: the fitting parameters have no number for");
    Key("Return");
    WaitWindow("Zonerex Fitting Parameters");
    KeyAway("Zonerex Fitting Parameters", "Return");
    const std::string library = ".place/Korvane/ZrxPart/zrxlib.db";
    const std::string before = Read(library);
    Menu({"&Utilities", "&Zonerex", "Zonerex &Database"}, "Zonerex Database Editor");
    Click("Update");
    ExpectFile(library + ".bak", before);
    KeyAway("Zonerex Database Editor");
    Require(Read(library) != before, "the library was not written");
    Menu({"&File", "E&xit"});
    ExpectEnd();
    ExpectPart(".place/Korvane/KORVANE.CFG", "hm005l025u100t00:00:55roc2p3N1");
}
