#include <gtest/gtest.h>

#include <fstream>
#include <random>

#include "DeviceFile.h"
#include "devices/DeviceReport.h"

namespace devices {
namespace {

// data/Jet3.ref and data/Jet4.ref are made by data/makejet.py from the format's published layout. Two readers
// that know nothing of each other, libmdb and the npm package mdb-reader, read the same from them.
class JetFile : public DeviceFile, public ::testing::WithParamInterface<const char*> {
  protected:
    void SetUp() override { Use(Whole()); }
    static std::string Whole() {
        std::ifstream file(std::string(JET_DATA) + GetParam(), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    void Use(const std::string& bytes) { Folder.Write("Devices.ref", bytes); }
    std::string Report(std::int32_t device) { return DeviceReport(ReadDeviceFacts(Database, device)); }
};

TEST_P(JetFile, AnswersTheSameQueries) {
    ASSERT_TRUE(Database.OpenDatabase()) << Boxes.LastText();
    using Items = std::vector<ListItem>;
    EXPECT_EQ(ManufacturerItems(Database), (Items{{"alpha", 2}, {"Beta", 3}, {"Zeta", 1}}));
    EXPECT_EQ(PackageItems(Database), (Items{{"DIP", 2}, {"PLCC", 1}}));
    EXPECT_EQ(DeviceItems(Database, 2, 2), (Items{{"bee2", 11}, {"Nil", 12}, {"Zap4", 10}}));
    EXPECT_EQ(DeviceItems(Database, 1, 1), (Items{{"", 13}}));
    const Items many = DeviceItems(Database, 3, 2);  // of several pages
    ASSERT_EQ(many.size(), 120u);
    EXPECT_EQ(many.back(), (ListItem{"Many119", 219}));

    const std::string stars(50, '*');
    EXPECT_EQ(Report(10),
              "Mnemonic:  P4\r\nPin Count:  4\r\nSpecial Options:  fast\r\n"
              "Alternate Part Numbers:  Z4A-\u00B5, Z4B\r\nRelated Mnemonics:  P3, V2\r\n\r\n" +
                  stars +
                  "\r\nPin#     Function\r\n     1     I/CLK\r\n     2     GND\r\n     3     \r\n     4     "
                  "VCC\r\n\r\n" +
                  stars + "\r\nDevice Notes:\r\nShort.\r\nOf two lines.");
    EXPECT_EQ(ReadDeviceFacts(Database, 11).Notes.size(), 60 * 13 + 4u) << "a note on a page of its own";
    EXPECT_EQ(ReadDeviceFacts(Database, 12).Notes, "");
}

// Cut and flipped at random: either the file is refused in words, or what it gives is shown. Nothing crashes
// and no less than all rows are taken for the whole.
TEST_P(JetFile, DamageHurtsNobody) {
    const std::string whole = Whole();
    std::mt19937 random(3);
    const auto below = [&](std::size_t end) { return random() % end; };
    for (int round = 0; round < 40; ++round) {
        std::string bytes = whole;
        if (round % 4 == 0) {
            bytes.resize(40 + below(whole.size() - 4200));
        } else {
            for (int flips = 0; flips < 1 << round % 6; ++flips) {
                bytes[40 + below(bytes.size() - 40)] ^= static_cast<char>(1 << below(8));
            }
        }
        Use(bytes);
        Boxes.Shown.clear();
        if (Database.OpenDatabase()) {
            EXPECT_NE(round % 4, 0) << "cut off to " << bytes.size();
            for (const ListItem& item : DeviceItems(Database, 2, 2)) Report(item.Key);
        } else {
            EXPECT_NE(Boxes.LastText(), "");
            EXPECT_TRUE(ManufacturerItems(Database).empty());
        }
    }
}

// A table whose map of pages has a wrong number: libmdb 1.0 dies of it.
TEST_P(JetFile, TheLibrarysCrashIsToldAsDamage) {
    const bool is4 = GetParam() == std::string("Jet4.ref");
    constexpr std::size_t definition = 21;
    std::string bytes = Whole();
    bytes.at(is4 ? definition * 4096 + 55 : definition * 2048 + 35) = '\xFF';
    Use(bytes);
    EXPECT_FALSE(Database.OpenDatabase());
    EXPECT_TRUE(Boxes.LastText().starts_with("The database is damaged: ")) << Boxes.LastText();
}

TEST_P(JetFile, AReaderThatIsMissingOrEndsEarlyIsTold) {
    for (const char* reader : {"/nowhere/jetreader", "/bin/false", "/bin/echo"}) {
        platform::qt::HostDatabaseEngine engine(Files, reader);
        clsDeviceDatabase database(engine, Boxes);
        database.DatabasePath(Folder.Logic("Devices.ref"));
        Boxes.Shown.clear();
        EXPECT_FALSE(database.OpenDatabase());
        EXPECT_EQ(Boxes.LastText(), std::string(reader).starts_with("/nowhere")
                                        ? "The program /nowhere/jetreader could not be started."
                                        : "The database is damaged: its reader ended unexpectedly.");
    }
}

INSTANTIATE_TEST_SUITE_P(Versions, JetFile, ::testing::Values("Jet3.ref", "Jet4.ref"),
                         [](const auto& version) { return std::string(version.param, 4); });

}  // namespace
}  // namespace devices
