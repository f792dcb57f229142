#include <gtest/gtest.h>

#include "TestCovers.h"
#include "base/RunTimeError.h"
#include "logic/Covering.h"
#include "logic/Primes.h"

using namespace logic;
using namespace logictest;

namespace {

constexpr Level everyLevel[] = {Level::m0, Level::m1, Level::m2, Level::m3, Level::m4};

// Point by point, by evaluation alone.
void ExpectImplements(const Cover& result, const Cover& on, const Cover& dontCare) {
    for (unsigned p = 0; p < (1u << on.Inputs()); ++p) {
        const unsigned value = Value(result, p), free = Value(dontCare, p), need = Value(on, p) & ~free;
        ASSERT_EQ(need & ~value, 0u) << "misses point " << p;
        ASSERT_EQ(value & ~(need | free), 0u) << "holds point " << p;
    }
}

// The least number of cubes by trying all choices of all implicants: for three inputs.
class Least {
  public:
    Least(unsigned need, unsigned allowed) : allowed_(allowed) {
        for (unsigned shape = 0; shape < 27 * 3; ++shape) {
            const unsigned points = Points(shape / 3, shape % 3 + 1);
            if ((points & ~allowed_) == 0) cubes_.push_back(points);
        }
        while (!Reach(need, size_)) ++size_;
    }
    std::size_t Size() const { return size_; }

    // Bit p + 8o: output o at point p.
    static unsigned Table(const Cover& cover) {
        unsigned table = 0;
        for (unsigned p = 0; p < 8; ++p)
            for (unsigned o = 0; o < 2; ++o) table |= ((Value(cover, p) >> o) & 1) << (p + 8 * o);
        return table;
    }

  private:
    static unsigned Points(unsigned inputs, unsigned outputs) {
        unsigned points = 0;
        for (unsigned p = 0; p < 8; ++p) {
            bool in = true;
            for (unsigned v = 0, rest = inputs; v < 3; ++v, rest /= 3)
                in &= rest % 3 == 2 || rest % 3 == ((p >> v) & 1);
            if (in) points |= ((outputs & 1) << p) | ((outputs >> 1) << (p + 8));
        }
        return points;
    }
    bool Reach(unsigned need, std::size_t left) const {
        if (need == 0) return true;
        if (left == 0) return false;
        for (const unsigned cube : cubes_)
            if ((cube & need & (~need + 1)) != 0 && Reach(need & ~cube, left - 1)) return true;
        return false;
    }
    unsigned allowed_;
    std::vector<unsigned> cubes_;
    std::size_t size_ = 0;
};

}  // namespace

TEST(Minimize, KnownMinima) {
    const auto ones = [](unsigned p) { return static_cast<unsigned>(std::popcount(p)); };
    const struct {
        const char* Name;
        int Inputs, Outputs;
        std::function<unsigned(unsigned)> Function;
        std::size_t Terms;
    } cases[] = {
        {"parity", 6, 1, [&](unsigned p) { return ones(p) & 1; }, 32},
        {"majority", 7, 1, [&](unsigned p) { return ones(p) >= 4 ? 1u : 0u; }, 35},
        {"exactly two of five", 5, 1, [&](unsigned p) { return ones(p) == 2 ? 1u : 0u; }, 10},
        {"ring", 5, 1, [&](unsigned p) { return p != 0 && p != 31 ? 1u : 0u; }, 5},
        {"count of ones", 5, 3, ones, 31},  // 16 + 10 + 5
        {"half adder", 2, 2, ones, 3},
        {"constant", 4, 2, [](unsigned) { return 3u; }, 1},
        {"nothing", 4, 2, [](unsigned) { return 0u; }, 0},
        {"shared product", 4, 2, [](unsigned p) { return p == 15   ? 3u
                                                         : p == 12 ? 1u
                                                         : p == 3  ? 2u
                                                                   : 0u; },
         3},
    };
    for (const auto& c : cases) {
        const Cover on = Minterms(c.Inputs, c.Outputs, c.Function), none(c.Inputs, c.Outputs);
        const MinimizeResult exact = Minimize(on, none, Level::m2);
        EXPECT_EQ(exact.Terms.Size(), c.Terms) << c.Name;
        EXPECT_TRUE(exact.Proved) << c.Name;
        EXPECT_EQ(Minimize(on, none, Level::m4).Terms.Size(), c.Terms) << c.Name;
        ExpectImplements(exact.Terms, on, none);
    }
}

TEST(Minimize, ExactAgreesWithTryingEverything) {
    Random random(11);
    for (int round = 0; round < 150; ++round) {
        const Cover on = RandomCover(random, 3, 2, 1 + static_cast<int>(random.Below(5)), 3);
        const Cover free = RandomCover(random, 3, 2, static_cast<int>(random.Below(3)), 2);
        const unsigned need = Least::Table(on) & ~Least::Table(free);
        const MinimizeResult exact = Minimize(on, free, Level::m2);
        ASSERT_TRUE(exact.Proved);
        ASSERT_EQ(exact.Terms.Size(), Least(need, need | Least::Table(free)).Size()) << "round " << round;
    }
}

TEST(Minimize, EveryLevelImplementsRandomFunctions) {
    Random random(5);
    for (int round = 0; round < 40; ++round) {
        const int inputs = 2 + static_cast<int>(random.Below(7)),
                  outputs = 1 + static_cast<int>(random.Below(5));
        const Cover on = RandomCover(random, inputs, outputs, 25, 1 + random.Below(6));
        const Cover free = RandomCover(random, inputs, outputs, static_cast<int>(random.Below(10)), 4);
        for (const bool shared : {true, false}) {
            std::size_t terms[5];
            for (const Level level : everyLevel) {
                const MinimizeResult result = Minimize(on, free, level, {.Shared = shared});
                ExpectImplements(result.Terms, level <= Level::m1 ? Cover(on) : on,
                                 level <= Level::m1 ? Cover(inputs, outputs) : free);
                terms[static_cast<int>(level)] = result.Terms.Size();
                EXPECT_TRUE(result.Terms == Minimize(on, free, level, {.Shared = shared}).Terms);
                for (std::size_t i = 0; i < result.Terms.Size() && !shared; ++i)
                    EXPECT_EQ(result.Terms.Form().OutputCount(result.Terms[i]), 1);
            }
            EXPECT_LE(terms[2], terms[4]);
            EXPECT_LE(terms[4], terms[3]);
            EXPECT_LE(terms[1], terms[0]);
        }
    }
}

TEST(Minimize, OnAndOffSet) {
    Random random(3);
    for (int round = 0; round < 30; ++round) {
        const int inputs = 3 + static_cast<int>(random.Below(5));
        std::vector<unsigned> value(1u << inputs);
        for (auto& v : value) v = random.Below(9);  // bit 0 and 1 the outputs, bit 2 and 3 take the point out
        const Cover on = Minterms(inputs, 2, [&](unsigned p) { return value[p] > 3 ? 0u : value[p]; });
        const Cover off = Minterms(inputs, 2, [&](unsigned p) { return value[p] > 3 ? 0u : 3 - value[p]; });
        for (const Level level : everyLevel) {
            const Cover result = MinimizeOnOff(on, off, level).Terms;
            for (unsigned p = 0; p < value.size(); ++p)
                ASSERT_TRUE(value[p] > 3 || Value(result, p) == value[p]);
        }
    }
}

// More inputs than any table of points, checked by the library's own recursion.
TEST(Minimize, WideFunctions) {
    Random random(17);
    for (const int inputs : {18, 70}) {
        const Cover on = RandomCover(random, inputs, 6, 60, 8), free = RandomCover(random, inputs, 6, 10, 8);
        std::size_t before = on.Size();
        for (const Level level : {Level::m3, Level::m4, Level::m2}) {
            const MinimizeResult result = Minimize(on, free, level, {.Effort = 0.01});
            EXPECT_TRUE(Implements(result.Terms, on, free));
            EXPECT_LE(result.Terms.Size(), before);
            before = result.Terms.Size();
            EXPECT_EQ(result.Used, level == Level::m2 && !result.Proved ? Level::m4 : level);
        }
    }
}

// No more terms, no more literals and no lower bound than each level had on these when they were measured.
TEST(Minimize, DoesAsWellAsEver) {
    struct Reach {
        std::size_t Terms;
        int Literals;
        std::size_t Bound;
    };
    const struct {
        int Inputs, Outputs, Cubes;
        std::uint32_t Free;
        bool Shared;
        Reach Exact, Fast, Best;
    } cases[] = {
        {8, 3, 60, 4, true, {12, 47, 12}, {13, 47, 5}, {12, 47, 12}},
        {8, 8, 200, 3, true, {85, 708, 70}, {110, 686, 1}, {91, 736, 29}},
        {9, 8, 120, 4, true, {94, 640, 94}, {98, 625, 6}, {95, 637, 69}},
        {9, 4, 120, 4, false, {76, 347, 76}, {78, 356, 33}, {76, 347, 76}},
        {10, 6, 150, 5, true, {83, 495, 73}, {93, 506, 7}, {84, 507, 30}},
        {12, 5, 150, 6, true, {69, 390, 10}, {76, 354, 1}, {70, 359, 1}},
        {12, 5, 150, 6, false, {101, 411, 101}, {102, 413, 53}, {101, 409, 53}},
        {16, 3, 60, 7, true, {44, 255, 44}, {44, 255, 37}, {44, 255, 37}},
    };
    for (const auto& c : cases) {
        Random random(static_cast<std::uint64_t>(c.Inputs * c.Cubes));
        const Cover on = RandomCover(random, c.Inputs, c.Outputs, c.Cubes, c.Free);
        const Cover free = RandomCover(random, c.Inputs, c.Outputs, c.Cubes / 8, c.Free);
        for (const Level level : {Level::m2, Level::m3, Level::m4}) {
            const Reach& reach = level == Level::m2 ? c.Exact : level == Level::m3 ? c.Fast : c.Best;
            const MinimizeResult result = Minimize(on, free, level, {.Shared = c.Shared, .Effort = 0.02});
            int literals = 0;
            for (std::size_t i = 0; i < result.Terms.Size(); ++i)
                literals += result.Terms.Form().InputLiterals(result.Terms[i]) +
                            result.Terms.Form().OutputCount(result.Terms[i]);
            SCOPED_TRACE(std::to_string(c.Inputs) + " inputs, level " +
                         std::to_string(static_cast<int>(level)));
            EXPECT_LE(result.Terms.Size(), reach.Terms);
            EXPECT_TRUE(result.Terms.Size() < reach.Terms || literals <= reach.Literals) << literals;
            EXPECT_GE(result.LowerBound, reach.Bound);
        }
    }
}

TEST(Minimize, ExactLevelSaysThatItGaveUp) {
    Random random(31);
    const Cover on = Minterms(9, 4, [&](unsigned) { return random.Below(16); }), none(9, 4);
    const MinimizeResult exact = Minimize(on, none, Level::m2, {.Effort = 0.01});
    EXPECT_EQ(exact.Used, Level::m4);
    EXPECT_FALSE(exact.Proved);
    EXPECT_LT(exact.LowerBound, exact.Terms.Size());
    EXPECT_LE(exact.Terms.Size(), Minimize(on, none, Level::m4, {.Effort = 0.01}).Terms.Size());
    ExpectImplements(exact.Terms, on, none);
}

TEST(Minimize, EndsWhereTheOffSetIsHuge) {
    Cover pairs(120, 1);
    for (int v = 0; v < 120; ++v) {
        Word* cube = pairs.Append();
        pairs.Form().SetInput(cube, v, Literal::One);
        pairs.Form().SetInput(cube, (v + 1 + v % 2) % 120, Literal::One);
        pairs.Form().SetOutput(cube, 0, true);
    }
    const MinimizeResult result = Minimize(pairs, Cover(120, 1), Level::m4, {.Effort = 0.05});
    EXPECT_TRUE(Equivalent(result.Terms, pairs));
    EXPECT_LE(result.Terms.Size(), pairs.Size());
}

TEST(Primes, AreAllThereAre) {
    Random random(23);
    for (int round = 0; round < 20; ++round) {
        const Cover f = RandomCover(random, 4, 3, 8, 4);
        Budget budget(1000000);
        Cover primes;
        ASSERT_TRUE(AllPrimes(f, 1000, budget, primes));
        Cover implicants(f.Form());
        for (unsigned shape = 0; shape < 81 * 8; ++shape) {
            Cover one(f.Form());
            Word* cube = one.Append();
            for (int v = 0, rest = static_cast<int>(shape / 8); v < 4; ++v, rest /= 3)
                f.Form().SetInput(cube, v, static_cast<Literal>(rest % 3 + 1));
            for (int o = 0; o < 3; ++o) f.Form().SetOutput(cube, o, ((shape >> o) & 1) != 0);
            if (shape % 8 != 0 && Covers(f, one)) implicants.AddAll(one);
        }
        implicants.Absorb();
        implicants.SortUnique();
        primes.SortUnique();
        EXPECT_TRUE(primes == implicants);
    }
}

TEST(Covering, ProvesTheLeastChoice) {
    Random random(29);
    for (int round = 0; round < 60; ++round) {
        const int columns = 10;
        Lists rows;
        std::vector<unsigned> masks;
        for (int r = 0; r < 14; ++r) {
            // In turns any three columns, and two of a half: halves that have nothing in common.
            const bool any = round % 2 == 0;
            const auto column = [&] { return any ? random.Below(10) : random.Below(5) + 5u * (r % 2); };
            unsigned mask = 1u << column();
            for (int k = any ? 0 : 1; k < 2; ++k) mask |= 1u << column();
            for (int c = 0; c < columns; ++c)
                if ((mask >> c) & 1) rows.Push(c);
            rows.Close();
            masks.push_back(mask);
        }
        int least = columns;
        for (unsigned choice = 0; choice < 1024; ++choice)
            if (std::all_of(masks.begin(), masks.end(), [&](unsigned m) { return (m & choice) != 0; }))
                least = std::min(least, std::popcount(choice));
        for (const std::uint64_t search : {0, 100000}) {
            const CoveringResult result = SolveCovering(rows, columns, {100000, 100000, search, 1000000});
            EXPECT_TRUE(result.Proved);
            EXPECT_EQ(static_cast<int>(result.Chosen.size()), least);
            EXPECT_EQ(static_cast<int>(result.LowerBound), least);
            for (std::size_t r = 0; r < rows.Size(); ++r)
                EXPECT_TRUE(std::any_of(rows[r].begin(), rows[r].end(), [&](int c) {
                    return std::binary_search(result.Chosen.begin(), result.Chosen.end(), c);
                }));
        }
    }
}
