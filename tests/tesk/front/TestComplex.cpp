#include <gtest/gtest.h>

#include <random>

#include "Support.h"
#include "base/Text.h"
#include "cpld/FuseMap.h"
#include "front/Complex.h"
#include "front/Outputs.h"
#include "front/Proving.h"

// Designs in the complex devices; each compile ends with the proof of what the fuses say.

namespace {

using Random = std::mt19937;

std::string Pick(Random& random, const std::vector<std::string>& from) {
    return from[random() % from.size()];
}

std::string AnySum(Random& random, const std::vector<std::string>& names, std::size_t terms) {
    std::string sum;
    for (std::size_t i = 1 + random() % terms; i > 0; --i) {
        sum += sum.empty() ? "" : " # ";
        for (std::size_t k = 1 + random() % 3; k > 0; --k)
            sum += (random() % 2 != 0 ? "!" : "") + Pick(random, names) + (k > 1 ? " & " : "");
    }
    return sum;
}

// Registers of all kinds with clocks, enables and resets from pins and from terms.
std::string AnyDesign(Random& random, std::size_t functions) {
    std::vector<std::string> names{"CLK", "RST", "A", "B", "C", "D", "E"};
    std::string text = "PIN = [CLK, !RST, A, B, C, D, E];\n";
    const std::vector<std::string> kinds{"", "", ".D", ".D", ".T", ".J", ".S", ".L"};
    std::vector<std::pair<std::string, std::string>> made;
    for (std::size_t i = 0; i < functions; ++i) {
        const std::string name = "F" + std::to_string(i);
        text += (random() % 4 == 0 ? "NODE " : random() % 3 == 0 ? "PIN = !" : "PIN = ") + name + ";\n";
        made.emplace_back(name, Pick(random, kinds));
    }
    const auto some = [&](const std::string& target, unsigned of, std::size_t terms) {
        if (random() % of == 0) text += target + " = " + AnySum(random, names, terms) + ";\n";
    };
    for (const auto& [name, kind] : made) {
        const bool isNode = text.find("NODE " + name + ";") != text.npos;
        text += name + kind + " = " + AnySum(random, names, random() % 5 == 0 ? 14 : 4) + ";\n";
        if (kind == ".J") some(name + ".K", 1, 3);
        if (kind == ".S") some(name + ".R", 1, 3);
        if (!isNode) some(name + ".OE", 4, 1);
        if (kind.empty()) {
            names.push_back(name);
            continue;
        }
        const bool isLatch = kind == ".L";
        text += name + (isLatch ? ".LE" : ".CK") + " = " +
                (random() % 3 == 0 ? AnySum(random, names, 2) : std::string("CLK")) + ";\n";
        if (!isLatch) some(name + ".CE", 3, 2);
        if (!isLatch) some(name + ".SR", 6, 1);
        if (!isLatch) some(name + ".SP", 6, 1);
        if (random() % 3 == 0) text += name + ".AR = RST;\n";
        some(name + ".AP", 6, 1);
        names.push_back(name);
    }
    return text;
}

std::string FirstError(const Compiled& done) {
    for (const auto& message : done.Run->Said.Messages())
        if (message.Level == model::Severity::Error) return message.Text;
    return {};
}

}  // namespace

TEST(Complex, RandomDesignsAreProved) {
    Random random(17);
    std::size_t fitted = 0;
    constexpr std::size_t rounds = 40;
    for (std::size_t i = 0; i < rounds; ++i) {
        const bool isLarge = i % 4 == 0;
        const auto text = AnyDesign(random, isLarge ? 12 + random() % 10 : 4 + random() % 8);
        const auto done = CompileFor(isLarge ? "C1504P84" : "c1502t44", text, "jm4");
        const auto codes = done->Codes();
        const auto has = [&](const char* code) {
            return std::any_of(codes.begin(), codes.end(),
                               [&](const std::string& one) { return one.starts_with(code); });
        };
        ASSERT_FALSE(has("7501tc") || has("7502tc") || has("9001tc"))
            << ::testing::PrintToString(done->Lines()) << "\n"
            << text;
        fitted += done->Run->Ok() ? 1 : 0;
        EXPECT_EQ(done->Run->Ok(), done->Files.Texts.contains("T.SVF")) << FirstError(*done);
    }
    EXPECT_GE(fitted, rounds * 9 / 10);
}

// What changes a term that is used is found.
TEST(Complex, ProofFindsChangedFuses) {
    const auto done =
        CompileFor("C1502",
                   "PIN=[CLK,A,B,C]; PIN=[X,!Y,Q,R]; NODE N;\n"
                   "X = A & B # C; X.OE = B & !C; Y = A & C; N = A & B & !C;\n"
                   "Q.D = N # Q & A; Q.CK = CLK; Q.AR = B & C; R.T = A; R.CK = A & CLK; R.CE = B;",
                   "jm4");
    ASSERT_TRUE(done->Run->Ok()) << FirstError(*done);
    front::Fitted fitted = *done->Run->Fit;
    const auto& complex = *fitted.Complex;
    std::size_t changed = 0;
    for (std::size_t cell = 0; cell < complex.Settled.Cells.size(); ++cell)
        for (std::size_t term = 0; term < cpld::CellTerms; ++term) {
            if (complex.Settled.Cells[cell].Terms[term].all()) continue;
            auto other = complex.Settled;
            other.Cells[cell].Terms[term].flip();  // each literal turned round, or always false
            fitted.Result.Fuses = cpld::WriteFuses(complex.Device, other);
            front::Listener silent;
            front::Report report(silent);
            const auto jedec = front::JedecText(done->Run->Result(), done->Run->Options, fitted);
            EXPECT_FALSE(front::ProveMap(done->Run->Result(), fitted, jedec, report)) << cell << " " << term;
            ++changed;
        }
    EXPECT_GE(changed, 10u);
}

TEST(Complex, PropertiesReachTheFuses) {
    const auto done =
        CompileFor("C1502T44",
                   "PIN=[A,B]; PIN=[X,Y]; X = A; Y = A & B; PROPERTY SLEW X = FAST;\n"
                   "PROPERTY driver [X,Y] = open_drain; PROPERTY POWER = LOW; PROPERTY KEEPER = OFF;\n"
                   "PROPERTY PULLUP = ON; PROPERTY SIGNATURE = 'h'12AB; PROPERTY SLEW A = FAST;",
                   "jg");
    ASSERT_TRUE(done->Run->Ok()) << FirstError(*done);
    EXPECT_EQ(done->Codes().front(), "1118ta:4");
    const auto& complex = *done->Run->Fit->Complex;
    const auto read = cpld::ReadConfiguration(complex.Device, done->Run->Fit->Result.Fuses);
    EXPECT_EQ(read.Signature, 0x12AB);
    EXPECT_EQ(read.Settings.Pins, cpld::Termination::HighZ);
    EXPECT_EQ(read.Settings.Tms, cpld::PullUp::PullUp);
    EXPECT_EQ(read.Settings.ReadProtection, cpld::Switched::On);
    for (std::size_t i = 0; i < read.Cells.size(); ++i) {
        const bool isX = complex.Names.Pads[i] == "X", isY = complex.Names.Pads[i] == "Y";
        EXPECT_EQ(read.Cells[i].SlewRate == cpld::Slew::Fast, isX) << i;
        EXPECT_EQ(read.Cells[i].OutputDriver == cpld::Driver::OpenDrain, isX || isY) << i;
        EXPECT_EQ(read.Cells[i].LowPower == cpld::Switched::On, isX || isY) << i;
    }
}

TEST(Complex, SaysWhatDoesNotFit) {
    std::string many = "PIN=A;\n";
    for (int i = 0; i < 33; ++i)
        many += "PIN=CK" + std::to_string(i) + "; NODE N" + std::to_string(i) + ";\n";
    const std::tuple<const char*, std::string, const char*> rows[] = {
        {"C1502", "PIN 3=A; PIN=X; X=A;",
         "Pin can't be used so: A, pin 3 of C1502P44 is none for signals; a free choice of pins would fit"},
        {"C1502", "PIN=A; PIN 7=X; X=A;",
         "Pin can't be used so: X, pin 7 of C1502P44 is one of the JTAG pins; a free choice of pins would "
         "fit"},
        {"C1502T44", "PIN=A; PIN 37=X; X=A;",
         "Pin can't be used so: X, pin 37 of C1502T44 is an input; a free choice of pins would fit"},
        {"C1502P68", "PIN=A; PIN=X; X=A;", "No such package: P68, C1502 is made in P44, T44"},
        {"C1502", "PIN=A; PIN=X; X=A; FUSE(1,0);", "Fuses can't be forced: C1502"},
        {"C1502", "PIN=A; PIN=X; X.D=A;", "Register has no clock: X.CK"},
        {"C1502", "PROPERTY KEEPER X = OFF; PIN=A; PIN=X; X=A;",
         "Property not understood: KEEPER is one of the whole device"},
        {"C1502", many, "Too many pins: 34 names, C1502P44 has 32"},
    };
    for (const auto& [device, body, error] : rows) {
        std::string text = body;
        if (body == many)
            for (int i = 0; i < 33; ++i)
                text += "N" + std::to_string(i) + ".D = A; N" + std::to_string(i) + ".CK = CK" +
                        std::to_string(i) + ";\n";
        const auto done = CompileFor(device, text, "jm4");
        EXPECT_EQ(FirstError(*done), error);
        EXPECT_FALSE(done->Files.Texts.contains("T.JED") || done->Files.Texts.contains("T.FIT"));
    }
}

TEST(Complex, GivesJtagPinsAwayOnWordAlone) {
    const auto done = CompileFor("C1502", "PROPERTY JTAG = OFF; PIN=A; PIN 7=X; X=A;", "jm4");
    ASSERT_TRUE(done->Run->Ok()) << FirstError(*done);
    EXPECT_TRUE(done->Files.Texts.contains("T.JED"));
    EXPECT_FALSE(done->Files.Texts.contains("T.SVF"));
    EXPECT_EQ(done->Lines().front().substr(0, 57),
              "[4002tc] Warning: Output not written: .SVF, the JTAG pins");
}
