#include "platform/qt/HostFileSystem.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <fcntl.h>
#include <algorithm>

#include "base/RunTimeError.h"
#include "support/Doubles.h"

namespace platform::qt {
namespace {

namespace fs = std::filesystem;

class HostFileSystemTest : public testing::Test {
  protected:
    int ErrorOf(const std::function<void()>& action) {
        try {
            action();
        } catch (const base::RunTimeError& error) {
            return error.Number();
        }
        return 0;
    }
    std::size_t EntryCount() {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder_.Path()), {}));
    }
    std::string Host(const char* name) { return (folder_.Path() / name).string(); }

    doubles::TemporaryFolder folder_;
    HostFileSystem files_;
};

TEST_F(HostFileSystemTest, FindsFilesInAnyCaseAndTellsFilesFromFolders) {
    folder_.Write("Sub/count8.pld", "x");
    EXPECT_TRUE(files_.FileExists(folder_.Logic("SUB\\COUNT8.PLD")));
    EXPECT_FALSE(files_.FileExists(folder_.Logic("sub")));
    EXPECT_FALSE(files_.FileExists(folder_.Logic("sub\\count8.pld\\")));
    EXPECT_FALSE(files_.FileExists(""));
    EXPECT_FALSE(files_.FileExists(folder_.Logic("sub\\count8.pld") + std::string("\0x", 2)));
    EXPECT_TRUE(files_.DirectoryExists(folder_.Logic("sub")));
    EXPECT_TRUE(files_.DirectoryExists(folder_.Logic("sub\\")));
    EXPECT_FALSE(files_.DirectoryExists(""));
    EXPECT_FALSE(files_.Stamp(folder_.Logic("sub")));
    EXPECT_EQ(files_.Stamp(folder_.Logic("sub\\count8.pld"))->Size, 1U);
}

TEST_F(HostFileSystemTest, WriteReplacesTheFileOfAnotherCaseAndKeepsRightsAndLinks) {
    folder_.Write("real/count8.pld", "old");
    fs::permissions(Host("real/count8.pld"), fs::perms(0640));
    fs::create_symlink("real/count8.pld", Host("link.pld"));
    folder_.Write("twin.pld", "some longer old text");
    fs::create_hard_link(Host("twin.pld"), Host("real/twin.pld"));
    fs::create_symlink("real/fresh.pld", Host("dangling.pld"));
    files_.WriteFile(folder_.Logic("LINK.PLD"), std::string("new\r\n\0\xff", 7));
    files_.WriteFile(folder_.Logic("dangling.pld"), "fresh");
    files_.WriteFile(folder_.Logic("twin.pld"), "both");
    EXPECT_EQ(folder_.Read("real/twin.pld"), "both");
    EXPECT_TRUE(fs::is_symlink(Host("link.pld")));
    EXPECT_TRUE(fs::is_symlink(Host("dangling.pld")));
    EXPECT_EQ(folder_.Read("real/fresh.pld"), "fresh");
    EXPECT_EQ(files_.ReadFile(folder_.Logic("real\\count8.pld")), std::string("new\r\n\0\xff", 7));
    EXPECT_EQ(fs::status(Host("real/count8.pld")).permissions(), fs::perms(0640));
    EXPECT_EQ(EntryCount(), 4U);
}

TEST_F(HostFileSystemTest, FailuresNameTheirErrorAndLeaveTheOldFile) {
    folder_.Write("locked.pld", "old");
    folder_.Write("folder.pld/x", "");
    fs::permissions(Host("locked.pld"), fs::perms(0444));
    ASSERT_EQ(::mkfifo(Host("pipe").c_str(), 0600), 0);
    const auto at = [&](const char* name) { return folder_.Logic(name); };
    const struct {
        const char* What;
        std::function<void()> Action;
        int Number;
    } rows[] = {
        {"read missing", [&] { files_.ReadFile(at("no.pld")); }, 53},
        {"read in missing folder", [&] { files_.ReadFile(at("no\\no.pld")); }, 76},
        {"read below a file", [&] { files_.ReadFile(at("locked.pld\\x")); }, 76},
        {"read folder", [&] { files_.ReadFile(at("folder.pld")); }, 75},
        {"read pipe", [&] { files_.ReadFile(at("pipe")); }, 75},
        {"write read-only", [&] { files_.WriteFile(at("LOCKED.PLD"), "new"); }, 75},
        {"write folder", [&] { files_.WriteFile(at("folder.pld"), "new"); }, 75},
        {"write pipe", [&] { files_.WriteFile(at("pipe"), "new"); }, 75},
        {"write in missing folder", [&] { files_.WriteFile(at("no\\a.pld"), "new"); }, 76},
        {"copy missing", [&] { files_.CopyFile(at("no.pld"), at("a.pld")); }, 53},
        {"copy over read-only", [&] { files_.CopyFile(at("folder.pld\\x"), at("locked.pld")); }, 75},
        {"delete missing", [&] { files_.DeleteFile(at("no.pld")); }, 53},
        {"delete read-only", [&] { files_.DeleteFile(at("locked.pld")); }, 75},
        {"delete folder", [&] { files_.DeleteFile(at("folder.pld")); }, 75},
        {"trash missing", [&] { files_.TrashFile(at("no.pld")); }, 53},
        {"change to missing", [&] { files_.SetCurrentDirectory(at("no")); }, 76},
    };
    for (const auto& row : rows) EXPECT_EQ(ErrorOf(row.Action), row.Number) << row.What;
    EXPECT_EQ(folder_.Read("locked.pld"), "old");
    EXPECT_EQ(EntryCount(), 3U);
}

TEST_F(HostFileSystemTest, AFullDiskLeavesTheOldFileAndNoRest) {
    folder_.Write("big.pld", "old");
    folder_.Write("source.pld", std::string(20000, 's'));
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    rlimit small = before;
    small.rlim_cur = 10000;
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const int write = ErrorOf([&] { files_.WriteFile(folder_.Logic("big.pld"), std::string(20000, 'n')); });
    const int copy = ErrorOf([&] { files_.CopyFile(folder_.Logic("source.pld"), folder_.Logic("big.pld")); });
    ::setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(write, base::errDiskFull);
    EXPECT_EQ(copy, base::errDiskFull);
    EXPECT_EQ(folder_.Read("big.pld"), "old");
    EXPECT_EQ(EntryCount(), 2U);
}

TEST_F(HostFileSystemTest, ReadRefusesAFileAboveTheLimit) {
    folder_.Write("huge", "");
    fs::resize_file(Host("huge"), FileSystem::MaxFileSize + 1);
    EXPECT_EQ(ErrorOf([&] { files_.ReadFile(folder_.Logic("huge")); }), 7);
}

TEST_F(HostFileSystemTest, CopyKeepsTheModificationTime) {
    folder_.Write("Fullset.dl", "library");
    folder_.Write("tesk.dl", "older and longer");
    const timespec times[2] = {{1000, 5}, {86400, 123456789}};
    ASSERT_EQ(::utimensat(AT_FDCWD, Host("Fullset.dl").c_str(), times, 0), 0);
    files_.CopyFile(folder_.Logic("FULLSET.DL"), folder_.Logic("TESK.DL"));
    EXPECT_EQ(folder_.Read("tesk.dl"), "library");
    EXPECT_EQ(files_.Stamp(folder_.Logic("tesk.dl")), files_.Stamp(folder_.Logic("Fullset.dl")));
}

TEST_F(HostFileSystemTest, TrashedFilesLieInTheTrash) {
    ::setenv("XDG_DATA_HOME", Host("data").c_str(), 1);
    folder_.Write("count8.jed", "fuses");
    files_.TrashFile(folder_.Logic("COUNT8.JED"));
    ::unsetenv("XDG_DATA_HOME");
    EXPECT_FALSE(folder_.Exists("count8.jed"));
    EXPECT_EQ(folder_.Read("data/Trash/files/count8.jed"), "fuses");
}

TEST_F(HostFileSystemTest, ListsTheFilesOfAPattern) {
    for (const char* name : {"count8.pld", "COUNT8.JED", "count80.si", "count8", "Count8.a.b"})
        folder_.Write(name, "");
    folder_.Write("count8.dir/x", "");
    const struct {
        const char* Pattern;
        std::vector<std::string> Names;
    } rows[] = {
        {"Count8.*", {"COUNT8.JED", "Count8.a.b", "count8.pld"}},
        {"COUNT8?.*", {"count80.si"}},
        {"*.*", {"COUNT8.JED", "Count8.a.b", "count8", "count8.pld", "count80.si"}},
        {"*.b*", {"Count8.a.b"}},
        {"no\\*", {}},
    };
    for (const auto& row : rows) {
        auto names = files_.List(folder_.Logic(row.Pattern));
        std::sort(names.begin(), names.end());
        EXPECT_EQ(names, row.Names) << row.Pattern;
    }
}

TEST_F(HostFileSystemTest, PathsWithoutDriveStartAtTheCurrentDirectory) {
    folder_.Write("Work/a.pld", "a");
    const std::string before = files_.CurrentDirectory();
    files_.SetCurrentDirectory(folder_.Logic("WORK\\"));
    EXPECT_EQ(files_.CurrentDirectory(), folder_.Logic("Work"));
    EXPECT_EQ(files_.ReadFile("A.PLD"), "a");
    EXPECT_EQ(files_.List("*").size(), 1U);
    EXPECT_EQ(HostFileSystem().CurrentDirectory(), folder_.Logic("Work"));
    files_.SetCurrentDirectory(before);
}

}  // namespace
}  // namespace platform::qt
