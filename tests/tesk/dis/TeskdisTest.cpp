#include <gtest/gtest.h>

#include "support/Shell.h"
#include "support/TemporaryFolder.h"

namespace {

// The programs of the installation in a folder of their own.
class Teskdis : public testing::Test, protected doubles::TemporaryFolder {
  protected:
    void SetUp() override {
        Write("A.PLD",
              "Name A; Partno 1; Date 1; Revision 1; Designer 1; Company 1; Assembly 1; Location 1; Device "
              "G16V8;\n"
              "PIN [2,3] = [A,B]; PIN 19 = !Y; PIN 12 = Q; PIN 1 = K; Y = A & !B; Q.D = Y; Q.CK = K;");
        Write("A.SI", "Name A; ORDER: A, B, Y; VECTORS:\n10L\n11H\n");
        ASSERT_EQ(Run("teskc -o jasm4 A.PLD").Exit, 0);
    }
    test::Outcome Run(const std::string& command) {
        return test::RunShell(Path(), STAGE_DIR "/bin/" + command);
    }
};

TEST_F(Teskdis, TheWayBackAndForth) {
    const auto said = Run("teskdis -n A.PLD -o B.PLD A.JED");
    EXPECT_EQ(said.Exit, 0);
    EXPECT_EQ(said.Text, "[7609tc] Written: B.PLD, B.SI for G16V8\n");
    EXPECT_NE(Read("B.PLD").find("Q.D = Y ;\r\nY = A & !B ;\r\n\r\nQ.CK = K ;\r\n"), std::string::npos)
        << Read("B.PLD");
    EXPECT_EQ(Run("teskc -o jasm4 B.PLD").Exit, 0) << "the vectors pass";
    EXPECT_EQ(Run("teskdis -n B.PLD -o - B.JED 2>/dev/null").Text, Read("B.PLD"));
    EXPECT_EQ(Run("teskdis -n A.PLD - <A.JED 2>/dev/null").Text, Read("B.PLD"));
}

TEST_F(Teskdis, ReplacesNothingUnasked) {
    const auto design = Read("A.PLD");
    std::filesystem::rename(Path() / "A.PLD", Path() / "a.pld");
    EXPECT_EQ(Run("teskdis A.JED").Text, "[7611tc] Error: The result would replace a file: A.PLD\n");
    EXPECT_EQ(Run("teskdis -n a.pld -o A.PLD A.JED").Exit, 1);
    EXPECT_EQ(Run("teskdis -o A.JED A.JED").Exit, 1);
    EXPECT_EQ(Read("a.pld"), design);
}

TEST_F(Teskdis, ExitCodesAndHelp) {
    Write("BAD.JED", "\x02x*QF2194*L0 01");
    Write("NAMES", "2 A\nx\n");
    const struct {
        const char* arguments;
        int exit;
        const char* text;
    } cases[] = {
        {"BAD.JED", 1, "[7301tc] Error: Fuse file is cut"},
        {"NONE.JED", 1, "[7610tc] Error: File cannot be read or written: NONE.JED: "},
        {"-n NAMES -o B.PLD A.JED", 1, "[7603tc] Error: File of names not understood: x (NAMES line 2)\n"},
        {"-o none/B.PLD A.JED", 1, "[7610tc] Error: File cannot be read or written: none/B.PLD: "},
        {"-d G22V10 -o B.PLD A.JED", 1, "[7601tc] Error: "},
        {"A.JED >/dev/full -o -", 1, "[7610tc] Error: "},
        {"", 2, "usage: teskdis [-d"},
        {"-x A.JED", 2, "not understood"},
        {"A.JED B.JED", 2, "not understood"},
        {"A.JED -d", 2, "not understood"},
        {"--help", 0, "\n  -n NAMES "},
        {"--version", 0, "teskdis "},
    };
    for (const auto& c : cases) {
        const auto said = Run("teskdis 2>&1 " + std::string(c.arguments));
        EXPECT_EQ(said.Exit, c.exit) << c.arguments;
        EXPECT_NE(said.Text.find(c.text), std::string::npos) << c.arguments << "\n" << said.Text;
        EXPECT_FALSE(Exists("B.PLD"));
    }
}

}  // namespace
