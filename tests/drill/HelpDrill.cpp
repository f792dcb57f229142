#include "drill/Drill.h"

// frmAbout ("About Korvane").

TEST_P(Drill, TellsAboutItselfAndTheMachine) {
    Start();
    Menu({"&Help", "&About"}, "About Korvane");
    ExpectSeen("Version 5.0.0");
    ExpectSeen("Universal Compiler for Programmable Logic.");
    Click("&System Info...");
    Answer("Korvane", "System Information Is Unavailable At This Time", "OK");
    WaitWindow("About Korvane");
    KeyAway("About Korvane");
    Key("alt+F4");
    ExpectEnd();

    // A program that is named there starts, and the window stays.
    Copy(DRILL_TOOL, "tools/calc.exe");
    const std::string settings = ".home/config/korvane/settings.ini";
    Write(settings, Read(settings) + "\n[SOFTWARE\\Microsoft\\Shared Tools\\MSINFO]\nPATH=\"C:" +
                        PathOf("tools/calc.exe") + "\"\n");
    StartWithText();
    MenuByMouse({"&Help", "&About"}, "About Korvane");
    Key("alt+s");
    ExpectWindows({"Korvane", "About Korvane", "Calculator"});
}

// frmHelp ("Korvane Help"): each help file that is installed, topics beside their dialogs, a search.

TEST_P(Drill, HelpsWhereItIsAskedFor) {
    Start();
    const std::pair<const char*, const char*> files[] = {
        {"Tesk Programmers &Reference", "Tesk turns a design"},
        {"&Fitters", "A device dependent compile"},
        {"S&imulator", "Wavrik shows a simulation"},
        {"S&chematic", "Korvane works beside a schematic tool"},
        {"&Bubble Entry", "Stavrik is the tool"},
        {"&VHDL", "is a VHDL front end"},
        {"&Contents", "An engineer writes a design"}};
    for (const auto& [entry, text] : files) {
        MenuByMouse({"&Help", entry}, "Korvane Help");  // two entries share a letter
        ExpectSeen(text);
        KeyAway("Korvane Help");
    }
    NewText();
    MenuByMouse({"&Help", "&Zonerex"}, "Korvane Help");
    ExpectSeen("The partitioner reads");
    ExpectSeen("Designs from elsewhere");  // links alone lead there
    KeyAway("Korvane Help");
    Menu({"&Options", "&Compiler"}, "Compiler Options");
    KeyFor("Korvane Help", "F1");
    ExpectSeen("what the next run");
    KeyAway("Korvane Help");
    WaitWindow("Compiler Options");
    KeyAway("Compiler Options");
    Menu({"&Help", "&Search"}, "Korvane Help");
    Type("wheel zooms\n");
    ExpectSeen("Wavrik shows a simulation");
    KeyAway("Korvane Help", "alt+c");
}
