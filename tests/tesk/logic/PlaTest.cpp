#include <gtest/gtest.h>

#include "TestCovers.h"
#include "base/RunTimeError.h"
#include "logic/Pla.h"

using namespace logic;
using namespace logictest;

namespace {

std::string ErrorOf(const std::string& text) {
    try {
        ReadPla(text);
    } catch (const base::RunTimeError& error) {
        return error.what();
    }
    return "";
}

}  // namespace

TEST(Pla, SymbolsByType) {
    const struct {
        const char* Type;
        unsigned On, DontCare, Off;  // of the outputs 1 0 - ~ 4 2
    } cases[] = {{"", 0b010001, 0b100100, 0},
                 {".type f\n", 0b010001, 0, 0},
                 {".type fd\n", 0b010001, 0b100100, 0},
                 {".type fr\n", 0b010001, 0, 0b000010},
                 {".type fdr\n", 0b010001, 0b100100, 0b000010}};
    for (const auto& c : cases) {
        const Pla pla =
            ReadPla(std::string("title\n.i 4\n.o 6\n") + c.Type + "# x\n0 1 - 2 | 1 0 - ~ 4 2 # y\n.e\nrest");
        EXPECT_EQ(Value(pla.On, 2), c.On) << c.Type;
        EXPECT_EQ(Value(pla.DontCare, 6), c.DontCare) << c.Type;
        EXPECT_EQ(Value(pla.Off, 14), c.Off) << c.Type;
        EXPECT_EQ(Value(pla.On, 3), 0u);
    }
}

TEST(Pla, RowsAndNames) {
    const Pla pla =
        ReadPla(".i 3\r\n.o 2\r\n.ilb a b c\r\n.ob x y\r\n.p 99\r\n10-\r\n 11\r\n0~0 11\r\n000 10\n.end");
    EXPECT_EQ(pla.On.Size(), 2u);  // "~" takes no value: an empty row
    EXPECT_EQ(pla.InputNames, (std::vector<std::string>{"a", "b", "c"}));
    const std::string text = WritePla(pla.On, pla.InputNames, pla.OutputNames);
    EXPECT_EQ(text, ".i 3\n.o 2\n.ilb a b c\n.ob x y\n.type f\n.p 2\n10- 11\n000 10\n.e\n");
    const Pla again = ReadPla(text);
    EXPECT_TRUE(again.On == pla.On);
    EXPECT_EQ(again.OutputNames, pla.OutputNames);
    EXPECT_TRUE(ReadPla(".i 2\n.o 1\n.ob a b c\n11 1\n").OutputNames.empty());
}

TEST(Pla, BadFilesAreNamedByLine) {
    const struct {
        const char *Text, *Error;
    } cases[] = {
        {"", "line 0: .i and .o are missing"},
        {".i 2\n", "line 1: .i and .o are missing"},
        {".i 2\n.i 3\n", "line 2: given twice"},
        {".i x\n", "line 1: not a number: x"},
        {".i\n", "line 1: a number is missing"},
        {".o 0\n", "line 1: must be 1 to 1024"},
        {".i 99999999999999999999\n", "line 1: not a number: 99999999999999999999"},
        {".i 2000000000\n", "line 1: must be 1 to 1024"},
        {"01 1\n.i 2\n.o 1\n", "line 1: a row before .i and .o"},
        {".i 2\n.o 1\n0x 1\n", "line 3: 'x' is no input of a row"},
        {".i 2\n.o 1\n01 x\n", "line 3: 'x' is no output of a row"},
        {".i 2\n.o 1\n01\n.e\n", "line 4: the row before this line is too short"},
        {".i 2\n.o 1\n01\n", "line 3: the last row is too short"},
        {".i 2\n.o 1\n01\n1 01\n", "line 4: the row is too long, or one before it too short"},
        {".ilb a\n.i 1\n", "line 1: .i must come before the names"},
        {".i 1\n.o 1\n.type x\n", "line 3: the type must be f, fd, fr or fdr"},
        {".i 1\n.o 1\n1 1\n.type fr\n", "line 4: .type must come before the rows"},
        {".mv 4 2 3\n", "line 1: .mv is not supported"},
        {".phase 10\n", "line 1: .phase is not supported"},
        {".kiss\n", "line 1: unknown directive .kiss"},
    };
    for (const auto& c : cases) EXPECT_EQ(ErrorOf(c.Text), c.Error);
    std::string many = ".i 1000\n.o 1000\n";
    const std::string row = std::string(1000, '-') + std::string(1000, '1') + "\n";
    for (int i = 0; i < 3; ++i) many += row;
    EXPECT_EQ(ErrorOf(many), "");
}

TEST(Pla, MinimizesByType) {
    const struct {
        const char* Text;
        std::size_t Terms;
    } cases[] = {
        {".i 2\n.o 1\n.type f\n11 1\n10 -\n", 1},  {".i 2\n.o 1\n.type fd\n11 1\n10 -\n01 -\n", 1},
        {".i 2\n.o 1\n.type fr\n11 1\n00 0\n", 1}, {".i 2\n.o 1\n.type fdr\n11 1\n00 1\n01 -\n10 0\n", 2},
        {".i 2\n.o 2\n00 01\n11 1-\n", 2},
    };
    for (const auto& c : cases) {
        const Pla pla = ReadPla(c.Text);
        for (const Level level : {Level::m2, Level::m3, Level::m4})
            EXPECT_EQ(Minimize(pla, level).Terms.Size(), c.Terms) << c.Text;
    }
    EXPECT_THROW(Minimize(ReadPla(".i 2\n.o 1\n.type fr\n1- 1\n11 0\n"), Level::m4), base::RunTimeError);
    EXPECT_THROW(Minimize(ReadPla(".i 2\n.o 1\n.type fdr\n1- 1\n11 0\n"), Level::m1), base::RunTimeError);
}
