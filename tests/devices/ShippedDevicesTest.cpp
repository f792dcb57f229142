#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <sstream>

#include "DeviceFile.h"
#include "devices/DeviceReport.h"
#include "devref/DeviceSource.h"
#include "fit/Device.h"

namespace devices {
namespace {

std::string ReadText(const char* path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

class ShippedDevices : public ::testing::Test {
  protected:
    void SetUp() override {
        Database.DatabasePath(Files.FromHostPath(DEVICES_REF));
        ASSERT_TRUE(Database.OpenDatabase()) << Boxes.LastText();
    }
    std::vector<std::string> Column(const std::string& query) {
        std::vector<std::string> values;
        for (auto rows = Database.rsOpen(query); !rows->IsEof(); rows->MoveNext()) {
            values.push_back(rows->Text("Name").value_or("null"));
        }
        return values;
    }

    doubles::Dialogs Boxes;
    platform::qt::HostFileSystem Files;
    platform::qt::HostDatabaseEngine Engine{Files};
    clsDeviceDatabase Database{Engine, Boxes};
};

// Each device can be reached by the lists: the kept join leaves none out.
TEST_F(ShippedDevices, EveryDeviceIsListedAndReported) {
    std::set<std::int32_t> listed;
    for (const ListItem& manufacturer : ManufacturerItems(Database)) {
        std::size_t count = 0;
        for (const ListItem& package : PackageItems(Database)) {
            for (const ListItem& device : DeviceItems(Database, manufacturer.Key, package.Key)) {
                EXPECT_TRUE(listed.insert(device.Key).second) << device.Text << " stands twice";
                const DeviceFacts facts = ReadDeviceFacts(Database, device.Key);
                EXPECT_EQ(facts.Mnemonic, Database.GetMnemonic(device.Key));
                EXPECT_GE(facts.Mnemonic.size(), 2u) << device.Text;
                ++count;
            }
        }
        EXPECT_GT(count, 0u) << manufacturer.Text;
    }
    EXPECT_EQ(listed.size(), Column("Select Name From Devices").size());
}

TEST_F(ShippedDevices, TheToolsMnemonicsAreThere) {
    const fit::Library library = fit::ReadLibrary(ReadText(FULLSET));
    ASSERT_TRUE(library.Ok());
    for (const fit::Device& device : library.Devices) {
        const std::string of =
            "Select Pin, PinList.Name From Mnemonics Inner Join PinList "
            "On PinList.MnemonicKey = Mnemonics.PKey Where Mnemonics.Name = '" +
            device.Mnemonic + "'";
        const auto pins = Column(of);
        EXPECT_EQ(pins.size(), static_cast<std::size_t>(device.Pins)) << device.Mnemonic;
        EXPECT_EQ(Column("Select Name From Mnemonics Where Name = '" + device.Mnemonic +
                         "' And PinCount = " + std::to_string(device.Pins)),
                  std::vector{device.Mnemonic});
        if (device.IsVirtual() || pins.empty()) continue;
        EXPECT_EQ(Column(of + " And Pin = '" + std::to_string(device.GroundPin) + "'"),
                  std::vector<std::string>{"GND"});
        EXPECT_EQ(Column(of + " And Pin = '" + std::to_string(device.SupplyPin) + "'"),
                  std::vector<std::string>{"VCC"});
        for (const fit::Mode& mode : device.Modes) {
            for (const auto& [pin, column] : mode.Inputs) {
                EXPECT_TRUE(pins.at(pin - 1).starts_with("I")) << device.Mnemonic << " pin " << pin;
            }
            for (const fit::Cell& cell : mode.Cells) {
                EXPECT_NE(pins.at(cell.Pin - 1).find_first_of("OQ"), std::string::npos)
                    << device.Mnemonic << " pin " << cell.Pin;
            }
        }
    }
    std::istringstream partitioner(
        "EP300 EP320 EP600 EP900 F100 F103 F153 F161 F162 F163 F173 F16V8 F18V8Z F20V8 F473 G16V8A G16Z8 "
        "G18V10 G20V8 G20V8A G22V10 G26CV12 G6001 P10L8 P12H6 P12L10 P12L6 P14H4 P14L4 P16L8 P16C1 P16H2 "
        "P16L2 P16L6 P16N8 P16P8 P16R4 P16R6 P16R8 P8L14 P18CV8 P18L4 P18P8 P18U8 P18V8 P19R4R P19R6 P20CG10 "
        "P20L8 P22CV10 P22CV10Z P22V10 P22VP10 P32XV10 P6L16");
    std::multiset<std::string> expected;
    for (std::string name; partitioner >> name;) expected.insert(name);
    const auto carried = Column(
        "Select Mnemonics.Name From Mnemonics Inner Join MnemonicLibrary On Mnemonics.PKey = MnemonicKey"
        " Where LibraryKey = 2");
    EXPECT_EQ(std::multiset<std::string>(carried.begin(), carried.end()), expected);
}

TEST(DeviceSource, FaultsNameTheirLine) {
    const std::string head = "PACKAGE DIP\nMANUFACTURER X Xy\nLIBRARY c Lib\n";
    const std::pair<std::string, std::string> cases[] = {
        {"PACKET DIP\n", "line 1: what is PACKET?"},
        {head + "MNEMONIC P2 2 c\nPINS 1 I, 3 O\n", "pin 3 of P2 is out of order"},
        {head + "MNEMONIC P2 2 c\nPINS 1 I\nMNEMONIC P3 2 c\n", "line 6: P2 lacks pins or has too many"},
        {head + "MNEMONIC P2 2 d\n", "line 4: d is not declared"},
        {head + "MNEMONIC P2 2 c\nMNEMONIC P2 2 c\n", "line 5: P2 again"},
        {head + "MNEMONIC P2 2 c\nRELATED P9\n", "P9 is not declared"},
        {head + "MNEMONIC P2 x c\n", "line 4: x is no number"},
        {head + "MNEMONIC P2 2 c\nDEVICE X | DIP\n",
         "line 5: a device has a manufacturer, packages and a name"},
        {head + "NOTE early\n", "line 4: no mnemonic before it"},
        {head + "MANUFACTURER Y Yz\nMNEMONIC P2 2 c\n", "there are more manufacturers than mnemonics"},
    };
    for (const auto& [text, fault] : cases) {
        try {
            devref::ReadCatalogue(text);
            ADD_FAILURE() << text << " is taken";
        } catch (const std::runtime_error& error) {
            EXPECT_EQ(error.what(), fault);
        }
    }
}

}  // namespace
}  // namespace devices
