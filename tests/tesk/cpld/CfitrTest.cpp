#include <gtest/gtest.h>

#include "base/Text.h"
#include "support/Shell.h"
#include "support/TemporaryFolder.h"

namespace {

class Cfitr : public testing::Test, protected doubles::TemporaryFolder {
  protected:
    test::Outcome Run(const std::string& arguments, const std::string& table) const {
        Write("T.PLA", table);
        return test::RunShell(Path(), CFITR " " + arguments + " 2>&1");
    }
};

const std::string table =
    ".i 4\n# Small\n# DEVICE C1502T44\n# PIN 37 CLK\n# PIN 0 !Y\n# NODE 5 N\n.o 5\n.ilb CLK A N Y.IO\n"
    ".ob N.D N.CK Y Y.OE Z\n.type fd\n-10- 10000\n1--- 01000\n-11- 00100\n--1- 00010\n---0 00001\n.e\n";

TEST_F(Cfitr, FitsATable) {
    const auto done = Run("T.PLA", table);
    EXPECT_EQ(done.Exit, 0);
    EXPECT_EQ(done.Text,
              "[7500tc] Fuse map proved: 6 functions of C1502T44\n"
              "[4000tc] Written: T.JED, T.FIT, T.SVF for C1502T44\n");
    const auto map = Read("T.JED");
    EXPECT_NE(map.find("N PIN 37 CLK*"), map.npos);
    EXPECT_NE(map.find("N NODE 5 "), map.npos);
    EXPECT_NE(map.find("Small"), map.npos) << map.substr(0, 400);
}

TEST_F(Cfitr, SaysWhatIsWrong) {
    const std::tuple<const char*, std::string, int, const char*> rows[] = {
        {"-d c1502p44 T.PLA", base::ReplaceAll(table, "PIN 37", "PIN 42"), 1, "CLK, pin 42 of C1502P44"},
        {"T.PLA", base::ReplaceAll(table, "C1502T44", "G22V10"), 1, "no device of this fitter: G22V10"},
        {"T.PLA", base::ReplaceAll(table, ".ilb CLK A N Y.IO\n", ""), 1, "it has no names"},
        {"T.PLA", base::ReplaceAll(table, "N.CK Y ", "N.D Y "), 1, "two outputs N.D"},
        {"T.PLA", base::ReplaceAll(table, "N.CK", "N.QQ"), 1, "unknown extension: N.QQ"},
        {"T.PLA", base::ReplaceAll(table, " Z\n", " N.T\n"), 1, "two kinds of register: N.T"},
        {"T.PLA", table.substr(0, 150), 1, "T.PLA"},
        {"MISSING.PLA", table, 1, "cannot be read"},
        {"T.PLA T.PLA", table, 2, "usage"},
    };
    for (const auto& [arguments, text, exit, words] : rows) {
        const auto done = Run(arguments, text);
        EXPECT_EQ(done.Exit, exit) << done.Text;
        EXPECT_NE(done.Text.find(words), done.Text.npos) << done.Text;
        EXPECT_FALSE(Exists("T.JED") || Exists("T.SVF") || Exists("T.FIT")) << arguments;
    }
}

}  // namespace
