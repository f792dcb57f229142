#include <gtest/gtest.h>

#include "editor/Recovery.h"
#include "platform/qt/HostFileSystem.h"
#include "support/Doubles.h"

using editor::Recovery;
using editor::RecoveryCopy;

namespace {

class RecoveryTest : public testing::Test {
  protected:
    std::string Folder() const { return folder_.Logic("state/recovery") + "\\"; }
    std::size_t FileCount() const { return files_.List(Folder() + "*").size(); }

    doubles::TemporaryFolder folder_;
    platform::qt::HostFileSystem files_;
    const int a_ = 0;
    const int b_ = 0;
};

}  // namespace

TEST_F(RecoveryTest, CopiesSurviveTheRunAndGoWhenForgotten) {
    const std::string odd("\x00\xff\r\n12\n", 7);
    {
        Recovery run(files_, Folder());
        run.Keep(&a_, {"Untitled 1", "", "first"});
        run.Keep(&a_, {"Untitled 1", "", odd});
        run.Keep(&b_, {"C:\\X.PLD", "C:\\X.PLD", "b"});
        run.Flush();
        run.Forget(&b_);
    }
    Recovery next(files_, Folder());
    const auto copies = next.Find();
    ASSERT_EQ(copies.size(), 1u);
    EXPECT_EQ(copies[0].Caption, "Untitled 1");
    EXPECT_EQ(copies[0].Text, odd);
    next.Keep(&b_, {"new", "", "n"});
    next.Flush();
    next.RemoveFound();
    const auto left = next.Find();
    ASSERT_EQ(left.size(), 1u);
    EXPECT_EQ(left[0].Caption, "new");
}

TEST_F(RecoveryTest, DamagedCopiesAreNeverTakenForTexts) {
    const std::string whole = Recovery::Encode({"Caption", "C:\\F.PLD", "some text"});
    for (std::size_t i = 0; i < whole.size(); ++i) {
        EXPECT_FALSE(Recovery::Decode(std::string_view(whole).substr(0, i))) << i;
    }
    EXPECT_TRUE(Recovery::Decode(whole));
    EXPECT_FALSE(Recovery::Decode("KORVANE RECOVERY 1\n99999999999999999999\nx"));
    EXPECT_FALSE(Recovery::Decode("KORVANE RECOVERY 1\n-1\nx"));
}

TEST_F(RecoveryTest, AnUnwritableFolderLosesNothingElse) {
    folder_.Write("state", "a file in the place of the folder");
    Recovery run(files_, Folder());
    run.Keep(&a_, {"x", "", "y"});
    run.Flush();
    EXPECT_TRUE(run.Find().empty());
}
