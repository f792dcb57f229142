#include <gtest/gtest.h>

#include <filesystem>

#include "DeviceFile.h"
#include "base/RunTimeError.h"
#include "base/Text.h"
#include "devices/DeviceSelection.h"

namespace devices {
namespace {

class DeviceDatabase : public DeviceFile {
  protected:
    // The box's words after a try to open, with the folder left out; no box is nothing.
    std::string Refusal() {
        Boxes.Shown.clear();
        EXPECT_FALSE(Database.OpenDatabase());
        EXPECT_EQ(Boxes.Shown.size(), 1u);
        if (Boxes.Shown.empty()) return "";
        const auto& box = Boxes.Shown.back();
        EXPECT_EQ(box.Title, "Data Access Error");
        EXPECT_EQ(box.Picture, platform::Icon::Warning);
        EXPECT_EQ(box.Choice, platform::Buttons::Ok);
        return base::ReplaceAll(box.Text, Folder.Logic() + "\\", "");
    }

    void ExpectNothing() {
        EXPECT_TRUE(QSqlDatabase::connectionNames().filter("database").isEmpty()) << "a connection is left";
        EXPECT_TRUE(ManufacturerItems(Database).empty());
        EXPECT_TRUE(PackageItems(Database).empty());
        EXPECT_TRUE(DeviceItems(Database, 2, 2).empty());
        EXPECT_EQ(Database.GetMnemonic(10), "");
        EXPECT_EQ(Database.rsOpen("Select 1"), nullptr);
        EXPECT_EQ(ChosenDeviceName(Database, "P4", false, std::nullopt), "P4");
        EXPECT_EQ(ChosenDeviceName(Database, "P4", true, std::nullopt), "&");
    }
};

TEST_F(DeviceDatabase, RowsAndTheirEnds) {
    Open(catalogue);
    auto rows = Database.rsOpen("Select * From Packages Order By PKey");
    EXPECT_FALSE(rows->IsBof());
    EXPECT_EQ(rows->Text("NAME"), "PLCC") << "names in any case of letters";
    EXPECT_EQ(rows->Number("PKey"), 1);
    EXPECT_EQ(rows->Number("Name"), std::nullopt);
    EXPECT_THROW(rows->Text("Nmae"), base::RunTimeError);
    rows->MoveNext();
    rows->MoveNext();
    rows->MoveNext();
    EXPECT_TRUE(rows->IsEof());
    EXPECT_THROW(rows->Text("Name"), base::RunTimeError);
    clsDeviceDatabase::rsClose(rows);
    EXPECT_EQ(rows, nullptr);

    rows = Database.rsOpen("Select * From Packages Where PKey = 77");
    EXPECT_TRUE(rows->IsBof() && rows->IsEof());
    EXPECT_EQ(Database.GetMnemonic(10), "P4");
    EXPECT_EQ(Database.GetMnemonic(77), "");
    EXPECT_THROW(Database.rsOpen("Select * From Nowhere"), base::RunTimeError);
    EXPECT_THROW(Database.rsOpen("Delete From Packages"), base::RunTimeError) << "it is never written";
    Database.CloseDatabase();
    ExpectNothing();
}

TEST_F(DeviceDatabase, FilesThatAreNoCatalogueAreTold) {
    EXPECT_EQ(Refusal(), "Could not find file 'Devices.ref'.");
    ExpectNothing();

    using namespace std::string_literals;
    const std::string foreign = "Unrecognized database format 'Devices.ref'.";
    for (const std::string& bytes :
         {""s, "SQLite"s, "just a text that is longer than the head of a database file"s,
          "\0\1\0\0Standard"s}) {
        Folder.Write("Devices.ref", bytes);
        EXPECT_EQ(Refusal(), foreign);
    }
    Folder.Write("Devices.ref", "SQLite format 3\0"s + std::string(500, 'x'));
    EXPECT_EQ(Refusal(), "file is not a database");

    std::filesystem::remove(HostPath());
    std::filesystem::create_directory(HostPath());
    EXPECT_EQ(Refusal(), "Path/File access error");
    std::filesystem::remove(HostPath());

    auto lacking = catalogue;
    lacking[3] = "Create Table Mnemonics (PKey Integer, Name Text, SpecialOptions Text, Pins Text)";
    MakeFile(HostPath(), lacking);
    EXPECT_EQ(Refusal(), "no such column: PinCount");
    ExpectNothing();
    std::filesystem::remove(HostPath());
    MakeFile(HostPath(), {"Create Table Birds (Name Text)"});
    EXPECT_EQ(Refusal(), "no such table: Manufacturers");
}

TEST_F(DeviceDatabase, DamageIsToldAtTheOpening) {
    MakeFile(HostPath(), catalogue);
    const std::string whole = Folder.Read("Devices.ref");
    constexpr std::size_t page = 4096;
    for (std::size_t at = page; at < whole.size(); at += page) {
        std::string damaged = whole;
        damaged.replace(at, page, std::string(page, '\x5A'));
        Folder.Write("Devices.ref", damaged);
        EXPECT_NE(Refusal(), "") << at;
        Folder.Write("Devices.ref", whole.substr(0, at + page / 2));
        EXPECT_NE(Refusal(), "") << at;
        ExpectNothing();
    }
}

TEST_F(DeviceDatabase, AFileThatIsHeldIsTold) {
    MakeFile(HostPath(), catalogue);
    {
        auto other = QSqlDatabase::addDatabase("QSQLITE", "other");
        other.setDatabaseName(QString::fromStdString(HostPath()));
        ASSERT_TRUE(other.open());
        ASSERT_TRUE(QSqlQuery(other).exec("Begin Exclusive"));
        EXPECT_EQ(Refusal(), "database is locked");
        ExpectNothing();
        ASSERT_TRUE(QSqlQuery(other).exec("Rollback"));
        EXPECT_TRUE(Database.OpenDatabase());
        EXPECT_TRUE(QSqlQuery(other).exec("Begin Exclusive"))
            << "a reader holds the file no longer than a query";
        other.close();
    }
    QSqlDatabase::removeDatabase("other");
}

}  // namespace
}  // namespace devices
