#include <gtest/gtest.h>

#include "Support.h"
#include "base/Text.h"
#include "cpld/FuseMap.h"
#include "cpld/JedecText.h"
#include "cpld/Svf.h"
#include "support/Shell.h"
#include "support/TemporaryFolder.h"

namespace {

using namespace cpld;

class Tesksvf : public testing::Test, protected doubles::TemporaryFolder {
  protected:
    Tesksvf() {
        auto any = EmptyConfiguration(Of());
        any.Settings.Jtag = JtagPins::User;
        mapWithoutJtag_ = model::WriteJedec(JedecMapOf(Of(), WriteFuses(Of(), any), {}));
        map_ = model::WriteJedec(JedecMapOf(Of(), WriteFuses(Of(), EmptyConfiguration(Of())), {}));
        Write("a.jed", map_);
    }

    static const Device& Of() { return test::Devices()[1]; }
    test::Outcome Run(const std::string& arguments) const {
        return test::RunShell(Path(), TESKSVF " " + arguments);
    }

    std::string map_, mapWithoutJtag_;
};

TEST_F(Tesksvf, GoesForthAndBack) {
    EXPECT_EQ(Run("a.jed").Exit, 0);
    EXPECT_EQ(Read("a.SVF").substr(0, 16), "! C1504, a.jed\r\n");
    EXPECT_EQ(Run("-o b.jed a.SVF").Exit, 0);
    EXPECT_EQ(Read("b.jed"), map_);
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
        EXPECT_EQ(Read("a.SVF"), "old") << row.Arguments;
    }
    EXPECT_EQ(Run("--no-jtag free.jed").Exit, 0);
    EXPECT_EQ(Run("-o - free.SVF").Text, mapWithoutJtag_);
}

}  // namespace
