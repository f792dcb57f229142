#include "devices/DeviceSelection.h"

#include <gtest/gtest.h>

#include "DeviceFile.h"
#include "devices/DeviceReport.h"

namespace devices {
namespace {

using Items = std::vector<ListItem>;

class DeviceSelection : public DeviceFile {
  protected:
    void SetUp() override { Open(catalogue); }
    std::string Report(std::int32_t device) { return DeviceReport(ReadDeviceFacts(Database, device)); }
};

TEST_F(DeviceSelection, ListsFollowTheQueries) {
    EXPECT_EQ(ManufacturerItems(Database), (Items{{"Alpha", 2}, {"Unnumbered", 9}, {"Zeta", 1}}));
    EXPECT_EQ(PackageItems(Database), (Items{{"DIP", 2}, {"PLCC", 1}}));
    struct Case {
        const char* Name;
        std::optional<int> Manufacturer, Package;
        Items Devices;
    };
    const std::vector<Case> cases = {
        {"sorted as stored, each once, blanks cut", 2, 2, {{"Zap4", 10}, {"Bee2", 11}, {"Nil", 12}}},
        {"one library that is not there does not count; a null name; no mnemonic", 2, 1, {{"", 15}}},
        {"another manufacturer", 1, 2, {{"Other", 13}}},
        {"none in this package", 1, 1, {}},
        {"no mnemonic of the manufacturer's number", 9, 2, {}},
        {"no manufacturer selected", std::nullopt, 2, {}},
        {"no package selected", 2, std::nullopt, {}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(DeviceItems(Database, c.Manufacturer, c.Package), c.Devices) << c.Name;
}

TEST_F(DeviceSelection, ReportsAreExact) {
    const std::string stars(50, '*');
    EXPECT_EQ(Report(10),
              "Mnemonic:  P4\r\n"
              "Pin Count:  4\r\n"
              "Special Options:  fast\r\n"
              "Alternate Part Numbers:  Z4A, Z4B\r\n"
              "Related Mnemonics:  P3, V2\r\n"
              "\r\n" +
                  stars +
                  "\r\n"
                  "Pin#     Function\r\n"
                  "     7     I/CLK\r\n"
                  "    12     GND\r\n"
                  "   A10     \r\n"
                  "   AA10     I\r\n"
                  "           NC\r\n"
                  "\r\n" +
                  stars +
                  "\r\n"
                  "Device Notes:\r\n"
                  "One.\r\nTwo.");
    const std::string empty =
        "\r\n" + stars + "\r\nPin#     Function\r\n\r\n" + stars + "\r\nDevice Notes:\r\n";
    const std::string none = "Alternate Part Numbers:  None\r\nRelated Mnemonics:  None\r\n";
    EXPECT_EQ(Report(12), "Mnemonic:  \r\nPin Count:  \r\nSpecial Options:  None\r\n" + none + empty)
        << "null fields";
    EXPECT_EQ(Report(16), none + empty) << "no mnemonic record";
    EXPECT_EQ(Report(99), none + empty) << "no such device";
}

TEST_F(DeviceSelection, OkLeavesADeviceName) {
    struct Case {
        const char* Before;
        bool InFile;
        std::optional<int> Selected;
        const char* After;
    };
    const std::vector<Case> cases = {
        {"P4", true, 11, "&"}, {"P4", false, 11, "V2"},           {"P4", false, std::nullopt, "P4"},
        {"&", true, {}, "&"},  {"virtual", false, {}, "virtual"}, {"", false, 10, "P4"},
        {"P4", false, 12, ""},  // its name is null
        {"P4", false, 16, ""},  // no such mnemonic
    };
    for (const Case& c : cases) {
        EXPECT_EQ(ChosenDeviceName(Database, c.Before, c.InFile, c.Selected), c.After) << c.Before;
    }
    EXPECT_TRUE(IsDeviceInFile(""));
    EXPECT_TRUE(IsDeviceInFile("&"));
    EXPECT_FALSE(IsDeviceInFile("V2"));
}

}  // namespace
}  // namespace devices
