#include <gtest/gtest.h>

#include <random>

#include "SimTexts.h"
#include "sim/Machine.h"

namespace {

using test::FoundBy;
using test::Simulate;
using test::Texts;

// Each case: the design's records, ORDER, the vectors, and what the pins must show after each of them, worked
// out by hand.
struct Case {
    const char* name;
    std::string design;
    std::string order;
    std::string vectors;
    std::vector<std::string> found;
};

void Check(const std::vector<Case>& cases) {
    for (const auto& c : cases) {
        const auto result = Simulate(Texts(c.design, c.order, c.vectors), {});
        EXPECT_EQ(FoundBy(result), c.found) << c.name << "\n" << result.So;
        EXPECT_EQ(result.Errors, 0u) << c.name << "\n" << result.So;
    }
}

const std::string inputs =
    "NET C 1 INPUT HIGH NONE 0\nNET A 2 INPUT HIGH NONE 0\nNET B 3 INPUT HIGH NONE 0\n";

std::string Register(const std::string& kind, const std::string& functions) {
    return inputs + "NET Q 19 OUTPUT HIGH " + kind + " 0\nFUNCTION Q CK POSITIVE\nTERM C\n" + functions;
}

TEST(Machine, RegistersFollowTheirInputs) {
    const auto one = [](const char* input, const char* term) {
        return std::string("FUNCTION Q ") + input + " POSITIVE\nTERM " + term + "\n";
    };
    Check({
        {"D at the rising edge only",
         Register("D", one("D", "A")),
         "C,A,Q",
         "01*\n11*\n10*\n00*\n10*\nC1*\nK0*\n",
         {"01L", "11H", "10H", "00H", "10L", "C1H", "K0L"}},
        {"T", Register("T", one("T", "A")), "C,A,Q", "C1*\nC1*\nC0*\nC1*\n", {"C1H", "C1L", "C0L", "C1H"}},
        {"JK",
         Register("JK", one("J", "A") + one("K", "B")),
         "C,A,B,Q",
         "C10*\nC00*\nC01*\nC11*\nC11*\nCX0*\nC1X*\n",
         {"C10H", "C00H", "C01L", "C11H", "C11L", "CX0X", "C1XX"}},
        {"RS",
         Register("RS", one("S", "A") + one("R", "B")),
         "C,A,B,Q",
         "C10*\nC00*\nC01*\nC11*\nC01*\n",
         {"C10H", "C00H", "C01L", "C11X", "C01L"}},
        {"clock enable",
         Register("D", one("D", "A") + one("CE", "B")),
         "C,A,B,Q",
         "C11*\nC00*\nC01*\nC1X*\nC0X*\n",
         {"C11H", "C00H", "C01L", "C1XX", "C0XX"}},
        {"synchronous reset and preset",
         Register("T", "FUNCTION Q T POSITIVE\nTERM\n" + one("SR", "A") + one("SP", "B")),
         "C,A,B,Q",
         "001*\nC01*\nC10*\nC00*\nC11*\n",
         {"001L", "C01H", "C10L", "C00H", "C11X"}},
        {"asynchronous reset and preset",
         Register("T", "FUNCTION Q T POSITIVE\nTERM\n" + one("AR", "A") + one("AP", "B")),
         "C,A,B,Q",
         "001*\n000*\nC00*\nC01*\n010*\nC10*\n011*\n",
         {"001H", "000H", "C00L", "C01H", "010L", "C10L", "011X"}},
        {"preload",
         Register("T", "FUNCTION Q T POSITIVE\nTERM\n"),
         "C,Q",
         "P1\n0H\nC*\nP0\n0L\n",
         {"P1", "0H", "CL", "P0", "0L"}},
    });
    const std::string latch = inputs + "NET Q 19 OUTPUT HIGH LATCH 0\nFUNCTION Q L POSITIVE\nTERM A\n";
    Check({
        {"latch",
         latch + "FUNCTION Q LE POSITIVE\nTERM C\n",
         "C,A,Q",
         "11*\n10*\n01*\n11*\n00*\n",
         {"11H", "10L", "01L", "11H", "00H"}},
        {"latch without enable", latch, "A,Q", "1*\n0*\n", {"1H", "0L"}},
        {"default clock",
         inputs + "NET Q 19 OUTPUT HIGH T 1\nFUNCTION Q T POSITIVE\nTERM\n",
         "C,Q",
         "0*\nC*\n1*\nK*\n",
         {"0H", "CL", "1L", "KH"}},
    });
}

TEST(Machine, PolarityPinsAndEnables) {
    const std::string low =
        inputs +
        "NET Q 19 OUTPUT LOW D 0\nFUNCTION Q D POSITIVE\nTERM A\nFUNCTION Q CK POSITIVE\nTERM C\n"
        "NET Y 18 OUTPUT HIGH NONE 0\nFUNCTION Y OUT POSITIVE\nTERM Q\n"
        "NET N 17 OUTPUT HIGH NONE 0\nFUNCTION N OUT NEGATIVE\nTERM Q.IO\n"
        "FUNCTION Q AR POSITIVE\nTERM B\n";
    const std::string bus =
        inputs +
        "NET Y 18 BIDIRECTIONAL HIGH NONE 0\nFUNCTION Y OUT POSITIVE\nTERM A\nFUNCTION Y OE "
        "POSITIVE\nTERM C\nNET W 17 OUTPUT HIGH NONE 0\nFUNCTION W OUT POSITIVE\nTERM Y.IO\n";
    Check({
        {"active-low register: reset makes the name 0",
         low,
         "C,A,B,Q,Y,N",
         "C10***\nC00***\nC10***\n011***\n",
         {"C10LHL", "C00HLH", "C10LHL", "011HLH"}},
        {"tri-state",
         bus,
         "C,A,Y,W",
         "11**\n01Z*\n010*\n001*\n10**\nX1**\n",
         {"11HH", "01ZX", "010L", "001H", "10LL", "X1XX"}},
    });
    const auto contention = Simulate(Texts(bus, "C,A,B,Y,W", "110 0*\n111 1*\n"), {});
    EXPECT_EQ(FoundBy(contention), (std::vector<std::string>{"1100X", "1111H"}));
    EXPECT_EQ(contention.Warnings, 1u);
}

TEST(Machine, CountersCountEvenWhereRegistersClockOneAnother) {
    std::string synchronous = inputs;
    std::string ripple = inputs;
    for (int i = 0; i < 4; ++i) {
        const auto q = "Q" + std::to_string(i);
        std::string lower;
        for (int j = 0; j < i; ++j) lower += " Q" + std::to_string(j);
        const auto net = "NET " + q + " " + std::to_string(12 + i) + " OUTPUT HIGH T 0\n";
        synchronous += net + "FUNCTION " + q + " CK POSITIVE\nTERM C\nFUNCTION " + q + " T POSITIVE\nTERM A" +
                       lower + "\n";
        ripple += net + "FUNCTION " + q + " CK POSITIVE\nTERM " +
                  (i == 0 ? "C" : "!Q" + std::to_string(i - 1)) + "\nFUNCTION " + q + " T POSITIVE\nTERM A\n";
    }
    std::string vectors = "$REPEAT 20\nC1****\n";
    std::vector<std::string> expected;
    for (unsigned count = 1; count <= 20; ++count) {
        std::string row = "C1";
        for (int bit = 3; bit >= 0; --bit) row += (count >> bit & 1) != 0 ? 'H' : 'L';
        expected.push_back(row);
    }
    Check({{"synchronous", synchronous, "C,A,[Q3..0]", vectors, expected},
           {"ripple", ripple, "C,A,[Q3..0]", vectors, expected}});
}

TEST(Machine, LoopsSettleOrAreNamed) {
    const std::string outputs = inputs + "NET P 18 OUTPUT HIGH NONE 0\nNET Q 19 OUTPUT HIGH NONE 0\n";
    Check({{"set and reset by crossed gates",
            outputs + "FUNCTION P OUT NEGATIVE\nTERM A\nTERM Q\nFUNCTION Q OUT NEGATIVE\nTERM B\nTERM P\n",
            "A,B,P,Q",
            "00**\n10**\n00**\n01**\n00**\n",
            {"00XX", "10LH", "00LH", "01HL", "00HL"}}});
    const struct {
        std::string design;
        const char* code;
        const char* names;
    } cases[] = {
        {outputs + "FUNCTION P OUT POSITIVE\nTERM !P A\nFUNCTION Q OUT POSITIVE\nTERM A\n", "0302vs",
         "settle: P"},
        {outputs + "FUNCTION P OUT POSITIVE\nTERM !Q A\nFUNCTION Q OUT POSITIVE\nTERM P A\n", "0302vs",
         "P, Q"},
        {inputs + "NET P 18 OUTPUT HIGH T 0\nNET Q 19 OUTPUT HIGH T 0\nFUNCTION P T POSITIVE\nTERM\nFUNCTION "
                  "Q T POSITIVE\n"
                  "TERM\nFUNCTION P CK POSITIVE\nTERM A P Q\nTERM A !P !Q\nFUNCTION Q CK POSITIVE\nTERM P "
                  "!Q\nTERM !P "
                  "Q\nFUNCTION P AR POSITIVE\nTERM C\nFUNCTION Q AR POSITIVE\nTERM C\n",
         "0303vs", ": "},
        {outputs + "FUNCTION P OUT NEGATIVE\nTERM P !C\nFUNCTION Q OUT POSITIVE\n", "0302vs", "settle: P"},
    };
    for (const auto& c : cases) {
        const auto result = Simulate(Texts(c.design, "C,A,B,P,Q", "000**\n010**\n100**\n"), {});
        ASSERT_GE(result.Errors, 1u) << result.So;
        EXPECT_EQ(result.Messages[0].Number, c.code);
        EXPECT_NE(result.Messages[0].Text.find(c.names), std::string::npos) << result.Messages[0].Text;
        EXPECT_EQ(FoundBy(result)[1][3], 'X') << result.So;
        EXPECT_NE(FoundBy(result)[2][3], 'X') << "comes to rest again\n" << result.So;
    }
}

// Networks of random sums over inputs and earlier nets against their direct evaluation.
TEST(Machine, RandomNetworksAgreeWithDirectEvaluation) {
    std::mt19937 random(11);
    for (int round = 0; round < 60; ++round) {
        constexpr std::size_t inputCount = 6;
        sim::AbsDesign design;
        std::vector<std::size_t> place;  // the nets stand in another order than they depend on one another
        for (std::size_t i = 0; i < 26; ++i) place.push_back(i);
        std::shuffle(place.begin() + inputCount, place.end(), random);
        design.Nets.resize(place.size());
        for (std::size_t i = 0; i < place.size(); ++i) {
            auto& net = design.Nets[place[i]];
            net.Name = "N" + std::to_string(i);
            net.Kind = i < inputCount ? sim::NetKind::Input
                       : random() % 2 ? sim::NetKind::Output
                                      : sim::NetKind::Node;
            net.ActiveLow = net.Kind != sim::NetKind::Node && random() % 2;
            if (i < inputCount) continue;
            sim::Function function{place[i], sim::Input::Out, random() % 2 == 0, {}};
            for (auto terms = random() % 4; terms > 0; --terms) {
                function.Terms.emplace_back();
                for (auto n = random() % 4; n > 0; --n)
                    function.Terms.back().push_back(
                        {place[random() % i], sim::Feedback::Default, random() % 2 == 0});
            }
            design.Functions.push_back(function);
        }
        sim::Machine machine(design);
        for (int step = 0; step < 40; ++step) {
            std::vector<sim::Machine::Drive> drives;
            std::vector<bool> value(place.size());
            for (std::size_t i = 0; i < inputCount; ++i) {
                const bool level = random() % 2;
                drives.emplace_back(i, level ? sim::Value::One : sim::Value::Zero);
                value[i] = level != design.Nets[i].ActiveLow;
            }
            for (const auto& function : design.Functions) {
                bool sum = false;
                for (const auto& term : function.Terms) {
                    bool product = true;
                    for (const auto& literal : term)
                        product = product && value[literal.Net] != literal.Negated;
                    sum = sum || product;
                }
                value[function.Net] = sum != function.Negative;
            }
            machine.Apply(drives);
            for (std::size_t net = inputCount; net < place.size(); ++net) {
                const bool level = value[net] != design.Nets[net].ActiveLow;
                ASSERT_EQ(machine.Level(net), level ? sim::Value::One : sim::Value::Zero)
                    << round << " " << net;
            }
        }
    }
}

}  // namespace
