#include <gtest/gtest.h>

#include "TestCovers.h"
#include "base/RunTimeError.h"

using namespace logic;
using namespace logictest;

namespace {

Cover Make(std::initializer_list<std::pair<const char*, const char*>> cubes) {
    Cover cover(static_cast<int>(std::string(cubes.begin()->first).size()),
                static_cast<int>(std::string(cubes.begin()->second).size()));
    for (const auto& [inputs, outputs] : cubes) cover.Add(inputs, outputs);
    return cover;
}

}  // namespace

TEST(Cube, RelationsAcrossWordBorders) {
    const std::string free(70, '-');
    std::string low = free, high = free, both = free;
    low[33] = '0';
    high[33] = '1';
    both[33] = '0';
    both[69] = '1';
    Cover c(70, 70);
    const std::string out(69, '0');
    c.Add(low, "1" + out);
    c.Add(high, out + "1");
    c.Add(both, "1" + out);
    const Layout& layout = c.Form();
    EXPECT_EQ(layout.Distance(c[0], c[1]), 2);
    EXPECT_EQ(layout.Distance(c[0], c[2]), 0);
    EXPECT_TRUE(layout.Contains(c[0], c[2]));
    EXPECT_FALSE(layout.Contains(c[2], c[0]));
    EXPECT_FALSE(layout.Meet(c[0], c[1]));
    EXPECT_EQ(layout.InputLiterals(c[2]), 2);
    EXPECT_EQ(c.Literals(), 7u);
    EXPECT_EQ(InputText(layout, c[2]), both);
    layout.Supercube(c[0], c[0], c[1]);
    EXPECT_EQ(InputText(layout, c[0]), free);
    EXPECT_EQ(layout.OutputCount(c[0]), 2);
    EXPECT_THROW(c.Add("01", "1"), base::RunTimeError);
    EXPECT_THROW(c.Add(free, "2" + out), base::RunTimeError);
}

TEST(Check, TautologyContainmentAndComplement) {
    EXPECT_TRUE(IsTautology(Make({{"1-", "11"}, {"0-", "10"}, {"-0", "01"}, {"01", "01"}})));
    EXPECT_FALSE(IsTautology(Make({{"1-", "11"}, {"0-", "10"}, {"-0", "01"}})));
    EXPECT_TRUE(Covers(Make({{"1-", "1"}, {"-1", "1"}}), Make({{"11", "1"}})));
    EXPECT_FALSE(Covers(Make({{"11", "1"}}), Make({{"1-", "1"}})));
    EXPECT_FALSE(IsTautology(Cover(0, 1)));
    EXPECT_TRUE(IsTautology(Make({{"", "1"}})));
}

TEST(Check, AgreesWithEvaluationOnRandomCovers) {
    Random random(7);
    for (int round = 0; round < 60; ++round) {
        const int inputs = 1 + static_cast<int>(random.Below(8)),
                  outputs = 1 + static_cast<int>(random.Below(4));
        const Cover a = RandomCover(random, inputs, outputs, 12, 6),
                    b = RandomCover(random, inputs, outputs, 3, 5);
        const auto complement = Complement(a);
        ASSERT_TRUE(complement.has_value());
        const Cover none(inputs, outputs);
        bool covers = true, same = true;
        for (unsigned p = 0; p < (1u << inputs); ++p) {
            covers &= (Value(b, p) & ~Value(a, p)) == 0;
            same &= Value(b, p) == Value(a, p);
            ASSERT_EQ(Value(a, p) ^ Value(*complement, p), (1u << outputs) - 1);
        }
        EXPECT_EQ(Covers(a, b), covers);
        EXPECT_EQ(Implements(a, b, none), same);
        EXPECT_EQ(Implements(b, a, none), same);
        EXPECT_EQ(Implements(a, b, a), covers);
        EXPECT_FALSE(Equivalent(a, *complement));
    }
}

TEST(Check, GivesUpInsteadOfGrowing) {
    Cover pairs(120, 1);  // x0 x1 + x2 x3 + …: the complement has 2^60 cubes
    for (int v = 0; v < 120; v += 2) {
        Word* cube = pairs.Append();
        pairs.Form().SetInput(cube, v, Literal::One);
        pairs.Form().SetInput(cube, v + 1, Literal::One);
        pairs.Form().SetOutput(cube, 0, true);
    }
    EXPECT_FALSE(Complement(pairs, 1000).has_value());
    EXPECT_FALSE(CoversWithin(pairs, pairs, 1).has_value());
    EXPECT_TRUE(Equivalent(pairs, pairs));
}

TEST(Quick, AbsorbsAndMerges) {
    const Cover on = Make({{"000", "10"}, {"001", "10"}, {"010", "10"}, {"011", "11"}, {"01-", "10"}});
    EXPECT_EQ(Minimize(on, Cover(3, 2), Level::m0).Terms.Size(), 5u);
    const MinimizeResult result = Minimize(on, Cover(3, 2), Level::m1);
    EXPECT_EQ(result.Used, Level::m1);
    EXPECT_EQ(result.Terms.Size(), 2u);
    EXPECT_TRUE(Equivalent(result.Terms, on));
    const MinimizeResult single = Minimize(on, Cover(3, 2), Level::m1, {.Shared = false});
    for (std::size_t i = 0; i < single.Terms.Size(); ++i)
        EXPECT_EQ(single.Terms.Form().OutputCount(single.Terms[i]), 1);
    EXPECT_TRUE(Equivalent(single.Terms, on));
    EXPECT_THROW(Minimize(on, Cover(3, 1), Level::m1), base::RunTimeError);
    EXPECT_THROW(MinimizeOnOff(on, on, Level::m1), base::RunTimeError);
}
