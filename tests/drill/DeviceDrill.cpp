#include "drill/Drill.h"

// frmDevices ("Device Selection"): the device that the next runs compile for.

TEST_P(Drill, CompilesForTheDeviceChosen) {
    StartWith("A.PLD", gate);
    KeyFor("Device Selection", "ctrl+d");
    ClickEach({"Monolithic Memories", "PLCC", "PAL16R4"});
    ExpectSeen("P16R4");  // in txtMnemonic
    Key("Tab", 3);        // to the report
    Key("ctrl+a ctrl+c");
    ExpectClipboard(
        "Mnemonic:  P16R4\nPin Count:  20\nSpecial Options:  None\n"
        "Alternate Part Numbers:  PAL16R4A, PAL16R4A-2, PAL16R4A-4, PAL16R4B, PAL16R4D\n"
        "Related Mnemonics:  P16L8, P16R6, P16R8\n\n"
        "**************************************************\n"
        "Pin#     Function\n"
        "     1     CLK\n     2     I\n     3     I\n     4     I\n     5     I\n     6     I\n     7     I\n"
        "     8     I\n     9     I\n    10     GND\n    11     OE\n    12     I/O\n    13     I/O\n    14   "
        "  Q\n"
        "    15     Q\n    16     Q\n    17     Q\n    18     I/O\n    19     I/O\n    20     VCC\n\n"
        "**************************************************\n"
        "Device Notes:\n"
        "Four registers of eight product terms, four outputs of seven and one for the output enable; all "
        "active-low.");
    Click("Device In File");  // it was checked: the design names its own
    ClickAway("Device Selection", "&Ok");
    RunAndWait();
    const std::string chosen = CompiledByHand("A", "jaxlbm4", "P16R4");
    ExpectFile("A.JED", chosen);

    Menu({"&Options", "&Devices"}, "Device Selection");
    Click("Device In File");
    KeyAway("Device Selection");
    RunAndWait();
    ExpectFile("A.JED", chosen);

    MenuByMouse({"&Options", "&Devices"}, "Device Selection");
    Click("Device In File");
    KeyAway("Device Selection", "Return");
    RunAndWait();
    const std::string own = CompiledByHand("A", "jaxlbm4");
    ExpectFile("A.JED", own);
    Require(own != chosen, "the two devices have the same fuse map");
}

// What a complex device brings beside the fuse map: the fitting report and the program for JTAG players.
TEST_P(Drill, CompilesForAComplexDevice) {
    Copy(DRILL_INSTALLATION "/Examples/BUSCTL.PLD", "BUSCTL.PLD");
    Start();
    Open("BUSCTL.PLD");
    RunAndWait();
    ExpectSeen("Fuse map proved", In::Messages);
    ExpectFile("BUSCTL.JED", CompiledByHand("BUSCTL", "jaxlbm4"));
    Require(Read("BUSCTL.FIT").starts_with("C1502P44: "), "the report\n" + Read("BUSCTL.FIT"));
    ExpectPart("BUSCTL.SVF", "SDR 32 TDI");
}
