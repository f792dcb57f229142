#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "Support.h"

namespace {

namespace fs = std::filesystem;

std::string ReadFile(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// The programs as the desktop starts them.
class Programs : public testing::Test {
  protected:
    Programs() : folder_(fs::temp_directory_path() / ("convert" + std::to_string(getpid()))) {
        fs::create_directories(folder_ / "My Work");
    }
    ~Programs() override { fs::remove_all(folder_); }

    static int Run(const std::string& program, const std::string& arguments) {
        return WEXITSTATUS(
            std::system((UTILITY_DIR "/" + program + " " + arguments + " 2>/dev/null").c_str()));
    }
    void Write(const std::string& name, const std::string& text) {
        std::ofstream(folder_ / name, std::ios::binary) << text;
    }
    // The folder as the logic spells it.
    std::string Drive() const {
        std::string path = "C:" + folder_.string();
        std::replace(path.begin(), path.end(), '/', '\\');
        return path;
    }

    fs::path folder_;
};

TEST_F(Programs, BackpinTakesGluedLines) {
    const std::string text = ReadFile(DATA_DIR "/Examples/COUNT8.PLD");
    Write("My Work/count8.pld", text);
    Write("My Work/COUNT8.DOC",
          CompileWhole(text, "xm4", {{"tesk.dl", ReadFile(DATA_DIR "/devices/Fullset.dl")}})->Text(".DOC"));
    const std::string design = "'" + Drive() + "\\MY' 'WORK\\COUNT8'";
    EXPECT_EQ(Run("backpin.exe", "-fG22V10" + design), 0);
    EXPECT_NE(ReadFile(folder_ / "My Work/count8.pld"), text);
    EXPECT_EQ(Run("backpin.exe", "-bG16V8" + design), 1);  // the fit is another device's
    EXPECT_EQ(Run("backpin.exe", "-bG22V10" + design), 0);
    EXPECT_EQ(ReadFile(folder_ / "My Work/count8.pld"), text);
}

TEST_F(Programs, ConvertersWriteAllOrNothing) {
    const std::string path = folder_.string();
    Write("A.TT2", ".i 1\n.o 1\n1 1\n.e\n");
    Write("B.PLA", ".i 1\n.o 1\n1 x\n.e\n");
    Write("My Work/C.TDF", "SUBDESIGN c (a : INPUT; y : OUTPUT;) BEGIN y = a; END;");
    EXPECT_EQ(Run("PLA2TESK.EXE", path + "/A.TT2"), 0);
    EXPECT_TRUE(fs::exists(folder_ / "A.PLD"));
    EXPECT_EQ(Run("PLA2TESK.EXE", path + "/B.PLA"), 1);
    EXPECT_EQ(Run("PLA2TESK.EXE", path + "/A.PLD"), 1);  // would replace itself
    EXPECT_EQ(Run("PLA2TESK.EXE", ""), 2);
    EXPECT_EQ(Run("TDF2TESK.EXE", path + "/My 'Work\\C.TDF' " + path + "/My 'Work\\C.PLD'"), 0);
    EXPECT_TRUE(fs::exists(folder_ / "My Work/C.PLD"));
    Write("D.NET", "[\nU1\nDIP\n7404\n]\n(\nA\nU1-1\n)\n(\nY\nU1-2\n)\n");
    EXPECT_EQ(Run("../../Nettrel/NTR.EXE", path + "/D.NET"), 0);       // finds its cells
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_), {}), 6);  // and nothing else is left behind
}

}  // namespace
