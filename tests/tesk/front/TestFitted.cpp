#include <gtest/gtest.h>

#include <random>

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

// The registers Q0 to Q3 at pins 20 to 23 of a P20X10, as the chip and as the reduced equations have them.
void CompareNextStates(const Compiled& done, bool low, std::mt19937& random) {
    const test::Chip chip("20X10", test::ReadJedec(done.Text(".JED")).Fuses);
    const Table table(done.Text(".PLA"));
    for (int sample = 0; sample < 100; ++sample) {
        std::map<std::string, bool> point;
        std::vector<bool> levels(25);
        const auto set = [&](const std::string& name, int pin, bool inverted) {
            point[name] = random() % 2;
            levels[static_cast<std::size_t>(pin)] = point[name] != inverted;
        };
        for (int i = 0; i < 6; ++i) set(std::string(1, "ABCELG"[i]), 2 + i, false);
        for (int i = 0; i < 4; ++i) set("Q" + std::to_string(i), 20 + i, low);
        for (const auto& output : table.Outputs) {
            if (output[0] != 'Q' || !output.ends_with(".D")) continue;
            EXPECT_EQ(chip.Next(20 + output[1] - '0', levels) != low, table.At(output, point) == '1')
                << output;
        }
    }
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

// Exclusive ors in the rows, kept as they are written or found for the device, give the equations' next
// states.
TEST(Fitted, ExclusiveOrsAreKeptOrFound) {
    const std::string count =
        "Q3.D = L & A # !L & (Q3 $ Q2 & Q1 & Q0); Q2.D = L & B # !L & (Q2 $ Q1 & Q0);\n"
        "Q1.D = L & C # !L & (Q1 $ Q0); Q0.D = L & E # !L & !Q0;";
    const std::string upDown =
        "Q3.D = Q3 $ (A & Q2 & Q1 & Q0 # B & !Q2 & !Q1 & !Q0); Q2.D = Q2 $ (A & Q1 & Q0 # "
        "B & !Q1 & !Q0);\nQ1.D = Q1 $ (A & Q0 # B & !Q0); Q0.D = Q0 $ (A # B);";
    const struct {
        std::string Pins, Body, Options, Rows;
    } cases[] = {
        {"PIN 20=Q0;", "Q0.D = (A # B & C) $ (E & L # !G);", "kx",
         "!Q0.D =>\r\n    !A & !B\r\n  # !A & !C\r\n  $ E & L\r\n"},
        {"PIN [20,21]=[!Q0,!Q1];", "T = B # C; Q0.D = !(A $ T); Q1.D = A $ B $ C $ E;", "kx", "  $ "},
        {"PIN [23..20]=[Q3..0];",
         "Q3.T = Q2 & Q1 & Q0 & A; Q2.T = Q1 & Q0 & A; Q1.T = Q0 & A; Q0.T = A; Q3.CE = E;", "", "  $ "},
        {"PIN [23..20]=[Q3..0];", count, "", "  $ "},
        {"PIN [20..23]=[!Q0,!Q1,!Q2,!Q3];", count, "m4", "  $ "},
        {"PIN [23..20]=[Q3..0];", upDown, "", "  $ "},
        {"PIN [23..20]=[Q3..0];", upDown, "kx", "  $ "},
        {"PIN 20=!Q0;", "Q0.D = A & B # !A & C & E # !B & !C & L & G;", "", "  $ "},
        {"PIN 20=!Q0;", "Q0.D = A & B # C & E;", "kb", "Q0.D =>\r\n    C & E\r\n  # A & B\r\n\r\n"},
        {"PIN 20=Q0;", "Q0.D = A & B # C & E;", "", "  $ 'b'1\r\n"},
    };
    std::mt19937 random(3);
    for (const auto& test : cases) {
        const auto pins = "PIN 1=K; PIN [2..7]=[A,B,C,E,L,G]; " + test.Pins + "\n";
        const auto done = CompileFor("P20X10", pins + test.Body, "bjx" + test.Options);
        ASSERT_TRUE(done->Run->Ok()) << test.Body << done->Lines().front();
        EXPECT_TRUE(base::Contains(done->Text(".DOC"), test.Rows)) << test.Rows << done->Text(".DOC");
        CompareNextStates(*done, base::Contains(test.Pins, "!"), random);
        if (HasFailure()) return;
    }
    const auto none = CompileFor("G22V10", "PIN [2,3]=[A,B]; PIN 23=Q; Q = A $ B;", "jm1kx");
    EXPECT_TRUE(base::Contains(none->Lines().front(), "3002tm")) << none->Lines().front();
}

// A design that fits, and what takes it one over a limit: what is told is the need, the limit and a device
// that takes it, if there is one.
TEST(Fitted, OneOverALimitIsToldWithADeviceThatWouldDo) {
    const struct {
        const char *Device, *Body, *Over, *Told, *Other;
    } cases[] = {
        {"P10H8", "PIN=Y; Y = A # B;", "APPEND Y = C;",
         "Too many product terms: Y needs 3, the limit of pin 12 of P10H8 (combinational) is 2; fits with no "
         "level of reduction",
         "P10L8"},
        {"P20X10", "PIN 20=!Y; Y.D = A & B # C & E;", "APPEND Y.D = G & H;",
         "Too many product terms: Y.D needs 3, the limit of pin 20 of P20X10 (registered) is 2 $ 2; fits "
         "with no level of reduction",
         "P20R4"},
        {"P16L8", "PIN 19=!Y; Y = A;", "PIN 21=!Z; Z = A;", "Pin can't be used so: Z, P16L8 has 20 pins",
         "P6L16"},
        {"P16R4", "PIN=[Q3..0]; [Q3..0].D = A;", "PIN=Z; Z.D = A;",
         "No pin left: Z, P16R4 has 4 that could take it", "P16R6"},
        {"P16L8", "PIN=[!Y7..0]; [Y7..0] = A;", "PIN=!Z; Z = A;",
         "No pin left: Z, P16L8 has 8 that could take it", "P6L16"},
        {"P10L8", "PIN=[D3..0]; PIN=!Y; Y = A & [D3..0]:&;", "PIN=D4; PIN=!Z; Z = D4;",
         "No pin left: D4, P10L8 has 10 that could take it", "P12L6"},
        {"P16L8", "PIN=!Y; Y = A; Y.OE = B;", "APPEND Y.OE = C;",
         "Output enable does not fit: Y.OE needs 2 terms, the limit is 1", ""},
        {"P10H8", "PIN=Y; Y = A;", "Y.OE = B;",
         "Output enable does not fit: Y.OE, outputs of P10H8 (combinational) are always enabled", "P16L8"},
        {"P16R4", "PIN=[!Y,!Z]; Y.D = A; Y.OE = !B;", "Z.D = A; Z.OE = C;",
         "Output enable does not fit: Z.OE, P16R4 enables its registers with pin 11 low", "P18CV8"},
        {"G22V10", "PIN=[Y,Z]; Y.D = A; Y.CK = B;", "Z.D = A; Z.CK = C;",
         "Clock does not fit: Z.CK is C, G22V10 has one clock, B at pin 1", "G20RA10"},
        {"G22V10", "PIN=Y; Y.D = A; Y.AR = B;", "APPEND Y.AR = C;",
         "Reset or preset does not fit: Y.AR needs 2 terms, the limit of G22V10 is 1", ""},
        {"G22V10", "PIN=[Y,Z]; Y.D = A; Y.SP = B;", "Z.D = A; Z.SP = C;",
         "Reset or preset does not fit: Z.SP differs from Y.SP, G22V10 has one for all registers", ""},
        {"P16R8", "PIN=!Y; Y.D = A;", "Y.AR = B;", "Extension that the device lacks: Y.AR, P16R8", "P18CV8"},
        {"P16L8", "PIN 19=!Y; Y = A;", "PIN=!Z; Z = Y;", "No feedback: Y, pin 19 of P16L8 (combinational)",
         "P16R4"},
        {"P16L8", "PIN=[!Y,!Z]; Y = A;", "Z.D = B;", "Extension that the device lacks: Z.D, P16L8", "P16R4"},
        {"P16R8", "PIN=[!Y,!Z]; Y.D = A;", "Z = B;",
         "Pin can't be used so: Z, pin 12 of P16R8 (registered) is always a register", "P16R4"},
        {"P16C1", "PIN 16=Y; Y = A & B;", "PIN 15=Z; Z = A # B;",
         "Two functions for one sum: Z differs from Y, which has the sum of pin 15 of P16C1 (combinational)",
         "P10L8"},
        {"G22V10", "PIN=[Y,Z]; Y.D = A;", "Z.L = B;", "Extension that the device lacks: Z.L, G22V10", ""},
        {"G16V8", "PIN=Y; Y = A; FUSE(2193,0);", "FUSE(2194,1);", "No such fuse: 2194, G16V8 has 2194 fuses",
         ""},
    };
    for (const auto& test : cases) {
        const auto compile = [&](const std::string& device, const std::string& over) {
            return CompileFor(device, "PIN=[A,B,C,E,G,H];\n" + std::string(test.Body) + over, "m2");
        };
        EXPECT_TRUE(compile(test.Device, "")->Run->Ok())
            << test.Body << compile(test.Device, "")->Lines().front();
        const auto done = compile(test.Device, test.Over);
        ASSERT_FALSE(done->Run->Ok()) << test.Over;
        const auto line = done->Lines().front();
        const auto told = std::string(test.Told) + (*test.Other == 0 ? "" : "; would fit ") + test.Other;
        EXPECT_TRUE(base::Contains(line, " Error: " + told + " (T.PLD")) << line;
        EXPECT_TRUE(*test.Other == 0 || compile(test.Other, test.Over)->Run->Ok()) << test.Over;
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
