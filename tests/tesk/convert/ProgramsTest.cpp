#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace {

namespace fs = std::filesystem;

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
    fs::path folder_;
};

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
