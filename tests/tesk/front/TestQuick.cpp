#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "Support.h"
#include "front/Quick.h"
#include "logic/Minimize.h"

namespace {

// Terms with many neighbours, some of them contained in others, some twice, some empty.
logic::Cover RandomTerms(std::mt19937& dice, int inputs, int count) {
    logic::Cover cover(inputs, 1);
    for (int i = 0; i < count; ++i) {
        logic::Word* cube = cover.Append();
        cover.Form().SetOutput(cube, 0, dice() % 50 != 0);
        for (int input = 0; input < inputs; ++input) {
            const unsigned roll = static_cast<unsigned>(dice() % (inputs > 32 ? 400 : 8));
            if (inputs > 32 && roll > 30) continue;  // most are free in a wide one
            cover.Form().SetInput(cube, input, static_cast<logic::Literal>(1 + std::min(roll % 4, 2u)));
        }
    }
    return cover;
}

}  // namespace

// The function stays, and no two terms are left that could be joined or of which one holds the other.
TEST(Quick, KeepsTheFunctionAndLeavesNothingSimple) {
    std::mt19937 dice(49);
    for (int round = 0; round < 60; ++round) {
        const int inputs = std::vector{0, 1, 5, 9, 32, 40}[static_cast<std::size_t>(round % 6)];
        const logic::Cover terms = RandomTerms(dice, inputs, round % 4 == 0 ? 3 : 150);
        const logic::Cover reduced = front::QuickReduce(terms);
        ASSERT_TRUE(logic::Equivalent(terms, reduced)) << inputs;
        EXPECT_LE(reduced.Size(), terms.Size());
        const logic::Layout& layout = reduced.Form();
        for (std::size_t a = 0; a < reduced.Size(); ++a) {
            for (std::size_t b = 0; b < reduced.Size(); ++b) {
                if (a == b) continue;
                EXPECT_FALSE(layout.Contains(reduced[a], reduced[b])) << inputs;
                std::vector<int> unlike;
                for (int i = 0; i < inputs; ++i)
                    if (layout.Input(reduced[a], i) != layout.Input(reduced[b], i)) unlike.push_back(i);
                EXPECT_GT(unlike.size(), 1u) << inputs;
            }
        }
    }
}

// A design too large for the effort that was asked for is what its rows say all the same, at each level, and
// small equations beside it are reduced as ever.
TEST(Quick, LargeTablesAreWhatTheirRowsSay) {
    std::mt19937 dice(50);
    std::vector<std::pair<unsigned, unsigned>> rows;
    for (unsigned value = 0; value < 8192; ++value)
        if (dice() % 5 != 0) rows.emplace_back(value, dice() % 8);
    std::shuffle(rows.begin(), rows.end(), dice);
    std::string body =
        "PIN=[A12..0]; PIN=[Y2..0]; PIN=Z;\nZ = A0 & A1 # !A0 & A2 # A1 & A2 & A3;\n"
        "TABLE [A12..0] => [Y2..0] {\n";
    for (const auto& [in, out] : rows)
        body += "'d'" + std::to_string(in) + " => " + std::to_string(out) + ";\n";
    for (const int level : {1, 2, 4}) {
        const auto done = Compile(body + "}\n", "m" + std::to_string(level));
        ASSERT_TRUE(done->Run->Ok());
        const auto told = done->Codes();
        EXPECT_EQ(std::count_if(told.begin(), told.end(),
                                [](const std::string& code) { return code.starts_with("3001tm"); }),
                  level == 2 ? 3 : 0);
        for (const front::Equation& equation : done->Run->Result().Equations) {
            const std::string& name = done->Run->Result().Of(equation).Name;
            if (name == "Z") {
                EXPECT_EQ(equation.On.Size(), level == 1 ? 3u : 2u);
                continue;
            }
            logic::Cover expected(13, 1);
            for (const auto& [in, out] : rows) {
                if ((out >> (name[1] - '0') & 1) == 0) continue;
                std::string inputs;  // in the order of the declaration, A12 first
                for (int bit = 12; bit >= 0; --bit) inputs += (in >> bit & 1) != 0 ? '1' : '0';
                expected.Add(inputs, "1");
            }
            EXPECT_TRUE(logic::Equivalent(expected, equation.On)) << name << " at level " << level;
            EXPECT_LT(equation.On.Size(), expected.Size() * 3 / 4);
        }
    }
}
