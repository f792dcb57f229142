#include "shell/ConfigFile.h"

#include <gtest/gtest.h>

#include "base/RunTimeError.h"
#include "editor/HighlightTables.h"
#include "support/Doubles.h"
#include "support/MemoryFiles.h"

namespace {

constexpr const char* Path = "C:\\KORVANE\\KORVANE\\KORVANE.CFG";
constexpr const char* Damaged = "Invalid file KORVANE.CFG. Loaded default values.";

std::string Items(std::initializer_list<std::string> texts) {
    std::string bytes;
    for (const auto& text : texts) {
        bytes += static_cast<char>(text.size() % 256);
        bytes += static_cast<char>(text.size() / 256);
        bytes += text;
    }
    return bytes;
}

struct ConfigFile : testing::Test {
    ConfigFile() { State.ProgramDir = "C:\\Korvane\\Korvane\\"; }
    void Read(const std::string& bytes) {
        Files.Files[Path] = bytes;
        Desk.Boxes.Shown.clear();
        shell::ReadConfig(State, Desk.Host);
    }
    std::string DefaultBytes() {
        session::Session fresh;
        shell::DefaultConfig(fresh);
        return shell::ConfigBytes(fresh);
    }
    bool HoldsDefaults() { return shell::ConfigBytes(State) == DefaultBytes(); }

    doubles::MemoryFiles Files;
    doubles::Desktop Desk{Files};
    session::Session State;
};

TEST_F(ConfigFile, MissingFileGivesDefaultsWithoutMessage) {
    shell::ReadConfig(State, Desk.Host);
    EXPECT_TRUE(Desk.Boxes.Shown.empty());
    EXPECT_EQ(State.CompilerFlags, "jasxlbm4");
    EXPECT_EQ(State.PartitionFlags, "-nfProojTsa1N1c2p3u100m005l025t00:00:55");
    EXPECT_EQ(State.Keywords.size(), 48u);
}

TEST_F(ConfigFile, FormatToTheByte) {
    State.CompilerFlags = "jm4";
    State.VhdlFlags = std::string(300, 'v');
    State.Keywords = {{.Name = "PIN", .Color = 16711680, .Bold = true}, {.Name = "", .Color = -1}};
    shell::WriteConfig(State, Desk.Host);
    const std::string expected =
        Items({"KORVANE 5.0", "jm4", "", std::string(300, 'v'), "", "1", "PIN", "16711680", "", "-1"});
    EXPECT_EQ(Files.Files[Path], expected);

    Read(Items({"some other mark", "jm4", "", std::string(300, 'v'), "", "1", "PIN", "16711680", "", "-1"}));
    EXPECT_TRUE(Desk.Boxes.Shown.empty());
    EXPECT_EQ(shell::ConfigBytes(State), expected);
    EXPECT_FALSE(State.Keywords[0].Bold);  // only name and colour are kept
}

TEST_F(ConfigFile, ShorterContentsKeepTheOldTail) {
    State.Keywords = editor::DefaultKeywords();
    shell::WriteConfig(State, Desk.Host);
    const std::string old = Files.Files[Path];
    State.Keywords.resize(1);
    shell::WriteConfig(State, Desk.Host);
    const std::string head = shell::ConfigBytes(State);
    EXPECT_EQ(Files.Files[Path], head + old.substr(head.size()));
    shell::ReadConfig(State, Desk.Host);
    EXPECT_EQ(shell::ConfigBytes(State), head);
}

TEST_F(ConfigFile, DamageGivesTheMessageOnceAndAllDefaults) {
    const std::string bad[] = {
        "",
        Items({"K", "a", "b", "c", "d", "0", "PIN"}),                       // no colour
        Items({"K", "a", "b", "c", "d", "0", "PIN", "abc"}),                // no number
        Items({"K", "a", "b", "c", "d", "1", "PIN", "1", "NODE", ""}),      // the second is empty
        Items({"K", "a", "b", "c", "d", "many", "PIN", "1"}),               // count
        Items({"K", "a", "b", "c", "d", "32768", "PIN", "1"}),              // above 16 bits
        Items({"K", "a", "b", "c", "d", "-1", "PIN", "1"}),                 // no such array
        Items({"K", "a", "b", "c", "d", "32767"}),                          // no pairs at all
        Items({"K", "a", "b", "c", "d", "0", "PIN", "99999999999"}),        // above 32 bits
        Items({"K", "a", "b", "c", "d", "0", "PIN"}) + "\x05" + '\0' + "1"  // length past the end
    };
    for (const auto& bytes : bad) {
        State.CompilerFlags = "kept?";
        Read(bytes);
        ASSERT_EQ(Desk.Boxes.Shown.size(), 1u) << bytes;
        EXPECT_EQ(Desk.Boxes.LastText(), Damaged);
        EXPECT_TRUE(HoldsDefaults());
        EXPECT_EQ(Files.Files[Path], bytes);
    }
    Read(Items({"K", "", "", "", "", "", "PIN", "1"}));  // an empty count is 0, empty flags are legal
    EXPECT_TRUE(Desk.Boxes.Shown.empty());
    EXPECT_EQ(State.CompilerFlags, "");
    EXPECT_EQ(State.Keywords.size(), 1u);
}

TEST_F(ConfigFile, FailuresOfTheFileSystem) {
    Files.FailReads = base::errPathFileAccess;
    Read("");
    EXPECT_EQ(Desk.Boxes.LastText(), Damaged);
    Files.FailReads = 0;
    Files.FailWrites = base::errPathFileAccess;
    EXPECT_THROW(shell::WriteConfig(State, Desk.Host), base::RunTimeError);
}

TEST_F(ConfigFile, EveryCutFailsCleanly) {
    const std::string whole = DefaultBytes();
    for (std::size_t cut = 0; cut < whole.size(); ++cut) {
        Read(whole.substr(0, cut));
        ASSERT_EQ(Desk.Boxes.Shown.size(), 1u) << cut;
        ASSERT_TRUE(HoldsDefaults()) << cut;
    }
}

}  // namespace
