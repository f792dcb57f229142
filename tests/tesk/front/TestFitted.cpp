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

// The chip's next state is that of the register that was asked for, in the sense of the name.
TEST(Fitted, OtherRegistersAreBuiltFromD) {
    const struct {
        const char *Body, *Built;
        int (*Next)(bool a, bool b, bool e, bool r, bool q);  // -1: either
    } cases[] = {
        {"Q.T = A & B;", ".T", [](bool a, bool b, bool, bool, bool q) -> int { return (a && b) != q; }},
        {"Q.J = A; Q.K = B;", ".J, .K", [](bool a, bool b, bool, bool, bool q) -> int { return q ? !b : a; }},
        {"Q.S = A; Q.R = B;", ".S, .R",
         [](bool a, bool b, bool, bool, bool q) { return a && b ? -1 : static_cast<int>(a || (q && !b)); }},
        {"Q.T = A; Q.CE = E;", ".T, .CE",
         [](bool a, bool, bool e, bool, bool q) -> int { return e && a ? !q : q; }},
        {"Q.D = A; Q.CE = E & B; Q.SR = R;", ".D, .SR, .CE",
         [](bool a, bool b, bool e, bool r, bool q) -> int { return e && b ? a && !r : q; }},
        {"Q.K = B; TABLE [A,E] => [Q.J] { 'b'1X => 'b'1; 'b'00 => 'b'X; }", ".J, .K",
         [](bool a, bool b, bool e, bool, bool q) { return q        ? !b
                                                           : a || e ? static_cast<int>(a)
                                                                    : -1; }},
    };
    for (const auto& test : cases) {
        for (const std::string pin : {"Q", "!Q"}) {
            const auto done = CompileFor(
                "G22V10", "PIN 1=C; PIN [2..5]=[A,B,E,R]; PIN 23=" + pin + "; Q.CK=C;\n" + test.Body, "jxm4");
            ASSERT_TRUE(done->Run->Ok()) << test.Body << done->Lines().front();
            EXPECT_TRUE(base::Contains(done->Text(".DOC"),
                                       std::string("Q is a D register, built from ") + test.Built + "\r\n"))
                << test.Body;
            const test::Chip chip("22V10", test::ReadJedec(done->Text(".JED")).Fuses);
            for (unsigned value = 0; value < 32; ++value) {
                bool bits[5];
                for (unsigned i = 0; i < 5; ++i) bits[i] = (value >> i & 1) != 0;
                std::vector<bool> levels(25);
                for (std::size_t i = 0; i < 4; ++i) levels[2 + i] = bits[i];
                levels[23] = bits[4] != (pin == "!Q");
                const int next = test.Next(bits[0], bits[1], bits[2], bits[3], bits[4]);
                EXPECT_TRUE(next < 0 || (chip.Next(23, levels) != (pin == "!Q")) == (next == 1))
                    << test.Body << pin << value;
            }
        }
    }
}

// What no reduction mends ends with a device that does, and a run for that has no error.
TEST(Fitted, RefusalsNameADeviceThatWouldDo) {
    const struct {
        const char *Device, *Body, *Other;
    } cases[] = {
        {"G16V8S", "Q.D = A; Q.CK = K;", "G16V8"},
        {"P10L8", "Q = !(A # B # C);", "P10H8"},
        {"P16L8", "Q = A # B; Q.AR = K;", ""},
        {"P16R4", "Q.D = A; Q.CK = K; Q.AR = B;", "P18CV8"},
        {"G16V8", "Q = [A,B,C,E,G]:$;", "G22V10"},
        {"G22V10", "Q.L = A;", ""},
        {"G16V8", "Q.D = A; Q.CK = K; FUSE(3000,1);", ""},
    };
    const auto compile = [](const std::string& device, const std::string& body) {
        return CompileFor(device, "PIN=[K,A,B,C,E,G,Q];\n" + body, "m2");
    };
    for (const auto& test : cases) {
        const auto done = compile(test.Device, test.Body);
        ASSERT_FALSE(done->Run->Ok()) << test.Body;
        const std::string line = done->Lines().front();
        const std::string told = "; would fit ";
        const std::size_t at = line.find(told);
        EXPECT_EQ(
            at == line.npos ? "" : line.substr(at + told.size(), line.find(" (T.PLD") - at - told.size()),
            test.Other)
            << line;
        EXPECT_TRUE(*test.Other == 0 || compile(test.Other, test.Body)->Run->Ok()) << test.Body;
    }
}

// The fitter's messages stand at the equation that they name, else where the name is declared.
TEST(Fitted, MessagesNameTheirLine) {
    const struct {
        const char *Device, *Body, *Code;
    } cases[] = {
        {"P16L8", "PIN 2=A;\nPIN 19=Y;\nPIN 18=Z;\nZ = Y;\nY = A;", "7206tc:3"},
        {"G22V10", "PIN 1=C; PIN 2=A;\nPIN 23=Q;\n\nQ.L = A;", "7203tc:5"},
        {"G16V8", "PIN 2=A;\nPIN 3=Y;\nY = A;", "7202tc:3"},
        {"G22V10", "PIN 1=C; PIN [2,3]=[A,B];\nPIN 14=Q;\nQ.CK = C;\nQ.D = A;\nQ.AR = A # B;", "7209tc:6"},
    };
    for (const auto& test : cases)
        EXPECT_EQ(CompileFor(test.Device, test.Body, "jm1")->Codes(), std::vector<std::string>{test.Code});
}
