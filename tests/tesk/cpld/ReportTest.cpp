#include <gtest/gtest.h>

#include "Support.h"
#include "base/Text.h"
#include "cpld/Report.h"

namespace {

using namespace cpld;

// A counter bit by a T register, a sum with a cascade and a foldback, an enabled output.
struct SmallDesign {
    explicit SmallDesign(const Device& device) : From(EmptyConfiguration(device)) {
        Names.Package = "P44";
        Names.Pads.resize(device.Pads.size());
        Names.Cells.resize(device.CellCount());
        const auto name = [&](std::size_t pad, const char* text) { Names.Pads[pad] = text; };
        name(device.Special.Clocks[0], "CLK");
        name(0, "Q0");
        name(2, "SUM");
        name(12, "A");
        name(31, "B");
        Bring(device, {Signal::Kind::Feedback, 0}, 0);
        Bring(device, {Signal::Kind::Pad, 12}, 1);
        for (const std::size_t cell : {0u, 1u, 2u}) From.Cells[cell].TermPower = Switched::On;
        Cell& bit = From.Cells[0];
        bit.Register = Storage::Dff;
        bit.Output = bit.Feedback = Path::Sync;
        bit.B = XorB::FfQn;
        bit.Func4 = Pt4Func::Ce;
        bit.GlobalClock = Clock::Gclk1;
        bit.OutputEnable = Enable::VccPt5;
        bit.Terms[0] = Read[1];
        Cell& first = From.Cells[1];
        first.A = XorA::VccPt2;
        first.Pt1 = Pt1Mux::Flb;
        first.Terms[0] = first.Terms[2] = Read[0];
        Cell& sum = From.Cells[2];
        sum.Pt5 = Pt5Mux::AsOe;
        sum.Func5 = Pt5Func::Oe;
        sum.OutputEnable = Enable::VccPt5;
        sum.Terms[1] = Read[0] | Read[1];
        sum.Terms[3] = Term().set(1);
        sum.Terms[4] = Read[1];
        Names.Cells[1] = "PART";
    }

    void Bring(const Device& device, Signal signal, std::size_t read) {
        for (std::size_t i = 0; i < BlockSwitches; ++i) {
            const Switch& into = device.Blocks[0].Switches[i];
            for (std::size_t k = 0; k < into.Signals.size(); ++k) {
                if (into.Signals[k] != signal || From.Switches[0][i] != NoSignal) continue;
                From.Switches[0][i] = static_cast<int>(k);
                Read[read] = Term().set(into.TrueColumn);
                return;
            }
        }
    }

    Configuration From;
    DesignNames Names;
    Term Read[2];
};

TEST(CpldReport, TellsASmallDesign) {
    const Device& device = test::Devices()[0];
    const SmallDesign design(device);
    EXPECT_EQ(WriteReport(device, design.From, design.Names),
              base::ToCrLf(R"(C1502P44: 3 of 32 macrocells, 9 of 36 pins

        S                           C
        U       Q                   L
        M       0   -               K   -
        6   5   4   3   2   1   44  43  42  41  40
       +--------------------------------------------+
TDI   7|                                            |39
      8|                                            |38  TDO
      9|                                            |37
  -  10|                                            |36
     11|                                            |35  -
     12|                                            |34
TMS  13|                                            |33
     14|                                            |32  TCK
  -  15|                                            |31
     16|                                            |30  -
     17|                                            |29
       +--------------------------------------------+
        18  19  20  21  22  23  24  25  26  27  28
        A               -   -   B

Terms PT1 to PT5: S sum, X exclusive or, F foldback, R reset, P preset, C clock, E clock enable,
O output enable, . not used

Block A
Cell  Pin  Terms  Cascade  Register       Signal
MC1   4    S....  -        T GCLK1        Q0
MC2   -    F.S..  out      -              PART
MC3   6    .S.SO  in       -              SUM

Block B: none

GCLK1 CLK

Switches of block A: 27=A 33=Q0
Switches of block B: none

Left: 29 macrocells, 27 pins
  block A: 13 macrocells, 74 terms, 38 switches
  block B: 16 macrocells, 80 terms, 40 switches

Worst path: 2 levels, Q0 > foldback of MC2 > SUM
)"));
}

// The first pins of the top and of the bottom.
TEST(CpldReport, DrawsPackages) {
    const std::tuple<const char*, const char*, const char*> rows[] = {{"T44", "44", "12"},
                                                                      {"P68", "9", "27"},
                                                                      {"P84", "11", "33"},
                                                                      {"T100", "100", "26"},
                                                                      {"Q100", "100", "31"}};
    for (const auto& [suffix, top, bottom] : rows) {
        const Package& package = *test::Devices()[1].FindPackage(suffix);
        const auto text =
            DrawPackage(package, std::vector<std::string>(static_cast<std::size_t>(package.PinCount) + 1));
        const auto lines = base::LineViews(text);
        EXPECT_EQ(base::Words(lines.front()).front(), top) << suffix;
        EXPECT_EQ(base::Words(lines.back()).front(), bottom) << suffix;
    }
}

TEST(CpldReport, FindsALoopWithoutARegister) {
    const Device& device = test::Devices()[0];
    SmallDesign design(device);
    design.From.Cells[0].Output = design.From.Cells[0].Feedback = Path::Comb;
    design.From.Cells[0].B = XorB::VccPt12;
    design.From.Cells[0].Terms[0] = design.Read[0];
    const auto text = WriteReport(device, design.From, design.Names);
    EXPECT_NE(text.find("reads itself without a register"), text.npos);
}

}  // namespace
