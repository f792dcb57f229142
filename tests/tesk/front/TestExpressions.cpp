#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>

#include "Support.h"

namespace {

const std::vector<std::string> kInputs{"A", "B", "C", "E", "G"};
const std::string kPins = "PIN = Y; PIN = [A,B,C,E,G];\n";

using Point = std::map<std::string, bool>;
struct Random {
    std::string Text;
    std::function<bool(const Point&)> Value;
};

// A random expression as text, and its value worked out from the way it was made.
Random Make(std::mt19937& dice, int depth) {
    if (depth == 0 || dice() % 6 == 0) {
        const std::string name = kInputs[dice() % kInputs.size()];
        return {name, [name](const Point& point) { return point.at(name); }};
    }
    const Random a = Make(dice, depth - 1);
    if (dice() % 4 == 0) return {"!(" + a.Text + ")", [a](const Point& p) { return !a.Value(p); }};
    const Random b = Make(dice, depth - 1);
    switch (dice() % 3) {
        case 0:
            return {"(" + a.Text + ") & (" + b.Text + ")",
                    [=](const Point& p) { return a.Value(p) && b.Value(p); }};
        case 1:
            return {"(" + a.Text + ") # (" + b.Text + ")",
                    [=](const Point& p) { return a.Value(p) || b.Value(p); }};
        default:
            return {"(" + a.Text + ") $ (" + b.Text + ")",
                    [=](const Point& p) { return a.Value(p) != b.Value(p); }};
    }
}

}  // namespace

// At every level the table that is written is the function that the text says.
TEST(Expressions, RandomOnesKeepTheirMeaningAtEveryLevel) {
    std::mt19937 dice(20261122);
    for (int round = 0; round < 200; ++round) {
        const Random whole = Make(dice, 5);
        const Random part = Make(dice, 3);
        const std::string level = "bm" + std::to_string(round % 5) +
                                  (round % 3 == 0   ? "kb"
                                   : round % 3 == 1 ? "kd"
                                                    : "");
        const auto done = Compile(kPins + "T = " + part.Text + ";\nY = (" + whole.Text + ") $ !T;", level);
        ASSERT_TRUE(done->Run->Ok()) << whole.Text;
        const Table table(done->Text(".PLA"));
        for (unsigned value = 0; value < 32; ++value) {
            Point point;
            for (std::size_t i = 0; i < kInputs.size(); ++i) point[kInputs[i]] = (value >> i & 1) != 0;
            const bool expected = whole.Value(point) != !part.Value(point);
            ASSERT_EQ(table.At("Y", point), expected ? '1' : '0')
                << level << " " << whole.Text << " / " << part.Text;
        }
    }
}

// Long products of variables that stand for other expressions, in both senses, where the complement is taken
// by way of the variables' own complements.
TEST(Expressions, LongProductsOfVariables) {
    const std::string body =
        "PIN=[A5..0]; PIN=[B5..0]; PIN=[W,X,Y,Z];\nT = [A5..0]:$; V = !T & A0 # [A3..0]:$; U = [B5..0]:$;\n"
        "W = T & U; X = !(T # U); Y = !T & U; Z = !(T & U) $ (V & U # T);";
    for (const char* options : {"bm0", "bm1", "bm4"}) {
        const auto done = Compile(body, options);
        ASSERT_TRUE(done->Run->Ok()) << done->Lines().front();
        const Table table(done->Text(".PLA"));
        for (unsigned value = 0; value < 4096; value += 7) {
            Point point;
            for (unsigned i = 0; i < 6; ++i) {
                point["A" + std::to_string(i)] = (value >> i & 1) != 0;
                point["B" + std::to_string(i)] = (value >> (6 + i) & 1) != 0;
            }
            const bool t = (__builtin_popcount(value & 63) & 1) != 0,
                       u = (__builtin_popcount(value >> 6) & 1) != 0;
            const bool v = (!t && (value & 1) != 0) || (__builtin_popcount(value & 15) & 1) != 0;
            ASSERT_EQ(table.At("W", point), t && u ? '1' : '0');
            ASSERT_EQ(table.At("X", point), !t && !u ? '1' : '0');
            ASSERT_EQ(table.At("Y", point), !t && u ? '1' : '0');
            ASSERT_EQ(table.At("Z", point), !(t && u) != ((v && u) || t) ? '1' : '0') << options << value;
        }
    }
}

// An equation that is too long leaves the variables behind it as they were.
TEST(Expressions, VariablesAreWholeBehindAFailure) {
    const auto done = Compile("PIN=[A29..0]; PIN=[Y,Z];\nT = [A29..0]:$; U = T & A0;\nY = U; Z = U # A1;");
    EXPECT_EQ(done->Codes(), (std::vector<std::string>{"2001tb:4", "2001tb:4"}));
}

// Option "kd": complements that are too long are named and left out, the others are taken, whatever lies
// between; of registers those whose output can be inverted behind them.
TEST(Expressions, ComplementsBeyondTheLimitAreLeftOut) {
    const auto body = [](int large) {
        std::string text = "PIN=[A15..0]; PIN=[B15..0]; PIN=[W,Y,Z,T,L,D]; PIN=[X9..1];\nZ = A0 # A1;\n";
        for (int x = 1; x <= large; ++x) {
            text += "X" + std::to_string(x) + " = A0 & B0";
            for (int i = 1; i < 16; ++i) text += " # A" + std::to_string(i) + " & B" + std::to_string(i);
            text += ";";
        }
        return text + "\nY = X1;\nW = A0 # A1 & B0; T.T = A0 # A1; L.L = A0 # A1; D.D = A0 # A1;";
    };
    const std::vector<std::string> told{"[3004tm] Warning: Complement too large: X1 (T.PLD line 4 column 1)"};
    for (const std::string options : {"xm1kd", "xm4kd", "xm1kb", "xm4"}) {
        const auto done = Compile(body(1), options);
        const std::string text = done->Text(".DOC");
        const auto inverted = [&](const char* name) {
            return text.find("\n!" + std::string(name) + " =>") != text.npos;
        };
        const bool all = options.ends_with("kd");
        for (const char* name : {"Z", "L.L", "D.D"})
            EXPECT_EQ(inverted(name), all || options.ends_with("kb")) << options << name << text;
        EXPECT_EQ(inverted("W"), all) << options << text;
        EXPECT_FALSE(inverted("X1") || inverted("T.T")) << options << text;
        EXPECT_EQ(done->Lines(), all ? told : std::vector<std::string>{}) << options;
    }
    for (const int large : {8, 9}) {  // eight are named
        const std::string line = Compile(body(large), "m1kd")->Lines().at(0);
        const std::size_t from = line.rfind(", X") + 4;
        EXPECT_EQ(line.substr(from, line.find(" (T.PLD") - from), large == 9 ? " and 1 more" : "") << line;
        EXPECT_EQ(std::count(line.begin(), line.end(), ','), 7) << line;
    }
}

// Shared terms: two outputs keep their meaning and have terms in common.
TEST(Expressions, SharedReduction) {
    const std::string body =
        "PIN=[A,B,C,E]; PIN=[X,Y];\nX = !C & !E & B # B & C & !A # E; Y = B # E & A & !B # A;";
    const std::vector<std::string> in{"A", "B", "C", "E"};
    for (const std::string level : {"m1", "m2", "m3", "m4"}) {
        const Table single(Compile(body, "b" + level)->Text(".PLA"));
        const Table shared(Compile(body, "b" + level + "ks")->Text(".PLA"));
        for (const char* output : {"X", "Y"})
            EXPECT_EQ(Column(shared, output, in), Column(single, output, in)) << level;
        const bool quick = level == "m1";  // looks for no term that both can use
        EXPECT_EQ(shared.Rows.size(), single.Rows.size() - (quick ? 0 : 1)) << level;
    }
}

// Comparisons with lists of 3, by weight, against a plain count.
TEST(Expressions, Comparisons) {
    struct Case {
        const char* Text;
        const char* Expected;  // for values 0 to 7 of [A2..0]
    };
    const Case cases[] = {
        {"[A2..0]:5", "00000100"},       {"[A0..2]:5", "00000100"},  // by index, however the list runs
        {"[A2..0]:'b'1X0", "00001010"},  {"[A2..0]:'o'7", "00000001"},       {"[A2..0]:[2..5]", "00111100"},
        {"[A2..0]:[0..7]", "11111111"},  {"[A2..0]:[1..6]", "01111110"},     {"[A2..0]:[3..3]", "00010000"},
        {"![A2..0]:[1..6]", "10000001"}, {"!([A2..0]:[3..4])", "11100111"},  {"[A2..0]:&", "00000001"},
        {"[A2..0]:#", "01111111"},       {"[A2..0]:$", "01101001"},          {"F:7", "00000001"},
        {"HI:[4..7]", "00001111"},       {"HI:[0..3]", "11110000"},  // bits that the field lacks are ignored
        {"HI:'d'4", "00001100"},         {"[A2,A0]:4", "00001010"},  // one stem: weights 4 and 1
        {"[A2,B0]:2", "00001111"},       {"F:['b'010..'b'101]", "00111100"}, {"F:[4..9]", "11001111"},
        {"F:[0..FF]", "11111111"},  // runs over the end of the field
    };
    std::string body = "PIN=[A2..0]; PIN=B0; FIELD F=[A2..0]; FIELD HI=[A2..A1];\n";
    for (std::size_t i = 0; i < std::size(cases); ++i)
        body += "PIN=Y" + std::to_string(i) + "A; Y" + std::to_string(i) + "A = " + cases[i].Text + ";\n";
    const auto done = Compile(body);
    ASSERT_TRUE(done->Run->Ok()) << done->Lines().front();
    const Table table(done->Text(".PLA"));
    for (std::size_t i = 0; i < std::size(cases); ++i)
        EXPECT_EQ(Column(table, "Y" + std::to_string(i) + "A", {"A2", "A1", "A0"}), cases[i].Expected)
            << cases[i].Text;
}

// Every range of four bits against a plain count, in both senses.
TEST(Expressions, AllRangesOfFourBits) {
    for (unsigned low = 0; low < 16; ++low) {
        std::string body = "PIN=[A3..0];\n";
        const auto name = [](unsigned high, char sense) { return "Y" + std::to_string(high) + sense; };
        for (unsigned high = low; high < 16; ++high) {
            char bounds[32];
            std::snprintf(bounds, sizeof bounds, "[A3..0]:[%X..%X]", low, high);
            body += "PIN=" + name(high, 'P') + "; " + name(high, 'P') + " = " + bounds + ";\n";
            body += "PIN=" + name(high, 'N') + "; " + name(high, 'N') + " = !" + bounds + ";\n";
        }
        const Table table(Compile(body, "bm0")->Text(".PLA"));
        for (unsigned high = low; high < 16; ++high) {
            for (unsigned value = 0; value < 16; ++value) {
                const Point point{{"A3", (value & 8) != 0},
                                  {"A2", (value & 4) != 0},
                                  {"A1", (value & 2) != 0},
                                  {"A0", (value & 1) != 0}};
                const bool inside = low <= value && value <= high;
                ASSERT_EQ(table.At(name(high, 'P'), point), inside ? '1' : '0')
                    << low << " " << high << " " << value;
                ASSERT_EQ(table.At(name(high, 'N'), point), inside ? '0' : '1')
                    << low << " " << high << " " << value;
            }
        }
    }
}
