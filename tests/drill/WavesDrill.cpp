#include "drill/Drill.h"

// The companion Wavrik. What is run is a toggle that starts low; the third and the fifth of its vectors are
// wrong.

namespace {

const std::string head =
    "Name Flip; Partno 1; Date 1; Revision 1; Designer I; Company Us; Assembly None; Location Here;\r\n"
    "Device G16V8;\r\n";
const std::string design =
    head + "PIN 1 = CLK;\r\nPIN 11 = !OE;\r\nPIN 2 = R;\r\nPIN 19 = Q;\r\nQ.D = !Q & !R;\r\n";
const std::string vectors =
    head + "ORDER: CLK, OE, R, Q;\r\nVECTORS:\r\nC01L\r\nC00H\r\nC00H\r\nC00H\r\nC00H\r\n";

}  // namespace

TEST_P(Drill, ShowsTheWavesOfARun) {
    Write("A.PLD", design);
    Write("A.SI", vectors);
    Start();
    Open("A.PLD");
    Key("F9");
    AcknowledgeRun();
    Menu({"&Options", "&Simulator"});
    WaitWindow("Simulator Options");
    Click("Display Results");
    Click("OK");
    WaitGone("Simulator Options");
    Key("F7");
    AcknowledgeRun();
    WaitWindow("Wavrik");
    ExpectSeen("2 mismatches: F3");
    ExpectSeen("0 ns, vector 1");
    Key("F3");
    ExpectSeen("200 ns, vector 3");
    Key("F3");
    ExpectSeen("400 ns, vector 5");
    Key("shift+F3");
    ExpectSeen("200 ns, vector 3");
    Key("alt+F4");
    WaitGone("Wavrik");
    ExpectWindows({"Korvane"});
}

// A tool that runs is told what to show.
TEST_P(Drill, ShowsARunInTheWindowThatIsThere) {
    Write(".home/config/korvane/settings.ini",
          "[Software\\Brennick Labs\\Korvane\\5.0\\Settings]\nInitialized=number:-1\nStdUtil5T=number:-1\n");
    Write("A.PLD", design);
    Write("A.SI", vectors);
    Start();
    Open("A.PLD");
    Menu({"&Options", "&Simulator"});
    WaitWindow("Simulator Options");
    Click("Display Results");
    Click("OK");
    WaitGone("Simulator Options");
    Button("wavrik");
    ExpectWindows({"Korvane", "Wavrik"});
    Button("dep-sim");
    AcknowledgeRun();
    Button("wavrik");
    WaitWindow("Wavrik");
    ExpectSeen("2 mismatches: F3");
    ExpectWindows({"Korvane", "Wavrik"});
}
