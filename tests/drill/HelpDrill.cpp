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
