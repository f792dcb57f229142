#include <gtest/gtest.h>

#include <set>

#include "Support.h"
#include "cpld/Messages.h"
#include "dis/MessageTable.h"
#include "fit/MessageTable.h"
#include "net/MessageTable.h"
#include "proof/MessageTable.h"
#include "sim/MessageLog.h"
#include "sim/SiOrder.h"

// The data file is what the stages say of their own codes; each code has the form that the lookup asks for.
TEST(Messages, DataFileHoldsEveryCode) {
    std::string data;
    std::set<std::string_view> numbers;
    for (const std::span<const model::MessageEntry> table :
         std::initializer_list<std::span<const model::MessageEntry>>{
             front::MessageTable(), fit::kMessages, proof::kMessages, dis::kMessages, cpld::kMessages,
             sim::kMessages, net::kMessages}) {
        data += model::MessageData(table);
        for (const model::MessageEntry& entry : table) {
            EXPECT_TRUE(numbers.insert(entry.Number).second) << entry.Number;
            ASSERT_EQ(entry.Number.size(), 6u);
            EXPECT_EQ(entry.Number.find_first_not_of("0123456789"), 4u);
            EXPECT_NE(std::string("tx ta tb tm tc va vs vh").find(entry.Number.substr(4)), std::string::npos);
            EXPECT_FALSE(entry.Message.empty() || entry.Description.empty() || entry.Information.empty());
        }
    }
    EXPECT_EQ(DataText("TeskErr.txt"), data);
}

// Each fault with its number and line (the body begins in line 2).
TEST(Messages, FaultsNameTheirLine) {
    struct Case {
        const char* Body;
        std::vector<std::string> Codes;
    };
    const std::string pins = "PIN=[A,B]; PIN=[Y,Z,Q]; PIN=[D3..0]; FIELD F=[D3..0];\n";
    const Case cases[] = {
        {"Y = A\nZ = B;", {"1001ta:3"}},
        {"\nY = CLOKC;", {"1201ta:4"}},
        {"Y = A & (B;\nZ = B # A;", {"1001ta:3"}},
        {"Y = A; Y = B;", {"1401ta:3"}},
        {"PIN = A; Y = A;", {"1110ta:3"}},
        {"PIN 3 = M; PIN 3 = N; Y = A;", {"1111ta:3"}},
        {"PIN [1,2] = [M]; Y = A;", {"1112ta:3"}},
        {"PIN 0 = M;\nY = A;", {"1001ta:3"}},
        {"PIN [1,0] = [M,N];\nPIN [2..0] = [O,P,R];\nPINNODE 0 = S; Y = A;",
         {"1001ta:3", "1001ta:4", "1001ta:5"}},
        {"Y = F;", {"1301ta:3"}},
        {"[Y,Z] = F;", {"1301ta:3"}},
        {"Y = F:1F;", {"1302ta:3"}},
        {"Y = F:[5..2];", {"1303ta:3"}},
        {"FIELD G=[H, D0]; FIELD H=[D3..1];\nY = G:F; Z = H:[0..7];", {}},
        {"FIELD G=[H, D0]; FIELD H=[G];\nY = G:0;", {"1116ta:3"}},
        {"Y = A & 'b'X;", {"1304ta:3"}},
        {"Y = A & 2;", {"1305ta:3"}},
        {"Y = F:'b'2;", {"1005ta:3"}},
        {"Y.D = A; Y.T = B;", {"1403ta:3"}},
        {"Y = A; Y.CK = B;", {"1402ta:3"}},
        {"Y = A; Y.AR = B;\nZ = A; Z.AP = B;", {"1402ta:3", "1402ta:4"}},
        {"Y.IO = A;\nY.DQ = A; Z = B;", {"1402ta:3", "1402ta:4"}},
        {"[Y,NC] = [A,B];", {}},
        {"FUNCTION f(a) { f = a; } Y = f(A);\nf = B;", {"1203ta:4"}},
        {"Y.QQ = A;", {"1402ta:3"}},
        {"T = S; S = T; Y = T;", {"1202ta:3"}},
        {"Y = A; U = B;", {"1205ta:3"}},
        {"Y = @A;", {"1002ta:3"}},
        {"PIN = TABLE; Y = A;", {"1006ta:3"}},
        {"FIELD G=[D0..E3]; Y = A;", {"1114ta:3"}},
        {"FUNCTION f(a) { f = g(a); } FUNCTION g(a) { g = f(a); }\nY = f(A);", {"1405ta:3"}},
        {"FUNCTION f(a) { f = a; }\nY = f(A, B);", {"1404ta:4"}},
        {"APPEND Y = A; APPEND !Y = B;", {"1406ta:3"}},
        {"SEQUENCE F { PRESENT 0 NEXT 1; PRESENT 0 NEXT 1; PRESENT 1 }", {"1501ta:3"}},
        {"Y = A;\n/* no end", {"0108tx:4"}},
        {"Y = A;\n$ENDIF", {"0203tx:4"}},
        {"$IFDEF K\nY = A;", {"0204tx:3", "1407ta:1"}},
        {"$INCLUDE none.inc\nY = A;", {"0102tx:3"}},
        {"$REPEAT i = [0..99999]\n$REPEND\nY=A;", {"0302tx:3"}},
        {"$REPEAT i = [0..2]\nY=A;", {"0301tx:3", "1407ta:1"}},
        {"$MACRO M a b\n$MEND\nM A;\nY=A;", {"0304tx:5"}},
        {"$MACRO M a\nY = a;\n$MEND\n\nM CC;", {"1201ta:7"}},
        {"$MACRO N b\nY = b;\n$MEND\n$MACRO M a\nN a;\n$MEND\nM CC;", {"1201ta:9"}},
        {"$REPEAT i = [0..1]\nY = A{i/0};\n$REPEND\nZ=A;", {"0306tx:4"}},
        {"Rev 7; Y = A;", {"1104ta:3", "1103ta:3"}},
    };
    for (const Case& test : cases) {
        const auto done = Compile(pins + test.Body);
        std::vector<std::string> codes = done->Codes();
        if (!codes.empty() && !test.Codes.empty() && test.Codes[0].substr(4, 2) == "tx")
            codes.resize(std::min<std::size_t>(codes.size(), test.Codes.size()));
        std::vector<std::string> expected = test.Codes;
        if (!expected.empty() && expected[0].substr(4, 2) == "tx")
            expected.resize(std::min(expected.size(), codes.size()));
        EXPECT_EQ(codes, expected) << test.Body << (codes.empty() ? "" : "\n" + done->Lines()[0]);
    }
}

TEST(Messages, NearestNameIsSuggestedAndColumnsAreTold) {
    const auto done = Compile("PIN = CLOCK; PIN = Y;\n  Y = CLOKC # CLOCK & clock;");
    ASSERT_EQ(done->Lines().size(), 2u);
    EXPECT_EQ(done->Lines()[0],
              "[1201ta] Error: Unknown name: \"CLOKC\"; did you mean \"CLOCK\"? (T.PLD line 3 column 7)");
    EXPECT_NE(done->Lines()[1].find("column 23"), std::string::npos) << done->Lines()[1];
    const auto twice = Compile("PIN = A; PIN = [Y,Q];\nY = A; Q.D = A; Y = A; Q.D = A;")->Lines();
    ASSERT_EQ(twice.size(), 2u);
    EXPECT_NE(twice[0].find(": Y, first in line 3 "), std::string::npos) << twice[0];
    EXPECT_NE(twice[1].find(": Q.D, first in line 3 "), std::string::npos) << twice[1];
}

// Under a fault the list goes on; each statement with a fault is told, up to a hundred.
TEST(Messages, ReadingGoesOnBehindAFault) {
    std::string body = "PIN = A; PIN = Y;\n";
    for (int i = 0; i < 150; ++i) body += "X" + std::to_string(i) + " = A & ;\n";
    const auto done = Compile(body, "l");
    EXPECT_EQ(done->Run->Said.Errors(), 100u);
    EXPECT_EQ(done->Codes().back(), "1007ta:0");
    const std::string list = done->Text(".LST");
    EXPECT_NE(list.find("    3: X0 = A & ;\r\n[1001ta] Error: "), std::string::npos) << list.substr(0, 500);
    EXPECT_EQ(done->Files.Texts.count("T.DOC"), 0u);
}

// A comma forgotten between two entries is told as that, not as a name that nobody wrote.
TEST(Messages, CommaForgottenInOrder) {
    sim::AbsDesign design;
    for (const char* name : {"CLK", "A", "B1", "B0"}) design.Nets.emplace_back().Name = name;
    const std::pair<const char*, const char*> cases[] = {{"CLK A, B1", "CLK"},
                                                         {"CLK, A [B1, B0]", "A"},
                                                         {"CLK, [B1..0]A", "[B1..0]"},
                                                         {"CLK, [B1 B0]", "[B1"},
                                                         {"CLK %2, A", "CLK"},
                                                         {"A, %2 !CLK", "%2"},
                                                         {" CLK , % 2,! A,\r\n [ B1 .. 0 ]", ""},
                                                         {"[ B1 , B0 ], A", ""}};
    for (const auto& [order, behind] : cases) {
        sim::MessageLog log;
        sim::ReadOrder(order, 1, design, log);
        std::string told;
        for (const auto& message : log.Items()) told += message.Number + " " + message.Text;
        const std::string expected = std::string("\",\" missing behind \"") + behind + "\"";
        EXPECT_EQ(told.find(expected) != std::string::npos, *behind != 0) << order << ": " << told;
        EXPECT_EQ(told.empty(), *behind == 0) << order << ": " << told;
    }
}

TEST(Messages, HeaderStatementsThatAreMissing) {
    const auto done =
        CompileWhole("Partno 1; Rev 2; Assy x; Loc y; Date z; Designer d;\nCompany c;\nPIN=A; PIN=Y; Y=A;");
    EXPECT_EQ(done->Codes(), (std::vector<std::string>{"1102ta:1"}));
    EXPECT_EQ(done->Run->Result().Head.Texts[3], "2");
    const auto& said = done->Run->Said;
    EXPECT_EQ(said.ListLine(said.Messages().at(1)),
              "[1101ta] Warning: Missing in the header: Device (T.PLD line 1)");
    const auto bare = CompileWhole("Name ; Date x;\nPIN=A; PIN=Y; Y=A;");
    EXPECT_EQ(bare->Codes(), (std::vector<std::string>{"1102ta:1"}));
    EXPECT_EQ(bare->Run->Said.Warnings(), 1u);
    EXPECT_NE(bare->Run->Said.Messages().at(1).Text.find(
                  ": Partno, Revision, Designer, Company, Assembly, Location, Device"),
              std::string::npos);
}
