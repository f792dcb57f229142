#include <filesystem>

#include "drill/Drill.h"

// Tools that misbehave, tools beside the program, and a program that is killed itself.

namespace {

// The configuration file with this in the place of the compiler's letters.
std::string ConfigurationWith(const std::string& letters) {
    std::string bytes;
    for (const std::string& item :
         std::vector<std::string>{"KORVANE 5.0", letters, "", "", "", "0", "PIN", "0"})
        bytes += static_cast<char>(item.size()) + std::string(1, '\0') + item;
    return bytes;
}

}  // namespace

void Drill::Copy(const std::string& file, const std::string& to) {
    std::filesystem::create_directories(std::filesystem::path(PathOf(to)).parent_path());
    std::filesystem::copy_file(file, PathOf(to), std::filesystem::copy_options::overwrite_existing);
}

// frmStatus and the box about a tool that talks on and on: nothing else would end it.
TEST_P(Drill, StopsAToolThatNeverEnds) {
    Copy(DRILL_BADLIB, ".place/Shared/teskk.dll");
    Write(".place/Korvane/KORVANE.CFG", ConfigurationWith("chatter"));
    StartWith("A.PLD", "Name A;\r\n");
    Key("F9");
    WaitWindow("Compilation Results");
    CloseMain();
    Answer("Korvane", "The tool does not answer.", "&Stop it");
    Answer("Korvane", "The tool teskk.dll ended unexpectedly: it was stopped.", "OK");
    AcknowledgeRun();
    Type("new ");
    SaveAndExpect("A.PLD", "new Name A;\r\n");
}

// The box of RecoveryKeeper.
TEST_P(Drill, GivesATextBackAfterACrash) {
    StartWith("A.TXT", "one\r\n");
    Type("unsaved ");
    WaitFileEnding(".home/state/korvane/recovery", "unsaved one\r\n");
    Kill();
    Launch();
    Answer("Recover Texts", "Korvane ended unexpectedly. These texts were not saved:", "&Yes");
    FindMain();
    ExpectActive(CaptionOf("A.TXT"));
    ExpectFile("A.TXT", "one\r\n");
    SaveAndExpect("A.TXT", "unsaved one\r\n");
    Key("alt+F4");
    ExpectEnd();
    Start();
    ExpectWindows({"Korvane"});  // nothing is offered again
}

// frmMessage, closed by hand.
TEST_P(Drill, BringsClosedMessagesBack) {
    Write("A.PLD", "Name A;\r\n");
    Start();
    ExpectSeen("Messages", In::Title);
    Key("ctrl+F4");
    ExpectUnseen("Messages", In::Title);
    Open("A.PLD");
    RunAndWait();
    ExpectActive(CaptionOf("A.PLD"));
    ExpectSeen("Messages");
    ExpectSeen("[4000tc]", In::Messages);
}

// A tool of the toolbar goes with the program.
TEST_P(Drill, ClosesItsToolsAtTheEnd) {
    Copy(DRILL_TOOL, ".place/Windows/calc.exe");
    WriteSettings("StdUtil0T=number:-1\n");
    StartWithText();
    Button("calculator");
    ExpectWindows({"Korvane", "Calculator"});
    Menu({"&File", "E&xit"});
    ExpectEnd();
    ExpectWindows({});
}
