#include <QProcess>

#include "drill/Drill.h"

// The print dialog, and the sheets that the schematic tool hands over.

namespace {

const std::string design = "Name Gate;\r\nPIN 1 = A; /* first */\r\nY = A & B;\r\n";

// As a reader of PDF files sees it; pages end with a form feed.
std::string Pages(const std::string& file) {
    QProcess reader;
    reader.start("pdftotext", {"-layout", QString::fromStdString(file), "-"});
    reader.waitForFinished();
    return reader.readAllStandardOutput().toStdString();
}

std::string Sheet(const std::string& name, const std::string& line, const std::string& lineEnd) {
    return "/*## Begin Schematic Sheet:" + name + "##*/" + lineEnd + line + lineEnd +
           "/*## End Schematic Sheet:" + name + "##*/";
}

}  // namespace

TEST_P(Drill, PrintsToAFile) {
    const auto printTo = [&](const std::string& file) {
        WaitWindow("Print");
        Key("alt+f ctrl+a");
        TypeAtOnce(PathOf(file) + "\n");
        WaitGone("Print");
    };
    StartWith("A.PLD", design);
    KeyFor("Print", "ctrl+p");
    KeyAway("Print");
    Key("Down shift+End");
    Button("print");
    printTo("ALL.pdf");
    Require(Pages(PathOf("ALL.pdf")) == "Name Gate;\nPIN 1 = A; /* first */\nY = A & B;\n\f",
            "the whole text was not printed");
    Type("x");  // at the top, where printing everything leaves the caret
    Key("Down shift+End");
    MenuByMouse({"&File", "&Print"}, "Print");
    Click("Selection");
    printTo("PART.pdf");
    Require(Pages(PathOf("PART.pdf")) == "IN 1 = A; /* first */\n\f", "the selection was not printed");
    KeyFor("Print", "ctrl+p");
    Key("Return");
    Answer("Print", "overwrite", "&Yes");
    WaitGone("Print");
    Require(Pages(PathOf("PART.pdf")).starts_with("xName Gate;"), "the file was not printed over");
    SaveAndExpect("A.PLD", "x" + design);
}

TEST_P(Drill, PastesSheetsInTheirPlaces) {
    const std::string end = "\r\n";
    InTextAndDesign(design, [&](const std::string& name) {
        SetClipboard(Sheet("S1", "Y = !A;", "\n") + "\n");
        Key("Down ctrl+v");
        SetClipboard(Sheet("S10", "Z = A # B;", "\n"));
        Key("ctrl+End");
        Button("paste");
        SetClipboard(Sheet("S1", "Y = !A & C;", "\n"));
        Key("ctrl+Home");
        Key("Right", 4);
        Menu({"&Edit", "&Paste"});
        Type("My");
        SaveAndExpect(name, "NameMy Gate;\r\n" + Sheet("S1", "Y = !A & C;", end) + end + design.substr(12) +
                                Sheet("S10", "Z = A # B;", end));
    });
}
