#include <gtest/gtest.h>

#include <fstream>
#include <random>
#include <set>
#include <sstream>

#include "Designs.h"
#include "devpage/DevicePage.h"
#include "fit/Device.h"

namespace {

using test::FullSetText;

TEST(Library, EachDeviceIsTriedByRandomDesigns) {
    const auto library = fit::ReadLibrary(FullSetText());
    ASSERT_TRUE(library.Ok()) << library.Messages[0].At.Line << " " << library.Messages[0].Text;
    std::set<std::string> tried{"virtual", "G16V8A", "G20V8A"};  // the last two are other names
    for (const auto& family : test::Families()) tried.insert(family.Mnemonic);
    for (const auto& device : library.Devices) EXPECT_EQ(tried.erase(device.Mnemonic), 1u) << device.Mnemonic;
    EXPECT_TRUE(tried.empty()) << *tried.begin();
    EXPECT_NE(library.Find("g20v8"), nullptr);
}

// Written anew by: devpage data/devices/Fullset.dl data/devices/Cplds.dl > docs/devices.md
TEST(Library, ThePageOfTheDevicesIsThatOfTheData) {
    std::ifstream page(DEVICES_MD);
    std::ifstream complex(CPLDS_DL);
    std::stringstream text, data;
    text << page.rdbuf();
    data << complex.rdbuf();
    EXPECT_TRUE(text.str() == devpage::DevicePage(fit::ReadLibrary(FullSetText())) +
                                  devpage::ComplexPage(cpld::ReadDevices(data.str())));
}

// The example of docs/device-library.md: its indented lines.
TEST(Library, TheManualsExampleIsOne) {
    std::ifstream page(DEVICE_LIBRARY_MD);
    std::string text;
    for (std::string line; std::getline(page, line);)
        if (line.starts_with("    ")) text += line + "\n";
    const auto library = fit::ReadLibrary(text);
    ASSERT_TRUE(library.Ok()) << library.Messages[0].At.Line << " " << library.Messages[0].Text;
    ASSERT_NE(library.Find("TINY"), nullptr);
    EXPECT_EQ(library.Find("TINY")->Modes.at(0).Cells.at(0).Uses.size(), 2u);
}

TEST(Library, FaultsAreToldWithTheirLine) {
    const std::string head = "TESK-DL 1\nDEVICE A 20 100\nMODE m 10\n";
    const struct {
        std::string text;
        const char* code;
        int line;
    } cases[] = {
        {"", "7104tc", 0},
        {"TESK-DL 2\nEND\n", "7101tc", 1},
        {head, "7104tc", 3},
        {"TESK-DL 1\nMODE m 10\nEND\n", "7102tc", 2},
        {head + "DEVICE a 1 1\nEND\n", "7102tc", 4},
        {head + "DEVICE B LIKE C\nEND\n", "7102tc", 4},
        {head + "DEVICE B LIKE A n\nEND\n", "7102tc", 4},
        {head + "INPUT 21 0\nEND\n", "7102tc", 4},
        {head + "INPUT 1 9\nEND\n", "7102tc", 4},
        {head + "SET 99 1 2\nEND\n", "7102tc", 4},
        {head + "USE input\nEND\n", "7102tc", 4},
        {head + "CELL 3 - 100\nEND\n", "7102tc", 4},
        {head + "CELL 3 - low\nUSE output 9 2 always none\nEND\n", "7102tc", 5},
        {head + "CELL 3 - low\nUSE output 0 2 always pin\nEND\n", "7102tc", 5},
        {head + "CELL 3 0 low\nUSE output 0 2 10 pin\nEND\n", "7102tc", 5},
        {head + "CELL 3 0 low\nUSE register 0 2 9 pin 100=1\nEND\n", "7102tc", 5},
        {head + "CELL 3 0 low\nUSE register 0 2 9&pin pin\nEND\n", "7102tc", 5},
        {head + "CELL 3 0 low\nUSE register 0 2 9 pin clock=1 reset=2\nEND\n", "7102tc", 5},
        {head + "CELL 3 0 low\nUSE output 0 2 9 pin 98=1*3\nEND\n", "7102tc", 5},
        {head + "TERMS 9 12\nEND\n", "7102tc", 4},
        {head + "TERMS 5 12\nCELL 3 0 low\nUSE output 0 6 always pin or=10\nEND\n", "7102tc", 6},
        {head + "TERMS 5 12\nCELL 3 0 low\nUSE output 0 5 always pin or=12\nEND\n", "7102tc", 6},
        {head + "TERMS 5 12\nCELL 3 0 low\nUSE output 4 5 always pin\nEND\n", "7102tc", 6},
        {head + "CELL 3 - low\nUSE output 0 2 always none xor=1*2\nEND\n", "7102tc", 5},
        {head + "CELL 3 - low\nUSE output 0 2 always none xor=9*2\nEND\n", "7102tc", 5},
        {head + "CELL 3 - low\nUSE output 0 4 always none\nCELL 4 - low\nUSE output 3 4 always none\nEND\n",
         "7102tc", 7},
        {head + "CELL 3 - low\nUSE output 0 4 always none\nCELL 4 - low\nUSE output 5 2 always none xor=3*2\n"
                "END\n",
         "7102tc", 7},
        {head + "CELL 21 0 low\nUSE output 0 2 always none\nEND\n", "7102tc", 5},
        {head + "CELL 21 0 low\nUSE output 0 2 4 level\nEND\n", "7102tc", 5},
        {head + "CELL 21 0 low\nUSE input\nEND\n", "7102tc", 5},
    };
    for (const auto& c : cases) {
        const auto library = fit::ReadLibrary(c.text);
        ASSERT_EQ(library.Messages.size(), 1u) << c.text;
        EXPECT_EQ(library.Messages[0].Number, c.code) << c.text;
        EXPECT_EQ(library.Messages[0].At.Line, c.line) << c.text;
    }
}

TEST(Library, ChangedBytesNeverBreakTheReader) {
    const auto text = FullSetText();
    std::mt19937 random(5);
    for (int round = 0; round < 300; ++round) {
        const auto from = text.find("\nDEVICE", random() % (text.size() - 8000));
        auto changed = "TESK-DL 1" + text.substr(from, 2000 + random() % 4000);
        for (int n = 0; n < 5; ++n) {
            const auto at = random() % changed.size();
            changed.replace(at, random() % 8, text.substr(random() % text.size(), random() % 8));
            changed[random() % changed.size()] = static_cast<char>(random());
        }
        EXPECT_FALSE(fit::ReadLibrary(changed).Ok());
    }
}

}  // namespace
