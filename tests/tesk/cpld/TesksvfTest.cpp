#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "Support.h"
#include "base/PosixFile.h"
#include "base/Text.h"
#include "cpld/FuseMap.h"
#include "cpld/JedecText.h"
#include "cpld/Svf.h"
#include "support/Shell.h"

namespace {

using namespace cpld;
namespace fs = std::filesystem;

class Tesksvf : public testing::Test {
  protected:
    Tesksvf() : folder_(fs::temp_directory_path() / ("tesksvf" + std::to_string(getpid()))) {
        fs::create_directories(folder_);
        auto any = EmptyConfiguration(Of());
        any.Settings.Jtag = JtagPins::User;
        mapWithoutJtag_ = model::WriteJedec(JedecMapOf(Of(), WriteFuses(Of(), any), {}));
        map_ = model::WriteJedec(JedecMapOf(Of(), WriteFuses(Of(), EmptyConfiguration(Of())), {}));
        Write("a.jed", map_);
    }
    ~Tesksvf() override { fs::remove_all(folder_); }

    static const Device& Of() { return test::Devices()[1]; }
    test::Outcome Run(const std::string& arguments) const {
        return test::RunShell("cd " + folder_.string() + " && " TESKSVF " " + arguments);
    }
    void Write(const std::string& name, const std::string& text) const {
        std::ofstream(folder_ / name, std::ios::binary) << text;
    }
    std::string Text(const std::string& name) const {
        return base::ReadWhole((folder_ / name).string(), 1u << 20);
    }

    fs::path folder_;
    std::string map_, mapWithoutJtag_;
};

TEST_F(Tesksvf, GoesForthAndBack) {
    EXPECT_EQ(Run("a.jed").Exit, 0);
    EXPECT_EQ(Text("a.SVF").substr(0, 16), "! C1504, a.jed\r\n");
    EXPECT_EQ(Run("-o b.jed a.SVF").Exit, 0);
    EXPECT_EQ(Text("b.jed"), map_);
    EXPECT_EQ(Run("a.SVF -o -").Text, map_);
}

TEST_F(Tesksvf, RefusesAndLeavesWhatIsThere) {
    Write("a.SVF", "old");
    Write("free.jed", mapWithoutJtag_);
    Write("other.jed", "\x02*QF8*L0 11111111*\x03");
    Write("cut.jed", map_.substr(0, 900));
    Write("cut.svf", WriteSvf(Of(), WriteFuses(Of(), EmptyConfiguration(Of())), {}).substr(0, 5000));
    struct Row {
        const char* Arguments;
        int Exit;
        const char* Told;
    };
    const Row rows[] = {
        {"free.jed -o a.SVF", 1, "tesksvf: free.jed: the map turns the JTAG pins into ordinary ones"},
        {"other.jed -o a.SVF", 1, "a map of 8 fuses is not one of a C1502 or C1504"},
        {"cut.jed -o a.SVF", 1, "tesksvf: cut.jed: line "},
        {"cut.svf -o a.SVF", 1, "the file is cut"},
        {"none.jed", 1, "tesksvf: none.jed: "},
        {"a.jed -o no/a.SVF/", 1, "tesksvf: no/a.SVF/: "},
        {"a.jed -o - >/dev/full", 1, "tesksvf: standard output: cannot be written"},
        {"", 2, "usage: tesksvf"},
        {"--what a.jed", 2, "usage: tesksvf"},
        {"--help", 0, "\n  --no-jtag "},
        {"--version", 0, "tesksvf "},
        {"a.jed -o", 2, "usage: tesksvf"},
    };
    for (const Row& row : rows) {
        const auto outcome = Run("2>&1 " + std::string(row.Arguments));
        EXPECT_EQ(outcome.Exit, row.Exit) << row.Arguments;
        EXPECT_TRUE(base::Contains(outcome.Text, row.Told)) << row.Arguments << ": " << outcome.Text;
        EXPECT_EQ(Text("a.SVF"), "old") << row.Arguments;
    }
    EXPECT_EQ(Run("--no-jtag free.jed").Exit, 0);
    EXPECT_EQ(Run("-o - free.SVF").Text, mapWithoutJtag_);
}

}  // namespace
