#include <gtest/gtest.h>

#include <filesystem>

#include "Support.h"
#include "convert/Backpin.h"
#include "convert/Failure.h"

namespace {

namespace fs = std::filesystem;
using convert::Annotation;

std::string DocumentOf(const std::string& text) {
    const auto compiled = CompileWhole(
        text, "xm4",
        {{"tesk.dl", DataText("devices/Fullset.dl")}, {"Cplds.dl", DataText("devices/Cplds.dl")}});
    EXPECT_TRUE(compiled->Run->Ok()) << text;
    return compiled->Text(".DOC");
}

std::string Annotate(const std::string& text, Annotation what, const convert::FitPins& fit = {},
                     std::size_t notes = 0) {
    MemoryFiles files;
    files.Texts["T.PLD"] = text;
    const convert::Annotated result = convert::Annotate(files, "T.PLD", what, fit);
    EXPECT_EQ(result.Notes.size(), notes) << (result.Notes.empty() ? "" : result.Notes.front());
    return result.Text;
}

// The examples, floated, fitted where the fitter likes, and given back the pins that they had.
TEST(Backpin, GivesBackTheSamePins) {
    int count = 0;
    for (const auto& entry : fs::directory_iterator(DATA_DIR "/Examples")) {
        if (entry.path().extension() != ".PLD") continue;
        const std::string text = DataText("Examples/" + entry.path().filename().string());
        const convert::FitPins fit = convert::ReadFitPins(DocumentOf(text));
        const std::string floated = Annotate(text, Annotation::Float);
        EXPECT_EQ(floated.find("PIN 1"), std::string::npos) << entry.path();
        if (floated != text) {  // else the example leaves its pins to the fitter
            EXPECT_EQ(Annotate(floated, Annotation::AssignAll, fit), text) << entry.path();
            EXPECT_EQ(Annotate(text, Annotation::AssignPins, fit), text) << entry.path();
        }
        // What the fitter chooses by itself holds when it is written down.
        const convert::FitPins own = convert::ReadFitPins(DocumentOf(floated));
        const std::string assigned = Annotate(floated, Annotation::AssignAll, own);
        EXPECT_EQ(convert::ReadFitPins(DocumentOf(assigned)).Numbers, own.Numbers) << entry.path();
        ++count;
    }
    EXPECT_GT(count, 5);
}

struct Change {
    Annotation What;
    const char* Before;
    const char* After;
    std::size_t Notes;
};

TEST(Backpin, TouchesNumbersAlone) {
    const convert::FitPins fit{"G22V10", {{"A", 2}, {"B", 3}, {"C", 9}, {"S", 14}, {"T1", 15}, {"T0", 16}}};
    const std::vector<Change> changes{
        {Annotation::Float, "PIN/*PIN 3*/5=A;\tPin [7 , 8] = ![B,C];", "PIN/*PIN 3*/=A;\tPin = ![B,C];", 0},
        {Annotation::Float, "PINNODE 14 = S; Pinnode [15,16]= [T1..0] ;", "NODE = S; Node= [T1..0] ;", 0},
        {Annotation::AssignPins, "PIN = !A ; NODE S ;\nPIN 7 = C ;", "PIN 2 = !A ; NODE S ;\nPIN 9 = C ;", 0},
        {Annotation::AssignAll, "NODE S; node [T1..0];", "PINNODE 14 = S; pinnode [15,16] = [T1..0];", 0},
        {Annotation::AssignAll, "PIN = [A, B, C] ;", "PIN [2,3,9] = [A, B, C] ;", 0},
        // Names that the fit has not, and declarations that do not stand in the text as they are compiled.
        {Annotation::AssignAll, "PIN = X ; PIN = A ;", "PIN = X ; PIN 2 = A ;", 1},
        {Annotation::AssignAll, "$REPEAT i = [0..1]\nNODE T{i} ;\n$REPEND\n",
         "$REPEAT i = [0..1]\nNODE T{i} ;\n$REPEND\n", 2},
        {Annotation::AssignAll, "$IFDEF V\nPIN 5 = A ;\n$ELSE\nPIN 6 = A ;\n$ENDIF",
         "$IFDEF V\nPIN 5 = A ;\n$ELSE\nPIN 2 = A ;\n$ENDIF", 0},
    };
    const std::string head = "Name PIN 5 = A ;\r\n/* \xE4 PIN = B ; */ ";
    for (const Change& change : changes)
        EXPECT_EQ(Annotate(head + change.Before, change.What, fit, change.Notes), head + change.After);
    for (const char* broken : {"Name T ; PIN = ; ", "Name T ; PIN = [A3..B0] ; "})
        EXPECT_THROW(Annotate(broken, Annotation::AssignAll, fit), convert::Failure);
}

TEST(Backpin, ReadsTheCommandLinesAsTheyStand) {
    using Words = std::vector<std::string>;
    for (const auto& [words, device, design] :
         {std::tuple(Words{"-f", "virtual", "/W/COUNT8"}, "virtual", "/W/COUNT8"),
          {Words{"-bG22V10C:\\W\\COUNT8"}, "G22V10", "C:\\W\\COUNT8"},
          {Words{"-pG16V8C:\\MY", "WORK\\A"}, "G16V8", "C:\\MY WORK\\A"},
          {Words{"-f", "virtual", "COUNT8"}, "virtual", "COUNT8"}}) {
        const convert::BackpinCommand command = convert::ReadBackpinCommand(words);
        EXPECT_EQ(command.Device, device);
        EXPECT_EQ(command.Design, design);
    }
    for (const Words& wrong :
         {Words{}, Words{"-x"}, Words{"-fG22V10"}, Words{"-fC:\\W\\A"}, Words{"-f", "virtual"}})
        EXPECT_THROW(convert::ReadBackpinCommand(wrong), convert::Failure);
}

}  // namespace
