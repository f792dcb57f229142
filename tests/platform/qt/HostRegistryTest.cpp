#include "platform/qt/HostRegistry.h"

#include <gtest/gtest.h>

#include "support/Doubles.h"

namespace platform::qt {
namespace {

namespace fs = std::filesystem;
using Access = Registry::Access;

constexpr auto Settings = "Software\\Brennick Labs\\Korvane\\5.0\\Settings";

class HostRegistryTest : public testing::Test {
  protected:
    std::string Path() const { return (folder_.Path() / "korvane/settings.ini").string(); }
    std::string File() const { return folder_.Read("korvane/settings.ini"); }
    void Give(const std::string& bytes) { folder_.Write("korvane/settings.ini", bytes); }

    doubles::TemporaryFolder folder_;
};

TEST_F(HostRegistryTest, WritesAReadableFileThatKeepsOrderClassAndTypes) {
    {
        HostRegistry registry(Path());
        EXPECT_FALSE(registry.Open(Settings, Access::Read));
        const auto key = registry.Create(Settings, "Korvane").value();
        EXPECT_TRUE(registry.SetNumber(key, "MainLeft", 1000));
        EXPECT_TRUE(registry.SetText(key, "EFontName", "Courier New"));
        EXPECT_TRUE(registry.SetNumber(key, "Initialized", 0xFFFFFFFF));
        EXPECT_TRUE(registry.SetText(key, "LastPathway", "C:\\a\"\r\n\t\x01 \xC3\xA4="));
        EXPECT_TRUE(registry.SetText(key, "Old", "\xE4"));
        EXPECT_TRUE(registry.SetNumber(key, "mainleft", 1001));
        EXPECT_EQ(File(), "");
        const auto tool = registry.Create("Software\\Brennick Labs\\Wavrik\\1.0\\Settings", "Wavrik").value();
        EXPECT_TRUE(registry.SetNumber(tool, "MainTop", 7));
        EXPECT_TRUE(registry.Flush(key));
    }
    EXPECT_EQ(File(),
              "[Software\\Brennick Labs\\Korvane\\5.0\\Settings]\n@class=\"Korvane\"\nMainLeft=number:1001\n"
              "EFontName=\"Courier New\"\nInitialized=number:-1\n"
              "LastPathway=\"C:\\\\a\\\"\\r\\n\\t\\x01 \xC3\xA4=\"\nOld=\"\\xE4\"\n\n"
              "[Software\\Brennick Labs\\Wavrik\\1.0\\Settings]\n@class=\"Wavrik\"\nMainTop=number:7\n");
    HostRegistry again(Path());
    const auto key = again.Open("SOFTWARE\\brennick labs\\Korvane\\5.0\\Settings", Access::Read).value();
    EXPECT_EQ(again.QueryNumber(key, "INITIALIZED"), 0xFFFFFFFF);
    EXPECT_EQ(again.QueryText(key, "LastPathway"), "C:\\a\"\r\n\t\x01 \xC3\xA4=");
    EXPECT_EQ(again.QueryText(key, "Old"), "\xE4");
    EXPECT_FALSE(again.QueryText(key, "MainLeft"));
    EXPECT_FALSE(again.QueryNumber(key, "EFontName"));
    EXPECT_FALSE(again.QueryNumber(key, ""));
    EXPECT_FALSE(again.SetNumber(key, "MainLeft", 1)) << "opened for reading";
    again.Close(key);
    EXPECT_FALSE(again.QueryNumber(key, "Initialized"));
    EXPECT_FALSE(again.Flush(key));
}

TEST_F(HostRegistryTest, DamagedAndForeignLinesCountAsAbsentAndStay) {
    const std::string damaged =
        "\xEF\xBB\xBF[A]\r\n"
        "; by hand\n"
        "x=number:12\r\n"
        "tooBig=number:4294967296\nnoNumber=number:1z\nempty=number:\n"
        "open=\"text\nescape=\"a\\qb\"\nshort=\"\\x1\"\nafter=\"a\" b\nbare=word\n=number:1\n"
        "no value at all \xFF\xFE\n"
        "x=number:13\n"
        "[broken\n"
        "y=number:2\n"
        "\n"
        "[B]\nz=\"b\"";
    Give(damaged);
    HostRegistry registry(Path());
    const auto key = registry.Open("a", Access::Write).value();
    EXPECT_EQ(registry.QueryNumber(key, "x"), 12U);
    EXPECT_EQ(registry.QueryNumber(key, "y"), 2U);
    for (const char* name : {"tooBig", "noNumber", "empty", "open", "escape", "short", "after", "bare"}) {
        EXPECT_FALSE(registry.QueryNumber(key, name)) << name;
        EXPECT_FALSE(registry.QueryText(key, name)) << name;
    }
    EXPECT_TRUE(registry.Flush(key));
    EXPECT_EQ(File(), damaged) << "nothing changed, nothing written";
    registry.SetText(key, "bare", "good");
    registry.SetNumber(key, "new", 3);
    EXPECT_TRUE(registry.Flush(key));
    std::string expected = damaged + "\n";
    expected.replace(expected.find("bare=word"), 9, "bare=\"good\"");
    expected.insert(expected.find("\n[B]"), "new=number:3\n");
    EXPECT_EQ(File(), expected);
}

TEST_F(HostRegistryTest, WhatCannotBeReadOrWrittenIsLeftAlone) {
    fs::create_directories(Path());
    {
        HostRegistry registry(Path());
        EXPECT_FALSE(registry.Open("A", Access::Read));
        EXPECT_FALSE(registry.Create("A", ""));
    }
    EXPECT_TRUE(fs::is_directory(Path()));
    fs::remove(Path());

    const std::string text = "[A]\nx=number:1\n";
    Give(text);
    fs::permissions(Path(), fs::perms(0444));
    {
        HostRegistry registry(Path());
        EXPECT_EQ(registry.QueryNumber(registry.Open("A", Access::Read).value(), "x"), 1U);
        EXPECT_FALSE(registry.Open("A", Access::Write));
        EXPECT_FALSE(registry.Create("A", ""));
    }
    fs::permissions(Path(), fs::perms(0644));
    {
        HostRegistry registry(Path());
        const auto key = registry.Create("A", "").value();
        EXPECT_TRUE(registry.SetNumber(key, "x", 2));
        fs::permissions(Path(), fs::perms(0444));
        EXPECT_FALSE(registry.Flush(key));
        registry.Close(key);
    }
    EXPECT_EQ(File(), text);

    HostRegistry registry(Path());
    fs::permissions(Path(), fs::perms(0644));
    const auto key = registry.Create("A", "").value();
    fs::resize_file(Path(), HostRegistry::MaxSize + 1);
    EXPECT_FALSE(registry.Open("A", Access::Read));
    EXPECT_FALSE(registry.SetNumber(key, "x", 2)) << "it would write over what cannot be read";
    EXPECT_FALSE(HostRegistry(Path()).Create("A", ""));
    EXPECT_FALSE(HostRegistry((folder_.Path() / "korvane/settings.ini/below.ini").string()).Create("A", ""));
}

TEST_F(HostRegistryTest, SeesWhatACompanionWroteAndRefusesWhatTheFileCannotHold) {
    HostRegistry registry(Path());
    HostRegistry companion(Path());
    const auto key = registry.Create("A", "").value();
    registry.SetNumber(key, "x", 1);
    registry.Flush(key);
    const auto other = companion.Create("B", "").value();
    companion.SetNumber(other, "y", 2);
    companion.Close(other);
    const auto seen = registry.Open("B", Access::Write).value();
    EXPECT_EQ(registry.QueryNumber(seen, "y"), 2U);
    EXPECT_EQ(registry.QueryNumber(key, "x"), 1U);
    for (const char* name : {"", "a=b", "[a", ";a", "a\nb", " a"})
        EXPECT_FALSE(registry.SetNumber(key, name, 1));
    for (const char* bad : {"", "a]b", "a\nb"}) EXPECT_FALSE(registry.Create(bad, "")) << bad;
    EXPECT_FALSE(registry.SetText(key, "long", std::string(70000, 'x')));
}

}  // namespace
}  // namespace platform::qt
