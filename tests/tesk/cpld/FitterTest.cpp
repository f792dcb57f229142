#include "cpld/Fitter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "../fit/Designs.h"
#include "Designs.h"
#include "Support.h"
#include "cpld/Algebra.h"
#include "cpld/FuseMap.h"
#include "cpld/Search.h"

namespace {

using cpld::Switched;
using test::Devices;
using test::MakeDesign;

std::string Text(const cpld::Fit& fit) {
    std::string text;
    for (const auto& message : fit.Messages) text += message.Number + " " + message.Text + "\n";
    return text;
}

// By the fuses alone: what they say is compared with the design.
std::string Differs(const cpld::Device& device, const fit::Design& design, cpld::Fit fit,
                    std::mt19937& random) {
    fit.Result = cpld::ReadConfiguration(device, cpld::WriteFuses(device, fit.Result));
    return test::Compare(device, design, fit, random);
}

void NoteFeatures(const cpld::Configuration& result, std::set<std::string>& seen) {
    for (const auto& cell : result.Cells) {
        if (cell.A == cpld::XorA::VccPt2) seen.insert("cascade");
        if (cell.Pt1 == cpld::Pt1Mux::Flb) seen.insert("foldback");
        if (cell.Pt2 == cpld::Pt2Mux::Xor) seen.insert("exclusive or");
        if (cell.B == cpld::XorB::FfQn) seen.insert("toggle");
        if (cell.Pt3 == cpld::Pt3Mux::Ar) seen.insert("clear");
        if (cell.GlobalClear == Switched::On) seen.insert("global clear");
        if (cell.Pt4 == cpld::Pt4Mux::ClkCe)
            seen.insert(cell.Func4 == cpld::Pt4Func::Ce ? "enable" : "clock");
        if (cell.Pt5 == cpld::Pt5Mux::AsOe && cell.Func5 == cpld::Pt5Func::As) seen.insert("set");
        if (cell.OutputEnable != cpld::Enable::Gnd && cell.OutputEnable != cpld::Enable::VccPt5)
            seen.insert("global output enable");
    }
}

TEST(CpldFitter, ChipsDoWhatRandomDesignsSay) {
    std::mt19937 random(7);
    std::set<std::string> features;
    for (std::size_t i = 0; i < 30; ++i) {
        const auto& device = Devices()[i % 2];
        const auto design =
            test::RandomDesign(random, {4 + random() % (i % 2 == 0 ? 6 : 12), 8, 3, 3, 0, false});
        const auto fit = cpld::FitDesign(device, {}, design, {});
        ASSERT_TRUE(fit.Ok() || Text(fit).starts_with("7801tc")) << Text(fit);
        if (!fit.Ok()) continue;
        NoteFeatures(fit.Result, features);
        ASSERT_EQ(Differs(device, design, fit, random), "") << i;
    }
    EXPECT_EQ(features,
              (std::set<std::string>{"cascade", "foldback", "exclusive or", "toggle", "clear", "global clear",
                                     "enable", "clock", "set", "global output enable"}));
}

// With the pins of the first time, too, after a change.
TEST(CpldFitter, FillsTheDevices) {
    std::mt19937 random(1);
    for (std::size_t i = 0; i < 40; ++i) {
        const auto& device = Devices()[i % 2];
        const auto package = i % 2 == 0 ? "T44" : "P84";
        auto design = test::RandomDesign(random, {i % 2 == 0 ? 28u : 56u, 4, 3, 4, 32, true});
        for (int again = 0; again < 2; ++again) {
            const auto fit = cpld::FitDesign(device, package, design, {});
            ASSERT_TRUE(fit.Ok()) << Text(fit);
            ASSERT_EQ(Differs(device, design, fit, random), "") << i;
            ASSERT_EQ(cpld::FitDesign(device, package, design, {}).Result, fit.Result);
            for (std::size_t k = 0; k < design.Signals.size(); ++k) {
                auto& signal = design.Signals[k];
                ASSERT_TRUE(again == 0 || signal.Pin == fit.Places[k].Pin);
                signal.Pin = fit.Places[k].Pin;
            }
            auto& sum = *design.Functions.front().True;
            sum.back().front().Negated ^= true;
            sum.push_back({{i % 4, false, false}});
        }
    }
}

// What has no register reads no pin that has none, but those before its own.
void BreakLoops(fit::Design& design) {
    const auto first =
        std::find_if(design.Signals.begin(), design.Signals.end(), [&](const fit::Signal& signal) {
            const auto index = static_cast<std::size_t>(&signal - design.Signals.data());
            return test::TrueOf(design, index, model::Input::Out) ||
                   test::TrueOf(design, index, model::Input::D);
        });
    const auto inputs = static_cast<std::size_t>(first - design.Signals.begin());
    for (auto& function : design.Functions) {
        for (auto& term : *function.True)
            std::erase_if(term, [&](const fit::Literal& literal) {
                const bool registered = design.Signals[literal.Signal].Register != model::RegisterKind::None;
                const bool later =
                    literal.Signal >= (function.To == model::Input::Oe ? inputs : function.Signal);
                return !registered && later && function.To != model::Input::D;
            });
    }
}

TEST(CpldFitter, TakesWhatASmallerDeviceTakes) {
    std::mt19937 random(3);
    for (int i = 0; i < 10; ++i) {
        auto design = test::RandomDesign(random, test::DeviceOf("G22V10"));
        for (std::size_t k = 0; k < design.Signals.size(); ++k) {
            design.Signals[k].Pin = 0;
            if (design.Signals[k].Register == model::RegisterKind::None) continue;
            for (const auto input : {model::Input::Ck, model::Input::Ar, model::Input::Sp})
                if (test::TrueOf(design, k, input) == nullptr)
                    design.Functions.push_back(
                        {k, input, fit::Sum{{{static_cast<std::size_t>(input) % 5, i % 2 == 0}}}, {}});
        }
        BreakLoops(design);
        const auto fit = cpld::FitDesign(Devices()[0], "P44", design, {});
        ASSERT_TRUE(fit.Ok()) << Text(fit);
        ASSERT_EQ(Differs(Devices()[0], design, fit, random), "") << i;
    }
}

// By small functions that leave a macrocell no term, or that many share.
TEST(CpldFitter, FindsAWayForEveryControl) {
    const std::string inputs = "0 A\n0 B\n0 C\n0 E\n0 G\n0 H\n";
    const char* designs[] = {
        "0 Q D\nQ.D = A\nQ.CK = B + C + E\nQ.AR = G + H\nQ.AP = A B + C",
        "0 !Q D\nQ.D = A B + C E + G H\nQ.CK = A !B\nQ.CE = C G + E\nQ.AR = G H\nQ.OE = A E",
        "0 Q D\n0 R D\n0 S D\n0 T D\nQ.D = A\nR.D = A\nS.D = B\nT.D = C\nQ.CK = A\nR.CK = !A\nS.CK = B\nT.CK "
        "= C",
        "0 Q LATCH\nnode N\nQ.L = N\nN = A + B\nQ.LE = C\nQ.AP = A\nQ.AR = B\nQ.OE = !C",
        "0 Q\n0 R\n0 S\nQ = 0\nR = 1\nS = A\nS.OE = 0",
        "0 Q T\n0 R JK\nQ.T = 1\nQ.CK = A\nR.J = Q\nR.K = Q.IO B\nR.CK = A\nQ.OE = C",
        "0 Q\nQ = A !B !C !E + !A B !C !E + !A !B C !E + !A !B !C E + A B C !E + A B !C E + A !B C E + !A B "
        "C E",
    };
    std::mt19937 random(5);
    for (const auto* lines : designs) {
        const auto design = MakeDesign(inputs + lines);
        const auto fit = cpld::FitDesign(Devices()[0], {}, design, {});
        ASSERT_TRUE(fit.Ok()) << lines << Text(fit);
        EXPECT_EQ(Differs(Devices()[0], design, fit, random), "") << lines;
    }
}

TEST(CpldFitter, KeepsExclusiveOrs) {
    std::mt19937 random(6);
    for (const auto* right : {"Y = G", "Y = G H + A !C", "Y = !G + !H", "Y = A G + H + !E"}) {
        for (const auto* name : {"Y", "!Y"}) {
            const std::string head = std::string("0 A\n0 B\n0 C\n0 E\n0 G\n0 H\n0 ") + name + "\n";
            const auto sum = [&](const char* line) { return *MakeDesign(head + line).Functions[0].True; };
            const auto a = sum("Y = A B C + !B E + C !E + !A B !C + A !C !E"), b = sum(right);
            auto design = MakeDesign(head + right);
            design.Functions[0].True = cpld::ExclusiveOr(a, b);
            design.Functions[0].Xor = fit::Sides{a, *cpld::Not(a), b, *cpld::Not(b)};
            const auto fit = cpld::FitDesign(Devices()[0], {}, design, {});
            ASSERT_TRUE(fit.Ok()) << Text(fit);
            EXPECT_EQ(Differs(Devices()[0], design, fit, random), "") << right;
            std::set<std::string> features;
            NoteFeatures(fit.Result, features);
            EXPECT_TRUE(features.contains("exclusive or")) << right;
        }
    }
}

TEST(CpldFitter, TellsWhatDoesNotFit) {
    std::string crowded = "0 Y\n0 X\n14 A\n16 B\n17 C\n31 E\n29 F\n28 G\n2 H\n";
    std::string many, read = "Y = A B C E F G H";
    for (const int cell : {1, 2, 3, 4, 17, 18, 19, 20}) {
        const auto name = "N" + std::to_string(cell);
        crowded += "node " + name + "\n";
        read += " " + name;
        many += name + " = X\n";
    }
    std::string wide = "0 A\n0 B\n0 C\n0 E\n0 F\n0 Q D\n";
    for (int i = 0; i < 60; ++i)
        wide +=
            "0 Y" + std::to_string(i) + "\nY" + std::to_string(i) + " = A B + B C + C E + E F + !A !B + !F\n";
    struct Case {
        std::string Lines;
        const char* Package;
        const char* Message;
    };
    const Case cases[] = {
        {"10 A\n0 Y\nY = A", "P44", "7803tc Pin can't be used so: A, pin 10 of C1502P44 is none for signals"},
        {"4 A\n7 Y\nY = A", "P44",
         "7803tc Pin can't be used so: Y, pin 7 of C1502P44 is one of the JTAG pins"},
        {"4 A\n43 Y\nY = A", "P44", "7803tc Pin can't be used so: Y, pin 43 of C1502P44 is an input"},
        {"4 A\n4 Y\nY = A", "P44", "7804tc Two names at one place: Y, pin 4 of C1502P44 carries A"},
        {"4 A\n5 Y\nY = A", "P68", "7811tc No such package: P68, C1502 is made in P44, T44"},
        {"0 A\n0 Q D\nQ.D = A", "", "7806tc Register has no clock: Q.CK"},
        {"0 A\n0 Q D\nQ.CK = A", "", "7805tc Name is never set: Q"},
        {"0 A\n0 Y\nY = A\nY.AR = A", "", "7809tc Extension that the device lacks: Y.AR"},
        {wide, "", "7805tc Name is never set: Q"},
        {wide + "Q.D = A\nQ.CK = A\n", "", "7802tc Too many pins: 66 names, C1502P44 has 32"},
    };
    for (const auto& one : cases) {
        const auto fit = cpld::FitDesign(Devices()[0], one.Package, MakeDesign(one.Lines), {});
        EXPECT_EQ(Text(fit).substr(0, std::string(one.Message).size()), one.Message) << Text(fit);
    }
    auto huge = MakeDesign("0 A\n0 B\n0 Y\nY = A");
    huge.Functions[0].True->assign(11'000, {{0, false, false}, {1, true, false}});
    for (std::size_t i = 0; i < 11'000; ++i) {
        auto& term = (*huge.Functions[0].True)[i];
        for (std::size_t bit = 0; bit < 14; ++bit) term.push_back({3 + bit, (i >> bit & 1) == 0, false});
    }
    for (int i = 0; i < 14; ++i) huge.Signals.push_back({"I" + std::to_string(i), 0, false, false, {}});
    EXPECT_TRUE(Text(cpld::FitDesign(Devices()[0], {}, huge, {})).starts_with("7801tc Too many macrocells"));

    auto design = MakeDesign(crowded + "0 Z\nZ = X\n" + many + read);
    for (auto& signal : design.Signals)
        if (signal.Node) signal.Pin = std::stoi(signal.Name.substr(1));
    EXPECT_EQ(Text(cpld::FitDesign(Devices()[0], {}, design, {})),
              "7810tc Too few switches: 5 too few, block B of C1502P44; a free choice of pins would fit\n");
}

TEST(CpldFitter, MatchesAsManySwitchesAsCanBe) {
    std::mt19937 random(2);
    for (int i = 0; i < 300; ++i) {
        std::vector<std::uint64_t> masks(1 + random() % 6);
        for (auto& mask : masks)
            for (int k = 0; k < 2; ++k) mask |= std::uint64_t{1} << (random() % 6 * 7);
        // All ways to leave sources out or give them one of their switches.
        std::size_t most = 0;
        const auto all = [&](const auto& self, std::size_t at, std::uint64_t used,
                             std::size_t given) -> void {
            most = std::max(most, given);
            if (at == masks.size()) return;
            self(self, at + 1, used, given);
            for (auto rest = masks[at] & ~used; rest != 0; rest &= rest - 1)
                self(self, at + 1, used | (rest & ~(rest - 1)), given + 1);
        };
        all(all, 0, 0, 0);
        std::array<std::int16_t, cpld::BlockSwitches> owners{};
        ASSERT_EQ(cpld::Match(masks, owners), masks.size() - most);
        std::set<int> placed;
        for (std::size_t at = 0; at < owners.size(); ++at)
            if (owners[at] >= 0) {
                EXPECT_TRUE((masks[static_cast<std::size_t>(owners[at])] >> at & 1) != 0);
                EXPECT_TRUE(placed.insert(owners[at]).second);
            }
        EXPECT_EQ(placed.size(), most);
    }
}

// Inputs A, B and K; registers Q and R at pins 4 and 5 that take A at the clock K.
const std::string twoRegisters = "0 A\n0 B\n0 K\n4 Q D\n5 R D\nQ.D = A\nQ.CK = K\nR.D = A\nR.CK = K\n";

TEST(CpldFitter, ClearsByTheGlobalWhatThatAloneClears) {
    std::mt19937 random(7);
    const auto design = MakeDesign(twoRegisters + "Q.AR = B\nR.AR = B A");
    const auto fit = cpld::FitDesign(Devices()[0], "P44", design, {});
    ASSERT_TRUE(fit.Ok()) << Text(fit);
    EXPECT_EQ(fit.Places[1].Pin, 1);
    EXPECT_EQ(fit.Result.Cells[0].GlobalClear, Switched::On);
    EXPECT_EQ(fit.Result.Cells[1].GlobalClear, Switched::Off);
    EXPECT_EQ(test::Compare(Devices()[0], design, fit, random), "");
}

// A free one of the pins that are inputs only enables, if there is one. One term of a macrocell can't preset
// and enable: then an ordinary pin does.
TEST(CpldFitter, EnablesByAnOrdinaryPinWhereOnlyAGlobalWillDo) {
    std::mt19937 random(7);
    for (const bool free : {true, false}) {
        const auto design =
            MakeDesign(free ? twoRegisters + "Q.OE = A"
                            : "1 I1\n2 I2\n43 I3\n44 I4\n" + twoRegisters + "Q.AP = B\nQ.OE = A");
        const auto fit = cpld::FitDesign(Devices()[0], "P44", design, {});
        ASSERT_TRUE(fit.Ok()) << Text(fit);
        EXPECT_NE(fit.Result.Cells[0].OutputEnable, cpld::Enable::VccPt5);
        const int pin = fit.Places[free ? 0 : 4].Pin;
        EXPECT_EQ(pin == 1 || pin == 2 || pin == 43 || pin == 44, free) << pin;
        EXPECT_EQ(test::Compare(Devices()[0], design, fit, random), "");
    }
}

TEST(CpldFitter, ReadsARegisterAndItsPinByOneSwitch) {
    const auto design = MakeDesign("6 Y\n" + twoRegisters + "Y = Q B + !Q.IO A");
    const auto fit = cpld::FitDesign(Devices()[0], "P44", design, {});
    ASSERT_TRUE(fit.Ok()) << Text(fit);
    const auto& switches = fit.Result.Switches[0];
    EXPECT_EQ(switches.size() - std::count(switches.begin(), switches.end(), cpld::NoSignal), 3u);
}

TEST(CpldFitter, PlacesWhereAskedOrTellsWhyNot) {
    const struct {
        fit::Signal Asked;  // whose function is A
        const char* Told;
        std::size_t Cell;
        bool JtagPins = false;
    } cases[] = {
        {{"Y", 8}, "", 4},
        {{"Y", 7}, "", 3, true},
        {{"Y", 45}, "Y, pin 45 of C1502P44 is none for signals", 0},
        {{"Y", 3, false, true}, "", 2},
        {{"Y", 32, false, true}, "", 31},
        {{"Y", 33, false, true}, "Y, macrocell 33 of C1502P44 is none for signals", 0},
        {{"Y", 1, false, true}, "Q, pin 4 of C1502P44 carries Y", 0},
    };
    for (const auto& one : cases) {
        auto design = MakeDesign("0 Y\n" + twoRegisters + "Y = A\nQ.AR = Y");
        design.Signals[0] = one.Asked;
        cpld::FitOptions options;
        options.JtagPins = one.JtagPins;
        options.Hints = false;
        const auto fit = cpld::FitDesign(Devices()[0], "P44", design, options);
        EXPECT_EQ(fit.Ok(), *one.Told == '\0') << one.Asked.Pin << Text(fit);
        EXPECT_NE(Text(fit).find(one.Told), std::string::npos) << Text(fit);
        EXPECT_EQ(fit.Ok() ? *fit.Places[0].Cell : 0, one.Cell) << one.Asked.Pin;
    }
}

}  // namespace
