#include <gtest/gtest.h>

#include <filesystem>

#include "Support.h"
#include "base/PosixFile.h"
#include "support/Shell.h"
#include "support/TemporaryFolder.h"

namespace {

std::string Data(const std::string& name) { return base::ReadWhole(DATA_DIR "/" + name, 1u << 20); }

// The programs as the desktop starts them.
class Programs : public testing::Test {
  protected:
    static int Run(const std::string& program, const std::string& arguments) {
        return test::RunShell(UTILITY_DIR "/" + program + " " + arguments + " 2>/dev/null").Exit;
    }

    doubles::TemporaryFolder folder_;
};

TEST_F(Programs, BackpinTakesGluedLines) {
    const std::string text = Data("Examples/COUNT8.PLD");
    folder_.Write("My Work/count8.pld", text);
    folder_.Write("My Work/COUNT8.DOC",
                  CompileWhole(text, "xm4", {{"tesk.dl", Data("devices/Fullset.dl")}})->Text(".DOC"));
    const std::string design = "'" + folder_.Logic() + "\\MY' 'WORK\\COUNT8'";
    EXPECT_EQ(Run("backpin.exe", "-fG22V10" + design), 0);
    EXPECT_NE(folder_.Read("My Work/count8.pld"), text);
    EXPECT_EQ(Run("backpin.exe", "-bG16V8" + design), 1);  // the fit is another device's
    EXPECT_EQ(Run("backpin.exe", "-bG22V10" + design), 0);
    EXPECT_EQ(folder_.Read("My Work/count8.pld"), text);
}

TEST_F(Programs, ConvertersWriteAllOrNothing) {
    const std::string path = folder_.Path().string();
    folder_.Write("A.TT2", ".i 1\n.o 1\n1 1\n.e\n");
    folder_.Write("B.PLA", ".i 1\n.o 1\n1 x\n.e\n");
    folder_.Write("My Work/C.TDF", "SUBDESIGN c (a : INPUT; y : OUTPUT;) BEGIN y = a; END;");
    EXPECT_EQ(Run("PLA2TESK.EXE", path + "/A.TT2"), 0);
    EXPECT_TRUE(folder_.Exists("A.PLD"));
    EXPECT_EQ(Run("PLA2TESK.EXE", path + "/B.PLA"), 1);
    EXPECT_EQ(Run("PLA2TESK.EXE", path + "/A.PLD"), 1);  // would replace itself
    EXPECT_EQ(Run("PLA2TESK.EXE", ""), 2);
    EXPECT_EQ(Run("TDF2TESK.EXE", path + "/My 'Work\\C.TDF' " + path + "/My 'Work\\C.PLD'"), 0);
    EXPECT_TRUE(folder_.Exists("My Work/C.PLD"));
    folder_.Write("D.NET", "[\nU1\nDIP\n7404\n]\n(\nA\nU1-1\n)\n(\nY\nU1-2\n)\n");
    EXPECT_EQ(Run("../../Nettrel/NTR.EXE", path + "/D.NET"), 0);  // finds its cells
    const std::filesystem::directory_iterator files(folder_.Path());
    EXPECT_EQ(std::distance(files, {}), 6);  // and nothing else is left behind
}

// An installation of the user's own has links to the programs and a copy of the cells.
TEST_F(Programs, CellsThatTheUserHasAdded) {
    folder_.Write("Nettrel/NTR.LIB", "CELL 99\nPINS 1 A 2 Y ;\nY = !A ;\n");
    std::filesystem::create_symlink(UTILITY_DIR "/../../Nettrel/NTR.EXE", folder_.Path() / "Nettrel/NTR.EXE");
    folder_.Write("D.NET", "[\nU1\nDIP\n7499\n]\n(\nA\nU1-1\n)\n(\nY\nU1-2\n)\n");
    const std::string path = folder_.Path().string();
    EXPECT_EQ(test::RunShell(path + "/Nettrel/NTR.EXE " + path + "/D.NET 2>&1").Exit, 0);
}

}  // namespace
