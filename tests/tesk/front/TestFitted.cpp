#include <gtest/gtest.h>

#include "Support.h"
#include "base/Text.h"
#include "tesk/fit/Chip.h"

// What the stages hand to the fitter and to the simulator, and what comes back.

namespace {

// The lines behind the header, without the last.
std::string AbsOf(const Compiled& done) {
    const std::string text = base::ReplaceAll(done.Text(".ABS"), "\r\n", "\n");
    const std::size_t from = text.find("\nNET ") + 1;
    return text.substr(from, text.find("END\n") - from);
}

}  // namespace

TEST(Fitted, SimulatorAndChipGetWhatTheDesignSays) {
    const auto done = CompileFor("G22V10",
                                 "PIN 1=CLK; PIN [2..4]=[A,B,C]; PIN 5=!R; PIN 23=Y; PIN 22=!Z; PIN 21=W;\n"
                                 "PIN 20=Q; PIN 18=P; PINNODE=N; FIELD F=[A,B]; FIELD G=[A,T]; T=A & B;\n"
                                 "Y = !(T & C); Z = A # T & C # !B & C; W = A $ B; W.OE = B & C; N = A & C;\n"
                                 "Q.D = A & C # Q; Q.CK = CLK; Q.AR = R; P.D = N & W.IO; P.CK = CLK;",
                                 "ajbm4kb");
    ASSERT_TRUE(done->Run->Ok()) << done->Lines().front();
    EXPECT_EQ(AbsOf(*done), R"(NET CLK 1 INPUT HIGH NONE X
NET A 2 INPUT HIGH NONE X
NET B 3 INPUT HIGH NONE X
NET C 4 INPUT HIGH NONE X
NET R 5 INPUT LOW NONE X
NET Y 23 OUTPUT HIGH NONE X
NET Z 22 OUTPUT LOW NONE X
NET W 21 BIDIRECTIONAL HIGH NONE X
NET Q 20 OUTPUT HIGH D 0
NET P 18 OUTPUT HIGH D 0
NET N 0 NODE HIGH NONE X
FIELD F A B
FUNCTION Y OUT NEGATIVE
TERM A B C
FUNCTION Z OUT POSITIVE
TERM !B C
TERM A
FUNCTION W OUT POSITIVE
TERM A !B
TERM !A B
FUNCTION W OE POSITIVE
TERM B C
FUNCTION Q D POSITIVE
TERM Q
TERM A C
FUNCTION Q CK POSITIVE
TERM CLK
FUNCTION Q AR POSITIVE
TERM R
FUNCTION P D POSITIVE
TERM W N
FUNCTION P CK POSITIVE
TERM CLK
FUNCTION N OUT POSITIVE
TERM A C
FUNCTION P AR POSITIVE
TERM R
)");
    const test::Jedec jedec = test::ReadJedec(done->Text(".JED"));
    ASSERT_TRUE(jedec.Good);
    const test::Chip chip("22V10", jedec.Fuses);
    for (unsigned value = 0; value < 16; ++value) {
        const bool a = (value & 1) != 0, b = (value & 2) != 0, c = (value & 4) != 0, q = (value & 8) != 0;
        std::vector<bool> levels(25);
        for (const auto& [pin, level] : {std::pair(2, a), {3, b}, {4, c}, {5, true}, {20, q}})
            levels[static_cast<std::size_t>(pin)] = level;
        EXPECT_EQ(chip.Next(23, levels), !(a && b && c));
        EXPECT_EQ(chip.Next(22, levels), !(a || (!b && c)));
        EXPECT_EQ(chip.Next(21, levels), a != b);
        EXPECT_EQ(chip.Enabled(21, levels), b && c);
        EXPECT_EQ(chip.Next(20, levels), (a && c) || q);
    }
}

// An equation is told in the sense in which the device has it.
TEST(Fitted, EquationsTakeTheSenseOfTheDevice) {
    const struct {
        const char *Device, *Body, *Options, *Function;
    } cases[] = {
        {"G16V8", "Q.D = A # B # C; Q.CK = K; X = A;", "ajm4kb", "FUNCTION Q D NEGATIVE\nTERM !A !B !C\n"},
        {"P16R8", "Q.D = A # B; Q.CK = K;", "ajm4", "FUNCTION Q D NEGATIVE\nTERM !A !B\n"},
        {"P16L8", "Q = A # B; Q.OE = C & K;", "ajm4", "FUNCTION Q OUT NEGATIVE\nTERM !A !B\n"},
        {"P16L8", "Q = A # B; Q.OE = C & K;", "ajm4", "FUNCTION Q OE POSITIVE\nTERM K C\n"},
        {"P16L8", "Q = A # B # C & K;", "ajm4kd", "FUNCTION Q OUT NEGATIVE\n"},
    };
    for (const auto& test : cases) {
        const std::string pins = "PIN 1=K; PIN [2..4]=[A,B,C]; PIN 15=Q;\n";
        const auto done = CompileFor(test.Device, pins + test.Body, test.Options);
        ASSERT_TRUE(done->Run->Ok()) << done->Lines().front();
        EXPECT_NE(AbsOf(*done).find(test.Function), std::string::npos) << AbsOf(*done);
    }
}

TEST(Fitted, FusesAreForcedLast) {
    const auto done =
        CompileFor("G16V8", "PIN 2=A; PIN 12=Q; Q=A; FUSE(2060,1); FUSE(2061,0); FUSE(2062,1);", "j");
    const test::Jedec jedec = test::ReadJedec(done->Text(".JED"));
    EXPECT_TRUE(jedec.Fuses.at(2060) && !jedec.Fuses.at(2061) && jedec.Fuses.at(2062));
}

// The fitter's messages stand at the equation that they name, else where the name is declared.
TEST(Fitted, MessagesNameTheirLine) {
    const struct {
        const char *Device, *Body, *Code;
    } cases[] = {
        {"P16L8", "PIN 2=A;\nPIN 19=Y;\nPIN 18=Z;\nZ = Y;\nY = A;", "7206tc:3"},
        {"G22V10", "PIN 1=C; PIN 2=A;\nPIN 23=Q;\nQ.CK = C;\nQ.T = A;", "7203tc:5"},
        {"G16V8", "PIN 2=A;\nPIN 3=Y;\nY = A;", "7202tc:3"},
        {"G22V10", "PIN 1=C; PIN [2,3]=[A,B];\nPIN 14=Q;\nQ.CK = C;\nQ.D = A;\nQ.AR = A # B;", "7209tc:6"},
    };
    for (const auto& test : cases)
        EXPECT_EQ(CompileFor(test.Device, test.Body, "jm1")->Codes(), std::vector<std::string>{test.Code});
}
