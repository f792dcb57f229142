#include "drill/Drill.h"

// frmAbout ("About Korvane").

TEST_P(Drill, TellsAboutItselfAndTheMachine) {
    Start();
    Menu({"&Help", "&About"});
    WaitWindow("About Korvane");
    ExpectSeen("Version 5.0.0");
    ExpectSeen("Universal Compiler for Programmable Logic.");
    Click("&System Info...");
    Answer("Korvane", "System Information Is Unavailable At This Time", "OK");
    WaitWindow("About Korvane");
    Key("Escape");
    WaitGone("About Korvane");
    Key("alt+F4");
    ExpectEnd();

    // A program that is named there starts, and the window stays.
    Copy(DRILL_TOOL, "tools/calc.exe");
    const std::string settings = ".home/config/korvane/settings.ini";
    Write(settings, Read(settings) + "\n[SOFTWARE\\Microsoft\\Shared Tools\\MSINFO]\nPATH=\"C:" +
                        PathOf("tools/calc.exe") + "\"\n");
    Start();
    NewText();
    MenuByMouse({"&Help", "&About"});
    WaitWindow("About Korvane");
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
        MenuByMouse({"&Help", entry});  // two entries share a letter
        WaitWindow("Korvane Help");
        ExpectSeen(text);
        Key("Escape");
        WaitGone("Korvane Help");
    }
    NewText();
    MenuByMouse({"&Help", "&Zonerex"});
    WaitWindow("Korvane Help");
    ExpectSeen("The partitioner reads");
    ExpectSeen("Designs from elsewhere");  // links alone lead there
    Key("Escape");
    WaitGone("Korvane Help");
    Menu({"&Options", "&Compiler"});
    WaitWindow("Compiler Options");
    Key("F1");
    WaitWindow("Korvane Help");
    ExpectSeen("what the next run");
    Key("Escape");
    WaitGone("Korvane Help");
    WaitWindow("Compiler Options");
    Key("Escape");
    WaitGone("Compiler Options");
    Menu({"&Help", "&Search"});
    WaitWindow("Korvane Help");
    Type("wheel zooms\n");
    ExpectSeen("Wavrik shows a simulation");
    Key("alt+c");
    WaitGone("Korvane Help");
}
