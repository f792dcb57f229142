#include <QProcess>

#include "drill/Drill.h"

// Compile and simulate: frmStatus ("Compilation Results"), frmMessage ("Messages"), frmErrorMessage ("Compile
// Message"), frmCompiler ("Compiler Options").

// What the compiler writes when it is called by itself, in a folder of its own.
std::string Drill::CompiledByHand(const std::string& name, const std::string& letters,
                                  const std::string& device) {
    Write("byhand/" + name + ".PLD", Read(name + ".PLD"));
    const QStringList arguments = {"-o", letters.c_str(), "-d", device.c_str(),
                                   PathOf("byhand/" + name + ".PLD").c_str()};
    Require(QProcess::execute(PathOf(".place/bin/teskc").c_str(), arguments) == 0, "teskc fails");
    return Read("byhand/" + name + ".JED");
}

TEST_P(Drill, CompilesMendsAndCompilesAgain) {
    StartWith("A.PLD", gate);
    Click("A & B", In::Document);
    Key("End Left Left");
    Type("(");
    Key("F9");
    Answer("Save editor file", "File is not saved. Do you want to save now?", "&Yes");
    WaitWindow("Compilation Results");
    ExpectSeen("Compilation ended with errors");
    ExpectSeen("1");
    ClickAway("Compilation Results");
    ExpectNoFile("A.JED");
    Click("Error: Statement not understood", In::Messages);
    WaitWindow("Compile Message");
    ExpectSeen("1001ta");
    ExpectSeen("Something else stands here than the statement needs.");
    KeyAway("Compile Message", "Return");
    Click("A & (B", In::Document);
    Key("End Left Left BackSpace ctrl+s");
    Button("dep-comp");
    WaitWindow("Compilation Results");
    ExpectSeen("Compilation complete");
    ExpectUnseen("1");
    AcknowledgeRun();
    ExpectFile("A.JED", CompiledByHand("A", "jaxlbm4"));
}

TEST_P(Drill, AsksForTheProjectOfAnotherDesign) {
    const std::string question = "The current PLD file is not part of the current project.";
    Write("B.PLD", gate);
    StartWith("A.PLD", gate);
    Open("B.PLD");
    Key("F9");
    Answer("Project", question, "&No");
    Key("F9");
    Answer("Project", question, "&Yes");
    AcknowledgeRun();
    ExpectFile("B.JED", CompiledByHand("B", "jaxlbm4"));
    ExpectNoFile("A.JED");
}

TEST_P(Drill, CompilesWithTheOptionsChosen) {
    Write("A.PLD", gate);
    Start();
    Menu({"&Options", "&Compiler"}, "Compiler Options");
    ClickEach({"General", "Secure Device"});
    Key("ctrl+shift+Tab", 3);
    Click("List");
    ClickAway("Compiler Options");
    Key("alt+F4");
    ExpectEnd();
    Start();
    Open("A.PLD");
    KeyFor("Compiler Options", "ctrl+w");
    Click("PALASM");
    KeyAway("Compiler Options");
    RunAndWait();
    ExpectFile("A.JED", CompiledByHand("A", "jaxbm4g"));
    ExpectNoFile("A.LST");
}

TEST_P(Drill, SimulatesAnExample) {
    Start();
    Open(".place/Examples/COUNT8.PLD");
    Button("dep-comp");
    AcknowledgeRun();
    ExpectSeen("[4000tc] Written: COUNT8.DOC, COUNT8.PLA, COUNT8.JED, COUNT8.ABS, COUNT8.LST", In::Messages);
    Button("dep-sim");
    WaitWindow("Compilation Results");
    ExpectSeen("113 vectors, 0 mismatches");
    AcknowledgeRun();
}
