#include "drill/Drill.h"

// Import: each converter from the menu to the design that compiles.

TEST_P(Drill, ImportsDesignsOfOtherSystems) {
    const struct {
        const char* Entry;
        const char* Title;
        const char* Name;
        const char* Text;
        const char* Result;
    } cases[] = {
        {"P&LA", "Import Berkeley PLA File", "P.PLA", ".i 2\n.o 1\n.ilb a b\n.ob y\n11 1\n.e\n", "TABLE"},
        {"&AHDL", "Import Altera TDF File", "T 1.TDF",
         "SUBDESIGN t ( a, b : INPUT; y : OUTPUT; )\nBEGIN\ny = a & b;\nEND;\n", "y = a & b ;"},
        {"&ONTESK", "Import ONTESK", "O.TXT", "PINS\n- A\n- B\n- Y\nEQUATIONS\nY = A & B;\nEND\n",
         "Y = A & B ;"},
        {"&Palasm", "Import Palasm", "C.PDS",
         "CHIP T PAL16L8\nA B NC NC NC NC NC NC NC GND\nNC NC NC NC NC NC NC NC Y VCC\nEQUATIONS\n/Y = A * "
         "B\n",
         "Y = A & B ;"},
        {"&Schematic Netlist", "Import Schematic Netlist", "N.NET",
         "[\nU1\nDIP14\n74LS00\n]\n(\nA\nU1-1\n)\n(\nB\nU1-2\n)\n(\nY\nU1-3\n)\n", "Y = !(A & B) ;"},
    };
    Start();
    for (const auto& c : cases) {
        Write(c.Name, c.Text);
        const std::string design = std::string(c.Name, std::string(c.Name).rfind('.'));
        Menu({"&File", "&Import", c.Entry});  // the first of the main window, the others of a document
        AnswerFile(c.Title, PathOf(c.Name));
        ExpectActive(CaptionOf(design + ".PLD"));
        ExpectPart(design + ".PLD", c.Result);
        Key("F9");
        if (&c != cases)
            Answer("Project", "The current PLD file is not part of the current project.", "&Yes");
        AcknowledgeRun();
        Require(!Read(design + ".ABS").empty(), "it compiles");
    }
    // What is not taken leaves no file, which the empty document says.
    Write("X.PLA", "garbage\n");
    Menu({"&File", "&Import", "P&LA"});
    AnswerFile("Import Berkeley PLA File", PathOf("X.PLA"));
    Answer("Korvane", "doesn't exist. New File assumed", "OK");
    ExpectActive(CaptionOf("X.PLD"));
    ExpectNoFile("X.PLD");
    Menu({"&File", "&Import", "P&LA"}, "Import Berkeley PLA File");
    KeyAway("Import Berkeley PLA File");
    ExpectActive(CaptionOf("X.PLD"));
}
