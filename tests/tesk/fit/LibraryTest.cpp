#include <gtest/gtest.h>

#include <fstream>
#include <random>

#include "Designs.h"
#include "fit/Device.h"

namespace {

using test::FullSetText;

TEST(Library, HoldsTheFirstSetOfDevices) {
    const auto library = fit::ReadLibrary(FullSetText());
    ASSERT_TRUE(library.Ok()) << library.Messages[0].At.Line << " " << library.Messages[0].Text;
    const struct {
        const char* mnemonic;
        int pins;
        std::size_t fuses;
        std::size_t modes;
    } devices[] = {{"G16V8", 20, 2194, 3},   {"G16V8S", 20, 2194, 1}, {"G16V8MA", 20, 2194, 1},
                   {"G16V8MS", 20, 2194, 1}, {"G16V8A", 20, 2194, 3}, {"g20v8", 24, 2706, 3},
                   {"G20V8A", 24, 2706, 3},  {"G22V10", 24, 5892, 1}, {"P22V10", 24, 5828, 1},
                   {"P16L8", 20, 2048, 1},   {"P16R4", 20, 2048, 1},  {"P16R6", 20, 2048, 1},
                   {"P16R8", 20, 2048, 1},   {"P20L8", 24, 2560, 1},  {"P20R4", 24, 2560, 1},
                   {"P20R6", 24, 2560, 1},   {"P20R8", 24, 2560, 1},  {"virtual", 0, 0, 0}};
    for (const auto& d : devices) {
        const auto* device = library.Find(d.mnemonic);
        ASSERT_NE(device, nullptr) << d.mnemonic;
        EXPECT_EQ(device->Pins, d.pins) << d.mnemonic;
        EXPECT_EQ(device->Fuses, d.fuses) << d.mnemonic;
        EXPECT_EQ(device->Modes.size(), d.modes) << d.mnemonic;
    }
    EXPECT_EQ(library.Find("G16V9"), nullptr);
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
        auto changed = text.substr(0, 2000 + random() % 4000);
        for (int n = 0; n < 5; ++n) {
            const auto at = random() % changed.size();
            changed.replace(at, random() % 8, text.substr(random() % text.size(), random() % 8));
            changed[random() % changed.size()] = static_cast<char>(random());
        }
        EXPECT_FALSE(fit::ReadLibrary(changed).Ok());
    }
}

}  // namespace
