#include "drill/Drill.h"

// The companion Wavrik. What is run is a toggle that starts low; the third and the fifth of its vectors are
// wrong.

namespace {

const std::string design =
    gateHeader + "PIN 1 = CLK;\r\nPIN 11 = !OE;\r\nPIN 2 = R;\r\nPIN 19 = Q;\r\nQ.D = !Q & !R;\r\n";
const std::string vectors =
    gateHeader + "ORDER: CLK, OE, R, Q;\r\nVECTORS:\r\nC01L\r\nC00H\r\nC00H\r\nC00H\r\nC00H\r\n";

}  // namespace

TEST_P(Drill, ShowsTheWavesOfARun) {
    WriteSettings("StdUtil5T=number:-1\n");
    Write("A.SI", vectors);
    StartWith("A.PLD", design);
    RunAndWait();
    Menu({"&Options", "&Simulator"}, "Simulator Options");
    Click("Display Results");
    ClickAway("Simulator Options");
    RunAndWait("F7");
    WaitWindow("Wavrik");
    ExpectSeen("2 mismatches: F3");
    ExpectSeen("0 ns, vector 1");
    Key("F3");
    ExpectSeen("200 ns, vector 3");
    Key("F3");
    ExpectSeen("400 ns, vector 5");
    Key("shift+F3");
    ExpectSeen("200 ns, vector 3");
    KeyAway("Wavrik", "alt+F4");
    ExpectWindows({"Korvane"});
    // A tool that runs is told what to show.
    Button("wavrik");
    ExpectWindows({"Korvane", "Wavrik"});
    Button("dep-sim");
    AcknowledgeRun();
    Button("wavrik");
    WaitWindow("Wavrik");
    ExpectSeen("2 mismatches: F3");
    ExpectWindows({"Korvane", "Wavrik"});
}
