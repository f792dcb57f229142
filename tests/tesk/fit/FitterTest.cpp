#include "fit/Fitter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "Chip.h"
#include "Designs.h"
#include "fit/Document.h"
#include "fit/Jedec.h"

namespace {

using test::Chip;
using test::DeviceOf;
using test::Holds;
using test::LowAt;
using test::MakeDesign;
using test::TrueOf;

void CheckOwnRows(const Chip& chip, const fit::Design& design, const fit::Fit& fit, std::size_t signal,
                  const std::vector<bool>& asserted, const std::vector<bool>& levels) {
    const int pin = fit.Placements[signal].Pin;
    const bool zero = LowAt(design, fit, signal);  // the pin's level while the name is 0
    const auto holds = [&](fit::Input input) {
        const auto* sum = TrueOf(design, signal, input);
        return sum != nullptr && Holds(*sum, asserted);
    };
    ASSERT_EQ(chip.Clock(pin, levels), holds(fit::Input::Ck)) << pin;
    ASSERT_EQ(chip.Forces(pin, zero, levels), holds(fit::Input::Ar)) << pin;
    ASSERT_EQ(chip.Forces(pin, !zero, levels), holds(fit::Input::Ap)) << pin;
}

// Programs the chip by the JEDEC text and compares it with the design's functions for random states of all
// signals.
void CheckAgainstChip(const std::string& mnemonic, const std::string& kind, const fit::Design& design,
                      const fit::Fit& fit, std::mt19937& random) {
    const auto jedec = test::ReadJedec(fit::WriteJedec(DeviceOf(mnemonic), fit, {{{"Name", "T*\n"}}, true}));
    ASSERT_TRUE(jedec.Good && jedec.Secure);
    ASSERT_EQ(jedec.Fuses, fit.Fuses);
    const Chip chip(kind, jedec.Fuses);
    auto whole = design;
    whole.Functions.insert(whole.Functions.end(), fit.Implied.begin(), fit.Implied.end());
    for (int sample = 0; sample < 30; ++sample) {
        std::vector<bool> asserted(design.Signals.size());
        std::vector<bool> levels(static_cast<std::size_t>(jedec.Pins) + 1);
        for (std::size_t level = 0; level < levels.size(); ++level) levels[level] = random() % 2;
        if (kind == "20RA10") levels[13] = false;
        for (std::size_t i = 0; i < asserted.size(); ++i) {
            asserted[i] = random() % 2;
            levels[static_cast<std::size_t>(fit.Placements[i].Pin)] = asserted[i] != LowAt(design, fit, i);
        }
        for (std::size_t i = 0; i < asserted.size(); ++i) {
            const auto& signal = design.Signals[i];
            const bool registered = signal.Register != fit::RegisterKind::None;
            const auto* data = TrueOf(design, i, registered ? fit::Input::D : fit::Input::Out);
            if (data == nullptr) continue;
            const int pin = fit.Placements[i].Pin;
            ASSERT_EQ(chip.Next(pin, levels), Holds(*data, asserted) != LowAt(design, fit, i))
                << mnemonic << " " << pin;
            if (kind == "20RA10" && registered) CheckOwnRows(chip, design, fit, i, asserted, levels);
            const auto* enable = TrueOf(whole, i, fit::Input::Oe);
            const bool enabled = enable == nullptr || Holds(*enable, asserted);
            if (registered && kind != "22V10" && kind != "20RA10") continue;
            if (signal.Node && kind == "20RA10" && levels[13]) continue;
            ASSERT_EQ(chip.Enabled(pin, levels), enabled) << mnemonic << " " << pin;
        }
    }
    const auto outputs = chip.Outputs();
    for (std::size_t i = 0; i < design.Signals.size(); ++i) {
        const auto use = fit.Placements[i].Use;
        for (const auto& output : outputs) {
            if (output.Pin != fit.Placements[i].Pin) continue;
            EXPECT_TRUE(use == fit::UseKind::Input || output.Registered == (use == fit::UseKind::Register));
            EXPECT_FALSE(use == fit::UseKind::Input && output.Drives) << mnemonic << " " << output.Pin;
        }
    }
}

TEST(Fitter, RandomDesignsCompareWithTheProgrammedChip) {
    std::mt19937 random(17);
    for (const auto& d : test::Families()) {
        if (*d.Kind == 0) continue;
        int fitted = 0;
        for (int round = 0; round < 3000 && fitted < 12; ++round) {
            const auto design = test::RandomDesign(random, DeviceOf(d.Mnemonic));
            const auto choose = static_cast<fit::Polarity>(random() % 3);
            const auto fit = fit::FitDesign(DeviceOf(d.Mnemonic), design, {choose});
            EXPECT_EQ(fit.Ok(), !fit.Fuses.empty());
            if (!fit.Ok()) continue;
            ++fitted;
            CheckAgainstChip(d.Mnemonic, d.Kind, design, fit, random);
            if (HasFatalFailure()) return;
        }
        EXPECT_GE(fitted, 8) << d.Mnemonic;
    }
}

TEST(Fitter, ModeByUse) {
    const struct {
        const char* design;
        const char* mode;
    } cases[] = {
        {"1 A\n2 B\n12 Y\nY = A B\n", "simple"},
        {"1 A\n2 B\n12 Y\n13 Z\nY = A B\nZ = Y\n", "simple"},
        {"1 A\n2 B\n12 Y\nY = A\nY.OE = B\n", "complex"},
        {"1 A\n2 B\n15 Y\n13 Z\nY = A B\nZ = Y\n", "complex"},
        {"2 A\n12 Y\n15 X\n13 Z\nY = A\nX = A\nZ = Y X\n", "registered"},
        {"1 C\n2 A\n12 Q D\nQ.D = A\n", "registered"},
        {"1 A\n2 B\n3 C\n12 Y\nY = A B C + !A !B !C + A !B C + A B !C + !A B C + !A !B C + !A B !C + A !B "
         "!C\n",
         "simple"},
    };
    for (const auto& c : cases) {
        const auto fit = fit::FitDesign(DeviceOf("G16V8"), MakeDesign(c.design), {});
        EXPECT_TRUE(fit.Ok()) << c.design << (fit.Ok() ? "" : fit.Messages[0].Text);
        EXPECT_EQ(fit.Mode, c.mode) << c.design;
        EXPECT_EQ(Chip("16V8", fit.Fuses).Mode, c.mode);
    }
}

TEST(Fitter, WhatDoesNotFitIsToldWithNameNeedAndLimit) {
    const std::string nine = " = A B + C D + E F + G H + I A C + B D E + F G I + !A !C !E + !B !D !F\n";
    const std::string inputs = "1 CK\n2 A\n3 B\n4 C\n5 D\n6 E\n7 F\n8 G\n9 H\n11 I\n";
    const struct {
        const char* device;
        std::string design;
        const char* code;
        const char* text;
    } cases[] = {
        {"G16V8", inputs + "12 Y\nY" + nine, "7201tc",
         "Y needs 9, the limit of pin 12 of G16V8 (simple) is 8"},
        {"G16V8", inputs + "0 Y\nY" + nine, "7201tc", "Y needs 9"},
        {"G16V8", "2 A\n10 Y\nY = A\n", "7202tc", "pin 10 of G16V8"},
        {"G16V8", "2 A\n3 Y\nY = A\n", "7202tc", "pin 3 of G16V8 (simple) is no output"},
        {"G16V8", "1 A\n11 B\n12 Q D\nQ.D = A\n", "7202tc", "pin 1 of G16V8 (registered) is no input"},
        {"G22V10", "1 C\n2 A\n14 Q T\nQ.T = A\n", "7203tc", "Q.T, G22V10"},
        {"G16V8", "1 C\n2 A\n12 Q D\nQ.D = A\nQ.AR = A\n", "7203tc", "Q.AR, G16V8"},
        {"G16V8", "2 A\n12 Y\n12 Z\nY = A\nZ = A\n", "7204tc", "Y and Z at pin 12"},
        {"G16V8MA", "2 A\n12 Y\nnode N\nY = A\n0 Z\nZ = N\n", "7213tc", "N"},
        {"G16V8", "1 C\n2 A\n12 Q D\nQ.D = A\nQ.CK = A\n", "7207tc", "not pin 1"},
        {"G16V8", "1 C\n2 A\n12 Q D\nQ.D = A\nQ.CK = !C\n", "7207tc", "rising edge of pin 1"},
        {"G16V8", "1 C\n2 A\n11 E\n12 Q D\nQ.D = A\nQ.OE = E\n", "7208tc", "pin 11 low"},
        {"G22V10", "1 C\n2 A\n3 B\n14 Q D\n15 R D\nQ.D = A\nR.D = A\nQ.AR = A\nR.AR = B\n", "7209tc",
         "R.AR differs from Q.AR"},
        {"G22V10", "1 C\n2 A\n14 Q D\nQ.D = A\nQ.AR = A\nQ.SR = A\n", "7209tc", "Q, its .AR"},
        {"P20RA10", "2 A\n23 Q D\nQ.D = A\n", "7207tc", "Q needs a .CK, pin 23 of P20RA10"},
        {"P20RA10", "2 A\n3 B\n23 Q D\nQ.D = A\nQ.CK = A + B\n", "7207tc", "Q.CK needs 2 terms, the limit"},
        {"P20RA10", "2 A\n3 B\n23 Q D\nQ.D = A\nQ.CK = A\nQ.AP = A + B\n", "7209tc", "Q.AP needs 2 terms"},
        {"P20RA10", "2 A\n13 !E\n23 Y\nY = A\nY.OE = A\n", "7208tc", "only with pin 13 low, E"},
        {"P20RA10", "2 A\n13 !E\n23 Y\nY = A E\n", "7202tc", "pin 13 of P20RA10 (cells) is no input"},
        {"P20RA10", "2 A\n23 Q D\nQ.D = !Q\nQ.CK = A\nQ.OE = A\n", "7206tc", "read Q.IO"},
        {"P20RA10", "2 A\n3 B\n4 C\n5 D\n6 E\n23 Y\nY = A + B + C + D + E\n", "7201tc",
         "Y needs 5, the limit of pin 23 of P20RA10 (cells) is 4"},
        {"P18CV8", "1 C\n2 A\n12 Q D\n13 Y\nQ.D = A\nQ.OE = A\nY = Q Q.IO\n", "7206tc", "Q.IO, pin 12"},
        {"P18CV8",
         "2 A\n3 B\n4 C\n5 D\n6 E\n7 F\n8 G\n9 H\n11 I\n12 Y\nY = A + B + C + D + E + F + G + H + I\n",
         "7201tc", "Y needs 9, the limit of pin 12 of P18CV8 (cells) is 8"},
        {"F100", "9 A\n19 E\n10 Y\nY = A\nY.OE = E\n", "7208tc", "F100 enables its outputs with pin 19 low"},
        {"F100", "9 A\n10 Y\n11 Z\nY = A\nZ = Y\n", "7206tc", "Y, pin 10 of F100 (terms)"},
    };
    for (const auto& c : cases) {
        const auto fit = fit::FitDesign(DeviceOf(c.device), MakeDesign(c.design), {});
        ASSERT_FALSE(fit.Ok()) << c.design;
        EXPECT_EQ(fit.Messages[0].Number, c.code) << c.design << fit.Messages[0].Text;
        EXPECT_NE(fit.Messages[0].Text.find(c.text), std::string::npos) << fit.Messages[0].Text;
        EXPECT_TRUE(fit.Fuses.empty());
    }
}

TEST(Fitter, PinsOfOneSumTakeOneFunction) {
    const std::string head = "2 A\n3 B\n";
    const struct {
        const char *device, *design, *fault;
    } cases[] = {
        {"P16C1", "16 Y\n15 !Z\nY = A + B\nZ = B + A\n", ""},
        {"P20C1", "0 Y\n0 Z\nY = A + !A B\nZ = !A !B\n", ""},
        {"P16C1", "16 Y\n15 Z\nY = A + B\nZ = A + B\n",
         "Z differs from Y, which has the sum of pin 15 of P16C1 (combinational)"},
        {"P16C1", "0 Y\n0 Z\nY = A + B\nZ = A B\n", "Z differs from Y, which has the sum of pin 15 of P16C1"},
        {"P16C1", "16 Y\n15 Z\nY = A\n", "Z, pin 15 of P16C1 (combinational) is no input"},
        {"P16C1", "16 Y\n15 Z\nY = A\nZ = Y\n", "No feedback: Y"},
    };
    for (const auto& c : cases) {
        const auto fit = fit::FitDesign(DeviceOf(c.device), MakeDesign(head + c.design), {});
        const auto text = fit.Ok() ? "" : fit.Messages[0].Text;
        EXPECT_TRUE(text.find(c.fault) != text.npos && fit.Ok() == (*c.fault == 0)) << c.design << text;
    }
}

TEST(Fitter, BuriedMacrocellsTakeNodes) {
    const auto library = fit::ReadLibrary(
        "TESK-DL 1\nDEVICE B 6 24\nMODE only 6\nINPUT 1 0\nINPUT 2 2\nCELL 5 - high\nUSE output 2 2 always "
        "none\n"
        "CELL 7 4 low\nUSE output 0 2 always level\nEND\n");
    ASSERT_TRUE(library.Ok());
    const auto& device = library.Devices[0];
    const auto fitted = [&](const std::string& y, const std::string& n) {
        const auto lines = "1 A\n2 B\n" + y + " Y\n" + n + " N\nN = A + B\nY = N !A\n";
        return fit::FitDesign(device, MakeDesign(lines), {});
    };
    const auto fit = fitted("0", "node");
    ASSERT_TRUE(fit.Ok());
    EXPECT_EQ(fit.Placements[3].Pin, 7);
    std::string fuses;
    for (const bool fuse : fit.Fuses) fuses += fuse ? '1' : '0';
    EXPECT_EQ(fuses,
              "011111"
              "110111"
              "101110"
              "000000")
        << "its column is low while N is 1";
    EXPECT_NE(fit::FusePlot(device, fit).find("Node 7\r\n00000  x---"), std::string::npos);
    EXPECT_NE(fitted("7", "0").Messages.at(0).Text.find("Y, node 7 of B (only) has no pin"),
              std::string::npos);
    EXPECT_NE(fitted("5", "8").Messages.at(0).Text.find("N, B has 6 pins"), std::string::npos);
}

TEST(Fitter, PolarityFollowsTheOption) {
    const auto design = MakeDesign("2 A\n3 B\n4 C\n12 Y\n13 !Z\nY = A + B + C\nZ = A B C\n");
    const auto used = [&](const char* device, fit::Polarity polarity) {
        const auto fit = fit::FitDesign(DeviceOf(device), design, {polarity});
        return std::to_string(fit.Placements[3].Used) + std::to_string(fit.Placements[4].Used);
    };
    EXPECT_EQ(used("G16V8", fit::Polarity::Natural), "31");
    EXPECT_EQ(used("G16V8", fit::Polarity::Best), "11");
    EXPECT_EQ(used("G16V8", fit::Polarity::Complement), "13");
    EXPECT_EQ(used("P16L8", fit::Polarity::Natural), "11") << "low by nature";
    auto inverted = design;
    inverted.Functions[0].Inverted = true;
    const auto fit = fit::FitDesign(DeviceOf("G16V8"), inverted, {});
    EXPECT_TRUE(fit.Placements[3].Complemented && fit.Placements[3].Used == 1 &&
                !fit.Placements[3].PolarityHigh);
}

TEST(Fitter, FreePinsGoWhereTheyFit) {
    // Sixteen terms fit at two pins of the 22V10 only; the smaller ones must leave them free.
    std::string lines =
        "0 CK\n0 A\n0 B\n0 C\n0 D\n0 E\n0 SMALL D\n0 BIG D\n0 BIG2 D\nSMALL.D = A\nSMALL.CK = CK\n";
    std::string parity;
    for (unsigned v = 0; v < 32; ++v) {
        if (__builtin_popcount(v) % 2 == 0) continue;
        parity += parity.empty() ? "" : " + ";
        for (int bit = 0; bit < 5; ++bit)
            parity += std::string(v >> bit & 1 ? "" : "!") + static_cast<char>('A' + bit) + " ";
    }
    lines += "BIG.D = " + parity + "\nBIG2.D = " + parity + "\n";
    const auto fit = fit::FitDesign(DeviceOf("G22V10"), MakeDesign(lines), {});
    ASSERT_TRUE(fit.Ok()) << fit.Messages[0].Text;
    EXPECT_EQ(fit.Placements[0].Pin, 1) << "the clock";
    EXPECT_EQ(fit.Placements[7].Pin + fit.Placements[8].Pin, 18 + 19);
    EXPECT_EQ(fit.Placements[7].Available, 16u);
}

TEST(Fitter, ResetsActOnTheName) {
    const std::string head = "1 C\n2 A\n3 RST\n14 Q D\n15 !R D\nQ.D = A\nR.D = A\n";
    const struct {
        const char* extension;
        bool asynchronous;
        bool asserted;  // the state that it gives to the names
    } cases[] = {{"AR", true, false}, {"AP", true, true}, {"SR", false, false}, {"SP", false, true}};
    for (const auto& c : cases) {
        const std::string ext = c.extension;
        const auto design = MakeDesign(head + "Q." + ext + " = RST\nR." + ext + " = RST\n");
        const auto fit = fit::FitDesign(DeviceOf("G22V10"), design, {});
        ASSERT_TRUE(fit.Ok()) << fit.Messages[0].Text;
        const Chip chip("22V10", fit.Fuses);
        std::vector<bool> levels(25, false);
        EXPECT_FALSE(chip.Reset(levels) || chip.Preset(levels));
        levels[3] = true;
        EXPECT_EQ(chip.Reset(levels), c.asynchronous);
        EXPECT_EQ(chip.Preset(levels), !c.asynchronous);
        for (const int pin : {14, 15}) {
            // Reset clears the register, and with S0 at 1 the pin is low then; preset does the opposite.
            const bool registerState = !c.asynchronous;
            const bool level = chip.ResetLevel(pin) ? registerState : !registerState;
            EXPECT_EQ(level, c.asserted != (pin == 15)) << ext << " " << pin;
        }
    }
    const auto shared = fit::FitDesign(DeviceOf("G22V10"), MakeDesign(head + "Q.AR = RST\n"), {});
    EXPECT_TRUE(shared.Ok());
    ASSERT_EQ(shared.Messages.size(), 1u);
    EXPECT_EQ(shared.Messages[0].Number, "7211tc");
    const auto resets = [](const fit::Function& f) { return f.Signal == 4 && f.To == fit::Input::Ar; };
    EXPECT_TRUE(std::any_of(shared.Implied.begin(), shared.Implied.end(), resets));
}

// As many different products of A to F, and the pins of those.
std::string Products(std::size_t count) {
    std::string text;
    for (std::size_t n = 0; n < count; ++n) {
        text += n == 0 ? "" : " + ";
        for (std::size_t i = 0; i < 6; ++i) {
            text += n >> i & 1 ? "" : "!";
            text += static_cast<char>('A' + i);
            text += ' ';
        }
    }
    return text;
}

TEST(Fitter, OutputsShareTerms) {
    const std::string inputs = "2 A\n3 B\n4 C\n5 D\n6 E\n7 F\n8 G\n";
    const auto fits = [&](const char* device, const std::string& design, fit::Polarity choose) {
        return fit::FitDesign(DeviceOf(device), MakeDesign(inputs + design), {choose, true});
    };
    const std::string same = "11 Y\n12 Z\n13 !X\nY = " + Products(32) + "\nZ = " + Products(31);
    const auto all = fits("F153", same + "\nX = " + Products(32) + "\n", fit::Polarity::Natural);
    ASSERT_TRUE(all.Ok()) << all.Messages[0].Text;
    EXPECT_EQ(all.Placements[7].Used, 32u);
    const auto more = fits("F153", same + "\nX = G\n", fit::Polarity::Natural);
    ASSERT_EQ(more.Messages.size(), 1u);
    EXPECT_EQ(more.Messages[0].Number, "7215tc");
    EXPECT_NE(more.Messages[0].Text.find("the outputs need 33, the limit of F153 is 32"), std::string::npos)
        << more.Messages[0].Text;
    // The complement of Y is the one term of Z.
    const std::string sums = "11 Y\n12 Z\nY = !A + !B + !C + !D + !E + !F\nZ = A B C D E F\n";
    const auto best = fits("F153", sums, fit::Polarity::Best);
    EXPECT_EQ(best.Placements[7].Used, 1u) << "one term for both";
    const auto inverted =
        fits("F153", "11 Y\nY = !A + !B\n12 Z\nZ = " + Products(31) + "\n", fit::Polarity::Natural);
    ASSERT_EQ(inverted.Messages.size(), 1u);
    EXPECT_NE(inverted.Messages[0].Text.find("need 33, the limit of F153 is 32; fits with kb"),
              std::string::npos)
        << inverted.Messages[0].Text;
}

TEST(Fitter, RowsOfRegistersTellWhenResetAndPresetMeet) {
    const std::string head = "2 A\n3 B\n13 !E\n23 Q D\nQ.D = A\nQ.CK = B\nQ.AR = A B\nQ.AP = ";
    const auto apart = fit::FitDesign(DeviceOf("P20RA10"), MakeDesign(head + "!A\n"), {});
    EXPECT_TRUE(apart.Messages.empty());
    EXPECT_EQ(apart.Placements[3].PowerUp, '1') << "the register is 0, its pin high";
    ASSERT_EQ(apart.Implied.size(), 1u);
    EXPECT_EQ(*apart.Implied[0].True, (fit::Sum{{{2, false, false}}})) << "pin 13 enables";
    const auto both = fit::FitDesign(DeviceOf("P20RA10"), MakeDesign(head + "B\n"), {});
    ASSERT_EQ(both.Messages.size(), 1u);
    EXPECT_EQ(both.Messages[0].Number, "7214tc");
    EXPECT_TRUE(both.Ok());
}

TEST(Fitter, CommonClockAndEnableAreImplied) {
    const auto design = MakeDesign("1 !C\n2 A\n11 E\n12 Q D\n13 R D\nQ.D = A\nR.D = Q\nR.OE = !E\n");
    const auto fit = fit::FitDesign(DeviceOf("G16V8"), design, {});
    ASSERT_TRUE(fit.Ok()) << fit.Messages[0].Text;
    ASSERT_EQ(fit.Implied.size(), 3u);
    EXPECT_EQ(fit.Implied[0].To, fit::Input::Ck);
    EXPECT_EQ(*fit.Implied[0].True, (fit::Sum{{{0, true, false}}}));
    EXPECT_EQ(fit.Implied[1].To, fit::Input::Oe);
    EXPECT_EQ(*fit.Implied[1].True, (fit::Sum{{{2, true, false}}}));
    EXPECT_EQ(fit.Implied[2].Signal, 4u);
    EXPECT_EQ(fit.Placements[3].PowerUp, '1') << "the register is 0, its pin high";
}

TEST(Fitter, DiagramAndPlotShowTheDevice) {
    const auto& device = DeviceOf("G22V10");
    const auto design = MakeDesign("1 CLK\n2 !A\n23 Q D\nQ.D = A\nQ.AR = !A\n");
    const auto fit = fit::FitDesign(device, design, {});
    const auto diagram = fit::ChipDiagram(device, design, fit);
    for (const auto* part :
         {" CLK -| 1         24 |- VCC\r\n", " !A -| 2         23 |- Q\r\n", " GND -| 12        13 |-\r\n"})
        EXPECT_NE(diagram.find(part), std::string::npos) << diagram;
    const auto plot = fit::FusePlot(device, fit);
    const auto count = [&](char symbol) { return std::count(plot.begin(), plot.end(), symbol); };
    EXPECT_EQ(count('x') + count('-'), 5808 + 10 + 2) << "each array fuse once, ten polarities, the legend";
    EXPECT_NE(plot.find("Asynchronous reset\r\n00000  ---- x--- ----"), std::string::npos)
        << plot.substr(0, 300);
    EXPECT_NE(plot.find("Other fuses\r\n05808  10"), std::string::npos);
}

TEST(Fitter, SumsTooLargeToComplementAreAnError) {
    std::string lines = "12 Y\n";
    std::string sum;
    for (int i = 0; i < 60; ++i) lines += "node N" + std::to_string(i) + "\nN" + std::to_string(i) + " = 1\n";
    for (int i = 0; i < 60; i += 3) {
        for (const int other : {1, 2})
            sum += (sum.empty() ? "" : " + ") + std::string("N") + std::to_string(i) + " N" +
                   std::to_string(i + other);
    }
    const auto fit = fit::FitDesign(DeviceOf("P16L8"), MakeDesign(lines + "Y = " + sum + "\n"), {});
    EXPECT_EQ(fit.Messages.at(0).Number, "7212tc") << fit.Messages[0].Text;
}

TEST(Fitter, VirtualHasNoLimits) {
    std::string lines;
    for (int i = 0; i < 100; ++i) lines += "0 N" + std::to_string(i) + (i < 50 ? "" : " T") + "\n";
    for (int i = 50; i < 100; ++i) lines += "N" + std::to_string(i) + ".T = N1 + N2\n";
    const auto fit = fit::FitDesign(DeviceOf("virtual"), MakeDesign(lines), {});
    EXPECT_TRUE(fit.Ok());
    EXPECT_TRUE(fit.Fuses.empty());
    EXPECT_EQ(fit.Placements[60].Used, 2u);
}

}  // namespace
