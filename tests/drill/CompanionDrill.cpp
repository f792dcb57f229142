#include "drill/Drill.h"

// The programs beside this one: stand-ins that note what they are told, and that they gave the keys back.

namespace {

std::string Program(const std::string& tool) { return ".place/" + tool + "/" + tool + ".exe"; }
std::string Log(const std::string& tool) { return Program(tool) + ".log"; }

}  // namespace

// AllTESK by its menu entry: tools that start, then tools that run.
TEST_P(Drill, TilesItsCompanions) {
    for (const char* tool : {"Wavrik", "Stavrik", "Schematic"}) Copy(DRILL_TOOL, Program(tool));
    Write("A.SI", "");
    StartWith("A.PLD", "Name A;\r\n");
    const auto tile = [this] { Menu({"&Utilities", "&Tesk Tools"}); };
    tile();
    const std::string wavrik = "Start /NoSplash 7680 0 7680 5760\nBehind\n";
    const std::string stavrik = "Start /NoSplash 7680 5760 7680 5760\nBehind\n";
    const std::string schematic = "Start /NoSplash 0 5760 7680 5760\nBehind\n";
    ExpectFile(Log("Wavrik"), wavrik);
    ExpectFile(Log("Stavrik"), stavrik);
    ExpectFile(Log("Schematic"), schematic);
    tile();
    const std::string told = "Tile 0 7680 7680 5760\nOpen " + CaptionOf("A.SI") + "\n";
    ExpectFile(Log("Wavrik"), wavrik + told);
    ExpectFile(Log("Stavrik"), stavrik + "Tile 5760 7680 7680 5760\n");
    ExpectFile(Log("Schematic"), schematic + "Tile 5760 0 7680 5760\n");
    Menu({"&File", "E&xit"});
    ExpectEnd();
    ExpectFile(Log("Wavrik"), wavrik + told);
}

// A companion's button of the toolbar: it starts behind the main window, comes forward, is closed.
TEST_P(Drill, BringsACompanionForward) {
    Copy(DRILL_TOOL, Program("Wavrik"));
    WriteSettings("StdUtil5T=number:-1\n");
    StartWithText();
    std::string log;
    for (int time = 0; time < 2; ++time) {
        Button("wavrik");
        ExpectFile(Log("Wavrik"), log += "Start /NoSplash 7680 0 7680 5760\nBehind\n");
        Type("typed");
        Button("wavrik");
        ExpectFile(Log("Wavrik"), log += "Tile 0 7680 7680 5760\n");
        WaitWindow("Wavrik");
        KeyAway("Wavrik", "alt+F4");
        ExpectActive("Untitled 1");
    }
    Key("ctrl+S");
    AnswerFile("Save As", PathOf("T.TXT"));
    ExpectFile("T.TXT", "typedtyped");
}
