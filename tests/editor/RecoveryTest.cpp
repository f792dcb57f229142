#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "editor/Recovery.h"
#include "platform/qt/HostFileSystem.h"
#include "support/Doubles.h"

using editor::Recovery;
using editor::RecoveryCopy;

namespace {

class RecoveryTest : public testing::Test {
  protected:
    RecoveryTest() { ::setenv("XDG_DATA_HOME", (folder_.Path() / "data").c_str(), 1); }
    ~RecoveryTest() override { ::unsetenv("XDG_DATA_HOME"); }
    std::string Folder() const { return folder_.Logic("state/recovery") + "\\"; }
    std::vector<std::string> Names() const {
        auto names = files_.List(Folder() + "*");
        std::sort(names.begin(), names.end());
        return names;
    }
    bool IsInTrash(const std::string& name) const { return folder_.Exists("data/Trash/files/" + name); }

    doubles::TemporaryFolder folder_;
    platform::qt::HostFileSystem files_;
    const int a_ = 0;
    const int b_ = 0;
};

using Strings = std::vector<std::string>;

}  // namespace

TEST_F(RecoveryTest, CopiesSurviveTheRunUntilANewerOneOrTheTrashTakesThem) {
    const std::string odd("\x00\xff\r\n12\n", 7);
    {
        Recovery run(files_, Folder());
        run.Keep(&a_, {"Untitled 1", "", "first"});
        run.Keep(&a_, {"Untitled 1", "", odd});
        run.Keep(&b_, {"C:\\X.PLD", "C:\\X.PLD", "b"});
    }
    Recovery next(files_, Folder());
    const auto copies = next.Find();
    ASSERT_EQ(copies.size(), 2u);
    EXPECT_EQ(copies[0].Copy.Caption, "Untitled 1");
    EXPECT_EQ(copies[0].Copy.Text, odd);
    next.Adopt(&a_, copies[0].Path);
    next.Refuse(copies[1].Path);
    EXPECT_EQ(Names(), Strings{"00000001.copy"});
    EXPECT_TRUE(IsInTrash("00000002.copy"));
    next.Keep(&b_, {"new", "", "n"});
    next.Keep(&a_, {"Untitled 1", "", "newer"});
    next.Flush();
    EXPECT_EQ(Names(), (Strings{"00000001.copy", "00000003.copy"}));
    EXPECT_EQ(Recovery::Decode(files_.ReadFile(copies[0].Path))->Text, "newer");
    next.Forget(&a_);
    next.Flush();
    EXPECT_EQ(Names(), Strings{"00000003.copy"});
}

TEST_F(RecoveryTest, WhatWasCutIsClearedAwayAndNeverTakenForAText) {
    const std::string whole = Recovery::Encode({"Caption", "C:\\F.PLD", "some text"});
    for (std::size_t i = 0; i < whole.size(); ++i) {
        EXPECT_FALSE(Recovery::Decode(std::string_view(whole).substr(0, i))) << i;
    }
    EXPECT_FALSE(Recovery::Decode("KORVANE RECOVERY 1\n99999999999999999999\nx"));
    EXPECT_FALSE(Recovery::Decode("KORVANE RECOVERY 1\n-1\nx"));
    folder_.Write("state/recovery/00000004.copy", whole);
    folder_.Write("state/recovery/00000005.copy", whole.substr(0, whole.size() - 1));
    folder_.Write("state/recovery/00000006.copy", "");
    folder_.Write("state/recovery/.korvane-12-0", whole);  // killed before it got its name
    Recovery run(files_, Folder());
    EXPECT_EQ(run.Find().size(), 1u);
    EXPECT_EQ(Names(), Strings{"00000004.copy"});
    EXPECT_TRUE(IsInTrash("00000005.copy") && IsInTrash(".korvane-12-0"));
    EXPECT_FALSE(IsInTrash("00000006.copy"));
}

TEST_F(RecoveryTest, WhatCouldNotBeWrittenIsTriedAgain) {
    folder_.Write("state", "a file in the place of the folder");
    Recovery run(files_, Folder());
    const auto tryAgain = [&] {
        run.Retry();
        run.Flush();
        return run.Failure();
    };
    run.Keep(&a_, {"x", "", "old"});
    run.Keep(&b_, {"closed", "", ""});
    run.Flush();
    EXPECT_FALSE(run.Failure().empty());
    EXPECT_FALSE(tryAgain().empty());
    run.Forget(&b_);
    run.Keep(&a_, {"x", "", "new"});
    std::filesystem::remove(folder_.Path() / "state");
    EXPECT_TRUE(tryAgain().empty());
    EXPECT_EQ(Names(), Strings{"00000001.copy"});
    EXPECT_EQ(Recovery::Decode(files_.ReadFile(Folder() + "00000001.copy"))->Text, "new");
}
