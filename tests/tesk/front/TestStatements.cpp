#include <gtest/gtest.h>

#include "Support.h"

// J is free while its register is 1: the best reduction leaves the condition alone.
TEST(Sequence, JkInputsUseWhatIsFree) {
    const auto done =
        Compile("PIN=G; PIN=Q; SEQUENCEJK [Q] { PRESENT 0 IF G NEXT 1; PRESENT 1 IF !G NEXT 0; }", "xm4");
    const std::string text = done->Text(".DOC");
    EXPECT_NE(text.find("Q.J =>\r\n    G\r\n"), std::string::npos) << text;
    EXPECT_NE(text.find("Q.K =>\r\n    !G\r\n"), std::string::npos) << text;
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

TEST(Statements, DoWhatTheySay) {
    const std::vector<std::string> abc{"A", "B", "C"}, a4{"A3", "A2", "A1", "A0"}, dg{"D1", "D0", "G"};
    const struct {
        const char* Body;
        std::vector<Way> Ways;
    } cases[] = {
        {"PIN=[A,B,C]; PIN=[W,Y];\nAPPEND W = C; !Y = A & B; W = A; APPEND W = B; APPEND !Y = A & B;",
         {{"W", abc, "01111111"}, {"Y", abc, "11111100"}}},
        // What is not connected goes, with its terms.
        {"$MACRO REG q, d, clr\nq.D = d & !clr # d & G;\nq.AR = clr;\n$MEND\nPIN=[A,G]; PIN=Q;\nREG Q A "
         "NC;\n",
         {{"Q.D", {"A", "G"}, "0001"}, {"Q.AR", {}, ""}}},
        {"$DEFINE WIDTH 3\n$IFDEF WIDTH\nPIN=[A3..0];\n$ELSE\nnonsense\n$ENDIF\n"
         "$IFNDEF OTHER\nPIN=[Y3..0];\n$ENDIF\n$REPEAT i = [0, 2..WIDTH]\nY{i} = A{3-i};\n$REPEND\n"
         "$MACRO INV out in n\n$REPEAT k = [n..n]\nout{k} = !in{k+1};\n$REPEND\n$MEND\n"
         "/* Y1 */ INV Y A 1;\n$INCLUDE more.inc\n",
         {{"Y0", a4, "0000000011111111"},
          {"Y1", a4, "1111000011110000"},
          {"Y2", a4, "0011001100110011"},
          {"Y3", a4, "0101010101010101"},
          {"Z", a4, "0110011001100110"}}},
        {"PIN=[A,B]; PIN=Q; PIN=[X,Y,Z]; PIN=W;\nQ.D = A; Q.OE = B; W = A; W.OE = B; X = Q; Y = Q.DQ; Z = "
         "Q.IO & W.IO;",
         {{"X", {"Q", "Q.IO"}, "0011"}, {"Y", {"Q", "Q.IO"}, "0011"}, {"Z", {"Q.IO", "W"}, "0001"}}},
        {"PIN=[A1..0]; PIN=[Y1..0];\n$REPEAT i = [0..1]\n$DEFINE V{i} A{1-i}\n$REPEND\nY0 = V0; Y1 = V1;",
         {{"Y0", {"A1", "A0"}, "0011"}, {"Y1", {"A1", "A0"}, "0101"}}},
        // `!` binds before `&`, that before `#`, that before `$`.
        {"PIN=[A,B,C]; PIN=[W,X,Y,Z];\nW = A # B & C; X = A $ B # C; Y = !A & B; Z = A & B $ C;",
         {{"W", abc, "00011111"}, {"X", abc, "01111000"}, {"Y", abc, "00110000"}, {"Z", abc, "01010110"}}},
        // Lists member by member.
        {"PIN=[D1..0]; PIN=G; PIN=[Q1..0]; PIN=[R1..0]; PIN=[S1..0];\nFIELD N=[S1..0];\n"
         "PIN=[T2..0]; PIN=[U1..0]; FIELD M=[U1..0]; [T2..1,NC] = 4; T0 = 'b'1; M = 1;\n"
         "[Q1..0] = [D1..0] & G;  [R1..0] = [D1..0] $ 'b'10;  N = !N2; [N21..20] = [D0..1]; N2 = N21 # N20;",
         {{"Q1", dg, "00000101"},
          {"Q0", dg, "00010001"},
          {"R1", dg, "11110000"},
          {"R0", dg, "00110011"},
          {"S1", dg, "11000000"},
          {"S0", dg, "11000000"},
          {"T2", {}, "1"},
          {"T1", {}, "0"},
          {"T0", {}, "1"},
          {"U1", {}, "0"},
          {"U0", {}, "1"}}},
        // Parameters by name.
        {"PIN=[A,B,C]; PIN=[S,Y];\nFUNCTION half(x, y) { t = x & !y; half = t # !x & y; }\n"
         "FUNCTION sum(a, b, c) { sum = half(half(a, b), c); }\nS = sum(A, B, C); Y = !half(A, 'b'1);",
         {{"S", abc, "01101001"}, {"Y", {"A"}, "01"}}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.Body);
        ExpectWays(*Compile(c.Body, "bm1", {{"more.inc", "PIN = Z;\nZ = A0 /* WIDTH */ $ A1;\n"}}), c.Ways);
    }
    const auto raw = Compile("PIN=[A,B]; PIN=Y; MIN Y = 0; APPEND !Y = A & B; APPEND !Y = A & B;", "bm4");
    EXPECT_GT(Table(raw->Text(".PLA")).Terms("Y"), 2u) << "level 0 leaves what multiplying out gave";
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
