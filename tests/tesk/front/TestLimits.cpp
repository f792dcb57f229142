#include <gtest/gtest.h>

#include <random>

#include "Support.h"

namespace {

std::string Repeat(const std::string& text, int count) {
    std::string result;
    for (int i = 0; i < count; ++i) result += text;
    return result;
}

}  // namespace

// Whatever is thrown at the compiler ends in messages.
TEST(Limits, GarbageGivesErrors) {
    std::mt19937 dice(7);
    const std::string words[] = {"PIN ",
                                 "=",
                                 ";",
                                 "[",
                                 "]",
                                 "{",
                                 "}",
                                 "TABLE ",
                                 "SEQUENCE ",
                                 "PRESENT ",
                                 "NEXT ",
                                 "IF ",
                                 "OUT ",
                                 "A",
                                 "B1",
                                 "'b'",
                                 "10X",
                                 "..",
                                 "=>",
                                 ":",
                                 "&",
                                 "#",
                                 "$",
                                 "!",
                                 "(",
                                 ")",
                                 ".D",
                                 "\n",
                                 "$REPEAT i=[0..3]\n",
                                 "$REPEND\n",
                                 "{i}",
                                 "$MACRO M a\n",
                                 "$MEND\n",
                                 "FUNCTION ",
                                 "/*",
                                 "*/"};
    for (int round = 0; round < 300; ++round) {
        std::string text;
        const bool bytes = round % 2 == 0;
        for (int i = 0; i < 400; ++i)
            text += bytes ? std::string(1, static_cast<char>(dice())) : words[dice() % std::size(words)];
        EXPECT_GT(CompileWhole(text, "abelxm4s")->Run->Said.Errors(), 0u);
    }
}

TEST(Limits, LargeThingsAreRefusedOrDone) {
    std::string definitions;
    for (int i = 0; i < 60; ++i)
        definitions += "$DEFINE X" + std::to_string(i) + " X" + std::to_string(i + 1) + " X" +
                       std::to_string(i + 1) + "\n";
    std::string functions = "FUNCTION f0(a) { f0 = a $ A; }\n";
    for (int i = 1; i < 40; ++i) {
        const std::string last = "f" + std::to_string(i - 1);
        functions += "FUNCTION f" + std::to_string(i) + "(a) { f" + std::to_string(i) + " = " + last +
                     "(a) & " + last + "(!a); }\n";
    }
    std::string products;
    for (int i = 0; i < 28; ++i)
        products += (i == 0 ? "" : " & ") + ("(A" + std::to_string(i)) + " # B" + std::to_string(i) + ")";
    const std::string pins = "PIN=[A,Y]; PIN=[A31..0]; PIN=[B31..0];\n";
    const std::vector<std::pair<std::string, std::string>> cases{
        {pins + "Y = [A29..0]:$;", "2001tb"},
        {pins + "Y = " + products + ";", "2001tb"},
        {pins + "Y = A & ([A13..0]:$ # B0);", ""},  // longer than what is multiplied out may get
        {pins + "Y = " + Repeat("(", 10000) + "A" + Repeat(")", 10000) + ";", "1003ta"},
        {pins + "Y = " + Repeat("!(", 10000) + "A;", "1003ta"},
        {pins + "Y = " + Repeat("A & ", 300000) + ";", "1001ta"},
        {Repeat("x", 3 << 20), "0106tx"},
        {Repeat("[", 1 << 20), "1001ta"},
        {definitions + "X0\n", "0205tx"},
        {"$INCLUDE T.PLD\n", "0103tx"},
        {"$MACRO M a\nM a;\n$MEND\nM A;\n", "0305tx"},
        {Repeat("$REPEAT i=[0..4095]\n", 10) + Repeat("$REPEND\n", 10), "0107tx"},
        {"$REPEAT i=[0..4095]\n" + Repeat("PIN=A{i};\n", 200) + "$REPEND\n", "0107tx"},
        {pins + functions + "Y = f39(A);", "1405ta"},
        {pins + functions + "Y = f14(A);", ""},
        {"PIN=" + Repeat("N", 32) + "; PIN=Y; Y = 'b'1;", "1113ta"},
        {"PIN=[" + Repeat("N", 30) + "9..10]; PIN=Y; Y = 'b'1;", "1113ta"},  // as written it is short enough
        {"PIN=" + Repeat("N", 31) + "; PIN=[" + Repeat("M", 29) + "9..10]; PIN=Y; Y = 'b'1;", ""},
    };
    for (const auto& [body, code] : cases) {
        const auto done = Compile(body, code.empty() ? "m0" : "m");  // without its digit, too
        bool found = code.empty() && done->Run->Ok();
        for (const std::string& line : done->Codes()) found = found || line.substr(0, 6) == code;
        EXPECT_TRUE(found) << code << " " << body.substr(0, 80) << testing::PrintToString(done->Lines());
    }
}

// Long chains of variables are no recursion.
TEST(Limits, LongChains) {
    std::string body = "PIN=[A,B]; PIN=Y;\nT0A = A;\n";
    for (int i = 1; i < 20000; ++i)
        body += "T" + std::to_string(i) + "A = !T" + std::to_string(i - 1) + "A $ B;\n";
    const auto done = Compile(body + "Y = T19999A;\n");
    EXPECT_TRUE(done->Run->Ok());
    EXPECT_EQ(Column(Table(done->Text(".PLA")), "Y", {"A", "B"}), "1001");
}
