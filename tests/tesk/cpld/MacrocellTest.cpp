#include <gtest/gtest.h>

#include "cpld/Macrocell.h"

namespace {

using namespace cpld;

// Measured on the device: for each setting of pt1_mux, pt2_mux, xor_a_mux, xor_b_mux and xor_invert (bits 0
// to 4, the state of the fuse) output, cascade and foldback at the 16 values of PT1, PT2, PT4 and the
// register.
struct Measured {
    unsigned Output, Cascade, Foldback;
};
constexpr Measured measured[32] = {
    {0xFEFE, 0x0000, 0xFFFF}, {0xFCFC, 0x0000, 0x5555}, {0xFAFA, 0x0000, 0xFFFF}, {0xF0F0, 0x0000, 0x5555},
    {0xFFFF, 0xFEFE, 0xFFFF}, {0xFFFF, 0xFCFC, 0x5555}, {0xCCCC, 0xFAFA, 0xFFFF}, {0xCCCC, 0xF0F0, 0x5555},
    {0x01FE, 0x0000, 0xFFFF}, {0x03FC, 0x0000, 0x5555}, {0x05FA, 0x0000, 0xFFFF}, {0x0FF0, 0x0000, 0x5555},
    {0x00FF, 0xFEFE, 0xFFFF}, {0x00FF, 0xFCFC, 0x5555}, {0x33CC, 0xFAFA, 0xFFFF}, {0x33CC, 0xF0F0, 0x5555},
    {0x0101, 0x0000, 0xFFFF}, {0x0303, 0x0000, 0x5555}, {0x3636, 0x0000, 0xFFFF}, {0x3C3C, 0x0000, 0x5555},
    {0x0000, 0xFEFE, 0xFFFF}, {0x5555, 0xFCFC, 0xFFFF}, {0x3333, 0xFAFA, 0xFFFF}, {0x6666, 0xF0F0, 0xFFFF},
    {0xFE01, 0x0000, 0xFFFF}, {0xFC03, 0x0000, 0x5555}, {0xFA05, 0x0000, 0xFFFF}, {0xF00F, 0x0000, 0x5555},
    {0xFF00, 0xFEFE, 0xFFFF}, {0xFF00, 0xFCFC, 0x5555}, {0xCC33, 0xFAFA, 0xFFFF}, {0xCC33, 0xF0F0, 0x5555}};

TEST(Macrocell, DoesWhatWasMeasured) {
    for (unsigned setting = 0; setting < 32; ++setting) {
        Cell cell;
        cell.Pt1 = static_cast<Pt1Mux>(setting & 1);
        cell.Pt2 = static_cast<Pt2Mux>(setting >> 1 & 1);
        cell.A = static_cast<XorA>(setting >> 2 & 1);
        cell.B = static_cast<XorB>(setting >> 3 & 1);
        cell.Invert = (setting >> 4 & 1) != 0 ? Switched::Off : Switched::On;
        Measured seen{0, 0, 0};
        for (unsigned i = 0; i < 16; ++i) {
            CellInputs in;
            in.Terms = {(i & 1) != 0, (i & 2) != 0, false, (i & 4) != 0, false};
            in.State = (i & 8) != 0;
            const CellOutputs out = Evaluate(cell, in);
            seen.Output |= static_cast<unsigned>(out.Output) << i;
            seen.Cascade |= static_cast<unsigned>(out.Cascade) << i;
            seen.Foldback |= static_cast<unsigned>(out.Foldback) << i;
        }
        EXPECT_EQ(seen.Output, measured[setting].Output) << setting;
        EXPECT_EQ(seen.Cascade, measured[setting].Cascade) << setting;
        EXPECT_EQ(seen.Foldback, measured[setting].Foldback) << setting;
    }
}

Cell Registered(Pt4Mux mux, Pt4Func function) {
    Cell cell;
    cell.Register = Storage::Dff;
    cell.Pt4 = mux;
    cell.Func4 = function;
    return cell;
}

// PT1 is the data; the clock of each row rises.
TEST(Macrocell, TakesTheNextStateAtItsClock) {
    struct Row {
        const char* What;
        Cell Options;
        bool Pt4, Global, Before;
        bool Takes;
    };
    Cell latch = Registered(Pt4Mux::ClkCe, Pt4Func::Clk), open = Registered(Pt4Mux::Sum, Pt4Func::Clk);
    latch.Register = open.Register = Storage::Latch;
    const Row rows[] = {
        {"term rises", Registered(Pt4Mux::ClkCe, Pt4Func::Clk), true, false, false, true},
        {"term stays", Registered(Pt4Mux::ClkCe, Pt4Func::Clk), true, false, true, false},
        {"global rises, enabled", Registered(Pt4Mux::ClkCe, Pt4Func::Ce), true, true, false, true},
        {"global rises, not enabled", Registered(Pt4Mux::ClkCe, Pt4Func::Ce), false, true, false, false},
        {"global rises", Registered(Pt4Mux::Sum, Pt4Func::Ce), false, true, false, true},
        {"constant", Registered(Pt4Mux::Sum, Pt4Func::Clk), false, true, true, false},
        {"open latch", latch, true, false, true, true},
        {"closed latch", latch, false, true, false, false},
        {"latch that is always open", open, false, false, true, true},
    };
    for (const Row& row : rows) {
        CellInputs in;
        in.Terms = {true, false, false, row.Pt4, false};
        in.Clocks = {false, row.Global, false};
        in.ClockBefore = row.Before;
        EXPECT_EQ(Evaluate(row.Options, in).Next, row.Takes) << row.What;
    }
}

TEST(Macrocell, ControlsItsRegisterAndItsPin) {
    Cell cell = Registered(Pt4Mux::Sum, Pt4Func::Clk);
    cell.Pt3 = Pt3Mux::Ar;
    cell.Pt5 = Pt5Mux::AsOe;
    CellInputs in;
    in.Terms[4] = true;
    EXPECT_TRUE(Evaluate(cell, in).Next);
    in.Terms[2] = true;
    EXPECT_FALSE(Evaluate(cell, in).Next) << "the reset wins";
    in = {};
    in.State = in.GlobalClear = in.ClockBefore = true;
    EXPECT_TRUE(Evaluate(cell, in).Next);
    cell.GlobalClear = Switched::On;
    EXPECT_FALSE(Evaluate(cell, in).Next);

    in = {};
    in.Pad = in.Enables[3] = true;
    cell.Data = DMux::Fast;
    cell.Output = Path::Sync;
    EXPECT_TRUE(Evaluate(cell, in).Data);
    cell.Output = Path::Comb;
    EXPECT_FALSE(Evaluate(cell, in).Data);
    for (const auto& [enable, on] : {std::pair(Enable::Gnd, false),
                                     {Enable::Goe3, false},
                                     {Enable::Goe4, true},
                                     {Enable::VccPt5, true}}) {
        cell.OutputEnable = enable;
        EXPECT_EQ(Evaluate(cell, in).OutputEnabled, on);
    }
    cell.Func5 = Pt5Func::Oe;
    EXPECT_FALSE(Evaluate(cell, in).OutputEnabled);
    EXPECT_FALSE(Evaluate(cell, in).Set);
}

}  // namespace
