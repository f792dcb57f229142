#include "drill/Drill.h"

// frmProject ("PROJECT: …") and frmNewDesign ("Design Properties").

TEST_P(Drill, OpensTheFilesOfAProjectAndClosesIt) {
    StartWith("GATE.PLD", gate);
    MenuByMouse({"&Window", "&Auto Arrange"});
    ExpectSeen("GATE.PLD", In::Messages);
    ExpectUnseen("GATE.JED", In::Messages);  // the tree has the message list's letters
    RunAndWait();
    DoubleClick("GATE.JED", In::Messages);
    ExpectActive(CaptionOf("GATE.JED"));
    Click("GATE.PLD", In::Messages);
    Key("Return");
    ExpectActive(CaptionOf("GATE.PLD"));
    Click("Y = A & B", In::Document);
    Key("End");
    Type("/**/");
    MenuByMouse({"&File", "Close Proj&ect"});
    Answer("Save File", "Save changes to " + CaptionOf("GATE.PLD") + "?", "Cancel");
    ExpectSeen("GATE.PLD", In::Messages);
    MenuByMouse({"&File", "Close Proj&ect"});
    Answer("Save File", "Save changes to " + CaptionOf("GATE.PLD") + "?", "&Yes");
    ExpectUnseen("GATE.PLD", In::Messages);
    ExpectSeen("Messages", In::Title);
    ExpectFile("GATE.PLD", gate.substr(0, gate.size() - 2) + "/**/\r\n");
}

TEST_P(Drill, MakesANewProjectFromItsProperties) {
    Start();
    MenuByMouse({"&File", "&New", "&Project"}, "Design Properties");
    Type("Adder\t07\t1/2/26\t\t\tUs\n");
    for (const char* title : {"INPUT PINS", "OUTPUT PINS", "PINNODES"}) {
        AnswerInput(title, "1");
    }
    WaitGone("Design Properties");
    ExpectSeen("/* *************** OUTPUT PINS *********************/", In::Document);
    Key("ctrl+s");
    const std::string pin = "PIN     =                         ; /*                                 */ \r\n";
    ExpectFile(".place/Korvane/ADDER.PLD",
               "Name     Adder ;\r\nPartNo   07 ;\r\nDate     1/2/26 ;\r\nRevision 01 ;\r\n"
               "Designer Engineer ;\r\nCompany  Us ;\r\nAssembly None ;\r\nLocation  ;\r\n"
               "Device   virtual ;\r\n\r\n"
               "/* *************** INPUT PINS *********************/\r\n" +
                   pin + "\r\n/* *************** OUTPUT PINS *********************/\r\n" + pin +
                   "\r\n/* *************** PINNODES    *********************/\r\n"
                   "PINNODE     =                      ; /*                                 */ \r\n"
                   "\r\n\r\n\r\n\r\n");
    MenuByMouse({"&File", "&New", "&Design File"}, "Design Properties");
    ExpectSeen("Us");  // the company of before
    KeyAway("Design Properties");
}
