#include <gtest/gtest.h>

#include "Support.h"

namespace {

// The registers' next value, one digit a state and input, from the table of a machine over [Q1..0] with input
// G.
std::string NextStates(const Table& table, const std::string& kind) {
    std::string result;
    for (int state = 0; state < 4; ++state) {
        for (const bool g : {false, true}) {
            const std::map<std::string, bool> point{
                {"Q1", (state & 2) != 0}, {"Q0", (state & 1) != 0}, {"G", g}};
            int next = 0;
            for (int bit = 0; bit < 2; ++bit) {
                const std::string name = "Q" + std::to_string(bit) + ".";
                const bool q = (state >> bit & 1) != 0;
                const auto at = [&](const char* input) { return table.At(name + input, point) == '1'; };
                bool value = false;
                if (kind == "D") value = at("D");
                if (kind == "T") value = q != at("T");
                if (kind == "JK") value = q ? !at("K") : at("J");
                if (kind == "RS") value = q ? !at("R") : at("S");
                next |= value ? 1 << bit : 0;
            }
            result += static_cast<char>('0' + next);
        }
    }
    return result;
}

const std::string kMachine =
    " S {\n"
    " PRESENT 0 IF G NEXT 1; DEFAULT NEXT 0; OUT Z;\n"
    " PRESENT 1 IF G NEXT 2 OUT Y; IF !G NEXT 3;\n"
    " PRESENT 2 NEXT 0; IF NC NEXT 3 OUT Y; IF G OUT !Z;\n"
    " PRESENT 3 IF NC NEXT 1; IF G OUT W;\n}";

}  // namespace

// One machine in all four kinds of register. State 3 has no transition: D goes to 0, the others hold.
TEST(Sequence, GoesWhereItIsTold) {
    for (const std::string kind : {"", "D", "T", "JK", "RS"}) {
        const auto done =
            Compile("PIN=G; PIN=[Q1..0]; PIN=[Y,Z,W]; FIELD S=[Q1..0];\nSEQUENCE" + kind + kMachine);
        ASSERT_TRUE(done->Run->Ok()) << kind << done->Lines().front();
        const Table table(done->Text(".PLA"));
        const bool d = kind.empty() || kind == "D";
        EXPECT_EQ(NextStates(table, d ? "D" : kind), d ? "01320000" : "01320033") << kind;
        EXPECT_EQ(Column(table, "Y", {"Q1", "Q0", "G"}), "00010000");
        EXPECT_EQ(Column(table, "Z", {"Q1", "Q0", "G"}), "11000000");
    }
}

// J is free while its register is 1: the best reduction leaves the condition alone.
TEST(Sequence, JkInputsUseWhatIsFree) {
    const auto done =
        Compile("PIN=G; PIN=Q; SEQUENCEJK [Q] { PRESENT 0 IF G NEXT 1; PRESENT 1 IF !G NEXT 0; }", "xm4");
    const std::string text = done->Text(".DOC");
    EXPECT_NE(text.find("Q.J =>\r\n    G\r\n"), std::string::npos) << text;
    EXPECT_NE(text.find("Q.K =>\r\n    !G\r\n"), std::string::npos) << text;
}

// With a register for each state the machine goes the same ways, told by the members and the outputs.
TEST(Sequence, OneHotGoesTheSameWays) {
    for (const std::string kind : {"D", "JK"}) {
        const auto done =
            Compile("PIN=[G,C,R]; PIN=[Q1..0]; PIN=[Y,Z,W]; FIELD S=[Q1..0]; S.CK = C; S.AR = R;\nSEQUENCE" +
                        kind + kMachine,
                    "bom4");
        ASSERT_TRUE(done->Run->Ok()) << done->Lines().front();
        const Table table(done->Text(".PLA"));
        std::string ways;
        for (int state = 0; state < 4; ++state) {
            for (const bool g : {false, true}) {
                std::map<std::string, bool> point{{"S_0", state != 0}, {"G", g}};
                if (state > 0) point["S_" + std::to_string(state)] = true;
                EXPECT_EQ(table.At("Q1", point) == '1', state >= 2);
                EXPECT_EQ(table.At("Y", point) == '1', state == 1 && g);
                EXPECT_EQ(table.At("W", point) == '1', state == 3 && g);
                int next = table.At("S_0.D", point) == '1' ? 9 : 0;
                for (int to = 1; to < 4; ++to)
                    if (table.At("S_" + std::to_string(to) + ".D", point) == '1') next = to;
                ways += static_cast<char>('0' + next);
            }
        }
        EXPECT_EQ(ways, kind == "D" ? "01320000" : "01320033");
        EXPECT_EQ(Column(table, "S_3.AR", {"R"}), "01");
        EXPECT_EQ(Column(table, "S_0.CK", {"C"}), "01");
    }
}

// A member that is 1 in no state is an output all the same.
TEST(Sequence, OneHotMemberThatIsNever1) {
    const auto done = Compile(
        "PIN=[G,C]; PIN=[Q5..0]; FIELD S=[Q5..0]; S.CK = C;\n"
        "SEQUENCE S { PRESENT 0 IF G NEXT 35; PRESENT 35 NEXT 0; }",
        "boxm4");
    ASSERT_TRUE(done->Run->Ok()) << done->Lines().front();
    EXPECT_NE(done->Text(".DOC").find("Q1 =>\r\n    'b'0\r\n"), std::string::npos) << done->Text(".DOC");
    EXPECT_EQ(Column(Table(done->Text(".PLA")), "Q4", {"S_35"}), "01");
}

TEST(Sequence, OneHotMembersAreControlledAlike) {
    const std::string machine =
        "\nSEQUENCE [Q1..0] { PRESENT 0 NEXT 3; PRESENT 3 NEXT 0; }\nPIN=[C,R]; PIN=[Q1..0];\n";
    for (const char* controls :
         {"Q1.CK = C; Q0.CK = R;", "Q1.CK = C; !Q0.CK = C;", "Q1.CK = C;", "[Q1..0].CK = C; [Q1..0].AP = R;"})
        EXPECT_EQ(Compile(machine + controls, "bom1")->Codes()[0], "1504ta:3") << controls;
    EXPECT_TRUE(Compile(machine + "[Q1..0].CK = !C; [Q1..0].SR = R;", "bom1")->Run->Ok());
}

TEST(Condition, OrsItsOutputsAndHasADefault) {
    const auto done =
        Compile("PIN=[A,B]; PIN=[W,X,Y];\nCONDITION { IF A & B OUT W, !X; IF A OUT Y; DEFAULT OUT W; }");
    const Table table(done->Text(".PLA"));
    EXPECT_EQ(Column(table, "W", {"A", "B"}), "1101");
    EXPECT_EQ(Column(table, "X", {"A", "B"}), "1110");
    EXPECT_EQ(Column(table, "Y", {"A", "B"}), "0011");
}

TEST(TableStatement, RowsRangesAndDontCares) {
    const auto done = Compile(
        "PIN=[Y2..0]; PIN=[A2..0];\nTABLE [A2..0] => [Y2..0] { 0 => 7; 'b'01X => 'b'00X;\n"
        "[4..5] => 2; 7 => 'b'1X0; 2 => 1; }",
        "bm0");
    ASSERT_TRUE(done->Run->Ok()) << done->Lines().front();
    const Table table(done->Text(".PLA"));
    const std::vector<std::string> in{"A2", "A1", "A0"};
    EXPECT_EQ(Column(table, "Y2", in), "10000001");
    EXPECT_EQ(Column(table, "Y1", in), "1000110-");
    EXPECT_EQ(Column(table, "Y0", in), "101-0000");  // a row that says 1 is stronger than "don't care"
}

TEST(TableStatement, HexadecimalRowsMayBeginWithALetter) {
    const auto done = Compile("PIN=[A3..0]; PIN=Y; TABLE [A3..0] => Y { F => 1; A => 1;}");
    EXPECT_EQ(Column(Table(done->Text(".PLA")), "Y", {"A3", "A2", "A1", "A0"}), "0000000000100001");
}

TEST(Equations, AppendComplementAndMin) {
    const auto done = Compile(
        "PIN=[A,B,C]; PIN=[W,Y]; MIN Y = 0;\nAPPEND W = C; !Y = A & B; W = A; APPEND W = B; APPEND !Y = A & "
        "B;",
        "bm4");
    ASSERT_TRUE(done->Run->Ok()) << done->Lines().front();
    const Table table(done->Text(".PLA"));
    EXPECT_EQ(Column(table, "W", {"A", "B", "C"}), "01111111");
    EXPECT_EQ(Column(table, "Y", {"A", "B", "C"}), "11111100");
    EXPECT_GT(table.Terms("Y"), 2u);  // level 0 leaves what multiplying out gave
}

TEST(Equations, NoConnectionDropsItsTerms) {
    const auto done = Compile(
        "$MACRO REG q, d, clr\nq.D = d & !clr # d & G;\nq.AR = clr;\n$MEND\nPIN=[A,G]; PIN=Q;\nREG Q A "
        "NC;\n");
    ASSERT_TRUE(done->Run->Ok()) << done->Lines().front();
    const Table table(done->Text(".PLA"));
    EXPECT_EQ(table.Outputs, (std::vector<std::string>{"Q.D"}));
    EXPECT_EQ(Column(table, "Q.D", {"A", "G"}), "0001");
}

TEST(Preprocessor, RepeatsMacrosAndConditions) {
    const auto done = Compile(
        "$DEFINE WIDTH 3\n$IFDEF WIDTH\nPIN=[A3..0];\n$ELSE\nnonsense\n$ENDIF\n"
        "$IFNDEF OTHER\nPIN=[Y3..0];\n$ENDIF\n$REPEAT i = [0, 2..WIDTH]\nY{i} = A{3-i};\n$REPEND\n"
        "$MACRO INV out in n\n$REPEAT k = [n..n]\nout{k} = !in{k+1};\n$REPEND\n$MEND\n"
        "/* Y1 */ INV Y A 1;\n$INCLUDE more.inc\n",
        "bm1", {{"more.inc", "PIN = Z;\nZ = A0 /* WIDTH */ $ A1;\n"}});
    ASSERT_TRUE(done->Run->Ok()) << done->Lines().front();
    const Table table(done->Text(".PLA"));
    const std::vector<std::string> in{"A3", "A2", "A1", "A0"};
    EXPECT_EQ(Column(table, "Y0", in), "0000000011111111");
    EXPECT_EQ(Column(table, "Y1", in), "1111000011110000");
    EXPECT_EQ(Column(table, "Y2", in), "0011001100110011");
    EXPECT_EQ(Column(table, "Y3", in), "0101010101010101");
    EXPECT_EQ(Column(table, "Z", in), "0110011001100110");
}

// The expanded text compiles to the same outputs and its messages name the user's lines.
TEST(Preprocessor, ExpandedTextKeepsLines) {
    const std::string body =
        "$REPEAT i = [0..1]\nPIN = A{i};\n\n$REPEND\nPIN=Y;\n$MACRO E x\nY = A0 & x;\n$MEND\n\nE A1;\nY = "
        "A0;\n";
    const auto first = Compile(body, "bem1");
    EXPECT_EQ(first->Codes(), (std::vector<std::string>{"1401ta:12"}));
    const auto second = CompileWhole(first->Text(".MX"), "bm1");
    EXPECT_EQ(second->Lines(), first->Lines());
}

TEST(Extensions, FeedbackOfPinAndRegister) {
    const auto done = Compile(
        "PIN=[A,B]; PIN=Q; PIN=[X,Y,Z]; PIN=W;\nQ.D = A; Q.OE = B; W = A; W.OE = B; X = Q; Y = Q.DQ; Z = "
        "Q.IO & W.IO;");
    ASSERT_TRUE(done->Run->Ok()) << done->Lines().front();
    const Table table(done->Text(".PLA"));
    EXPECT_EQ(Column(table, "X", {"Q", "Q.IO"}), "0011");
    EXPECT_EQ(Column(table, "Y", {"Q", "Q.IO"}), "0011");
    EXPECT_EQ(Column(table, "Z", {"Q.IO", "W"}), "0001");
}
