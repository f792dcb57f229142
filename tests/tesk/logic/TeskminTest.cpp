#include <gtest/gtest.h>

#include <regex>

#include "support/Shell.h"
#include "support/TemporaryFolder.h"

namespace {

using test::Outcome;

Outcome RunTool(const std::string& arguments) {
    return test::RunShell(std::string(TESKMIN) + " " + arguments);
}

}  // namespace

TEST(Teskmin, CoverReportAndExitCodes) {
    const doubles::TemporaryFolder folder;
    const std::string file = (folder.Path() / "a.pla").string(), bad = (folder.Path() / "b.pla").string();
    folder.Write("a.pla", ".i 2\n.o 2\n.ilb a b\n.ob x y\n10 11\n11 10\n01 0-\n.e\n");
    const Outcome cover = RunTool(file + " 2>/dev/null");
    EXPECT_EQ(cover.Exit, 0);
    EXPECT_EQ(cover.Text, ".i 2\n.o 2\n.ilb a b\n.ob x y\n.type f\n.p 2\n10 01\n1- 10\n.e\n");
    EXPECT_EQ(RunTool("- 2>/dev/null <" + file).Text, cover.Text);
    const Outcome report = RunTool("-m0 --single " + file + " 2>&1 >/dev/null");
    EXPECT_TRUE(std::regex_match(report.Text, std::regex("terms 3 literals 9 seconds \\d+\\.\\d+\n")))
        << report.Text;
    EXPECT_EQ(RunTool("-m2 " + file + " 2>/dev/null").Exit, 0);

    folder.Write("b.pla", ".i 2\n.o 1\n1x 1\n");
    const Outcome error = RunTool(bad + " 2>&1");
    EXPECT_EQ(error.Exit, 1);
    EXPECT_EQ(error.Text, "teskmin: " + bad + ": line 3: 'x' is no input of a row\n");
    EXPECT_EQ(RunTool("/no/such/file 2>/dev/null").Exit, 1);
    EXPECT_EQ(RunTool("/ 2>/dev/null").Exit, 1);
    const Outcome full = RunTool(file + " 2>&1 >/dev/full");
    EXPECT_EQ(full.Exit, 1);
    EXPECT_EQ(full.Text, "teskmin: standard output: cannot be written\n");
    EXPECT_EQ(RunTool("- 2>&1 <" + bad).Text, "teskmin: standard input: line 3: 'x' is no input of a row\n");
    for (const char* wrong : {"", "-m5 x", "x y", "--what x"}) {
        EXPECT_EQ(RunTool(std::string(wrong) + " 2>/dev/null").Exit, 2);
        EXPECT_NE(RunTool(std::string(wrong) + " 2>&1").Text.find("usage: teskmin [-m0"), std::string::npos);
    }
}

TEST(Teskmin, TellsOptionsAndVersion) {
    const Outcome help = RunTool("--help 2>/dev/null"), version = RunTool("--version 2>/dev/null");
    EXPECT_EQ(help.Exit + version.Exit, 0);
    for (const char* option : {"-m0 ", "-m4 ", "--single ", "--version "})
        EXPECT_NE(help.Text.find(std::string("\n  ") + option), std::string::npos) << option;
    EXPECT_TRUE(std::regex_match(version.Text, std::regex("teskmin \\d+\\.\\d+\\.\\d+\n"))) << version.Text;
    EXPECT_EQ(RunTool("--help 2>/dev/null >/dev/full").Exit, 1);
}
