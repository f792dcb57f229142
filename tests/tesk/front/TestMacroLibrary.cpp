#include <gtest/gtest.h>

#include <filesystem>

#include "Support.h"

// The macro files that are installed.

namespace {

const std::vector<std::string> q2 = {"Q1", "Q0"};
const std::string counter = "PIN=[CLK,EN,UP,L,R,D1..0]; PIN=[Q1..0]; ";
const std::string digit = "PIN=[CLK,EN]; PIN=[Q3..0,CO]; ";
const std::vector<std::string> q4 = {"Q3", "Q2", "Q1", "Q0"};

}  // namespace

TEST(MacroLibrary, EachMacroDoesWhatItSays) {
    const struct {
        std::string File, Pins, Call;
        std::vector<Way> Ways;
    } cases[] = {
        {"COUNTER.MAC", counter, "COUNTUP Q 2 CLK 'b'1 NC", {{"Q1.D", q2, "0110"}, {"Q0.D", q2, "1010"}}},
        {"COUNTER.MAC", counter, "COUNTDN Q 2 CLK 'b'1 R", {{"Q1.D", q2, "1001"}, {"Q0.D", q2, "1010"}}},
        {"COUNTER.MAC", counter, "COUNTUD Q 2 CLK 'b'1 UP R", {{"Q1.D", {"UP", "Q1", "Q0"}, "10010110"}}},
        {"COUNTER.MAC",
         counter,
         "COUNTLD Q 2 CLK EN L D R",
         {{"Q1.D", {"L", "D1", "EN", "Q1", "Q0"}, "00110110001101100000000011111111"}}},
        {"COUNTER.MAC",
         digit,
         "COUNTBCD Q CLK EN CO NC",
         {{"Q3.D", {"EN", "Q3", "Q2", "Q1", "Q0"}, "00000000111111110000000110"},
          {"CO", {"EN", "Q3", "Q2", "Q1", "Q0"}, "00000000000000000000000001"}}},
        {"SHIFT.MAC", counter, "SHIFTUP Q 2 D0 CLK EN R", {{"Q1.D", {"EN", "Q1", "Q0"}, "00110101"}}},
        {"SHIFT.MAC", counter, "SHIFTLD Q 2 D1 CLK L D NC", {{"Q1.D", {"L", "D1", "Q0"}, "01010011"}}},
        {"SHIFT.MAC",
         digit,
         "RING Q 4 CLK NC",
         {{"Q0.D", q4, "1000000010000000"}, {"Q3.D", q4, "0000111100001111"}}},
        {"SHIFT.MAC", digit, "JOHNSON Q 4 CLK NC", {{"Q0.D", q4, "1111111100000000"}}},
        {"SELECT.MAC",
         "PIN=[S1..0,E]; PIN=[Y3..0]; ",
         "DECODE4 Y S E",
         {{"Y2", {"E", "S1", "S0"}, "00000010"}, {"Y3", {"E", "S1", "S0"}, "00000001"}}},
        {"SELECT.MAC",
         "PIN=[S2..0]; PIN=[Y7..0]; ",
         "DECODE8 Y S 'b'1",
         {{"Y6", {"S2", "S1", "S0"}, "00000010"}}},
        {"SELECT.MAC",
         "PIN=[D3..0]; PIN=[Y1..0,A]; ",
         "ENCODE4 Y D A",
         {{"Y1", {"D3", "D2", "D1", "D0"}, "0000111111111111"},
          {"Y0", {"D3", "D2", "D1", "D0"}, "0011000011111111"},
          {"A", {"D3", "D2", "D1", "D0"}, "0111111111111111"}}},
        {"SELECT.MAC", "PIN=[A,B,S]; PIN=Y; ", "MUX2 Y A B S", {{"Y", {"S", "A", "B"}, "00110101"}}},
        {"SELECT.MAC", "PIN=[D3..0,S1..0]; PIN=Y; ", "MUX4 Y D S", {{"Y", {"D2", "S1", "S0"}, "00000010"}}},
        {"SELECT.MAC",
         "PIN=[A1..0,B1..0]; PIN=Y; ",
         "EQUAL Y A B 2",
         {{"Y", {"A1", "A0", "B1", "B0"}, "1000010000100001"}}},
        {"SELECT.MAC",
         "PIN=[A1..0,B1..0]; PIN=Y; ",
         "LESS2 Y A B",
         {{"Y", {"A1", "A0", "B1", "B0"}, "0111001100010000"}}},
        {"TIMING.MAC", "PIN=[I,CLK]; PIN=[S,Y]; ", "SYNC Y I S CLK", {{"Y.D", {"S", "I"}, "0011"}}},
        {"TIMING.MAC",
         "PIN=[I,CLK]; PIN=[S2..0,Y]; ",
         "DEBOUNCE Y I S CLK",
         {{"Y.D", {"Y", "S2", "S1", "S0"}, "0000000101111111"}}},
        {"TIMING.MAC", "PIN=[I,CLK]; PIN=[S,Y]; ", "EDGE Y I S CLK", {{"Y.D", {"S", "I"}, "0100"}}},
        {"TIMING.MAC", "PIN=CLK; PIN=Q; ", "TOGGLE Q CLK 'b'1 NC", {{"Q.D", {"Q"}, "10"}}},
    };
    std::map<std::string, int> called;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.Call);
        ++called[c.File];
        ExpectWays(*Compile("$INCLUDE " + c.File + "\n" + c.Pins + "\n" + c.Call + " ;\n", "bm2",
                            {{c.File, DataText("MACRO/" + c.File)}}),
                   c.Ways);
    }
    // None is left out.
    for (const auto& entry : std::filesystem::directory_iterator(DATA_DIR "/MACRO")) {
        const std::string text = DataText("MACRO/" + entry.path().filename().string());
        int macros = 0;
        for (std::size_t at = 0; (at = text.find("$MACRO ", at)) != std::string::npos; ++at) ++macros;
        EXPECT_EQ(called[entry.path().filename()], macros) << entry.path();
    }
}
