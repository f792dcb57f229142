#include <gtest/gtest.h>

#include "Support.h"
#include "base/RunTimeError.h"
#include "base/Text.h"
#include "cpld/FuseMap.h"
#include "cpld/JedecText.h"
#include "proof/JedecFile.h"

namespace {

using namespace cpld;

std::string ErrorOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const base::RunTimeError& error) {
        return error.what();
    }
    return "none";
}

std::uint64_t Hash(const std::vector<bool>& fuses) {
    std::uint64_t hash = 14695981039346656037u;
    for (const bool fuse : fuses) hash = (hash ^ static_cast<std::uint64_t>(fuse)) * 1099511628211u;
    return hash;
}

// The hashes are those of the maker's empty maps.
TEST(CpldFuses, AreBlankForAnEmptyDesign) {
    ASSERT_EQ(test::Devices().size(), 2u);
    const std::uint64_t hashes[] = {0x8DC017CE35D855C1, 0x061DB2357C34DD89};
    for (std::size_t i = 0; i < 2; ++i) {
        const Device& device = test::Devices()[i];
        EXPECT_EQ(Hash(WriteFuses(device, EmptyConfiguration(device))), hashes[i]) << device.Name;
    }
}

// Single facts of the maps, from places where the rules of the library could be off by one.
TEST(CpldFuses, HaveTheirMeanings) {
    const Device& small = test::Devices()[0];
    const Device& large = test::Devices()[1];
    const auto changed = [](const Device& device, const std::function<void(Configuration&)>& change) {
        Configuration configuration = EmptyConfiguration(device);
        const auto blank = WriteFuses(device, configuration);
        change(configuration);
        const auto fuses = WriteFuses(device, configuration);
        std::string text;
        for (std::size_t i = 0; i < fuses.size(); ++i)
            if (fuses[i] != blank[i]) text += std::to_string(i) + (fuses[i] ? "=1 " : "=0 ");
        return text;
    };
    EXPECT_EQ(changed(small, [](auto& c) { c.Cells[31].Terms[4].reset(95); }), "15359=1 ");
    EXPECT_EQ(changed(small, [](auto& c) { c.Cells[1].GlobalClock = Clock::Gclk3; }), "15645=1 ");
    EXPECT_EQ(changed(small, [](auto& c) { c.Switches[0][39] = 4; }), "16324=0 ");
    EXPECT_EQ(changed(small, [](auto& c) { c.Clocks[0].Signal = 0; }), "16762=0 16763=0 ");
    EXPECT_EQ(changed(small, [](auto& c) { c.Signature = 0x7FFE; }), "16786=0 16801=0 ");
    EXPECT_EQ(changed(large, [](auto& c) { c.Cells[33].SlewRate = Slew::Fast; }), "32316=0 ");
    EXPECT_EQ(changed(large, [](auto& c) { c.Cells[32].Terms[0].reset(0); }), "30240=1 ");
    EXPECT_EQ(changed(large, [](auto& c) { c.Cells[1].OutputEnable = Enable::Goe2; }), "31538=1 ");
    EXPECT_EQ(changed(large, [](auto& c) { c.Settings.Jtag = JtagPins::User; }), "34167=0 ");
    EXPECT_EQ(large.FindPackage("p44")->PadAt(31), 45);
    EXPECT_EQ(large.FindPackage("P44")->Pins[1], 0);
    EXPECT_EQ(large.FindPackage("P44")->PadAt(0), -1);
    EXPECT_EQ(large.FindPackage("T44"), large.FindPackage("t44"));
    EXPECT_EQ(small.FindPackage("P84"), nullptr);
}

// Device, fuse, address and bit of its word: both ends of what is programmed in one way.
TEST(CpldFuses, HaveTheirPlacesBehindThePort) {
    const std::array<std::size_t, 4> rows[] = {
        {0, 7679, 107, 0},   {0, 7680, 128, 79},  {0, 16319, 11, 0},   {0, 16719, 228, 0},
        {0, 16720, 224, 85}, {0, 16749, 228, 80}, {0, 16750, 256, 31}, {0, 16785, 512, 0},
        {0, 16801, 768, 0},  {1, 15359, 107, 6},  {1, 30719, 223, 6},  {1, 32639, 11, 6},
        {1, 34133, 232, 0},  {1, 34165, 256, 0},  {1, 34169, 512, 0},  {1, 34170, 768, 15}};
    for (const auto& [device, fuse, address, bit] : rows) {
        const auto place = test::Devices()[device].ProgramPlaces()[fuse];
        EXPECT_EQ(std::pair(place.Address, place.Bit), std::pair(address, bit)) << fuse;
    }
}

TEST(CpldFuses, ComeBackAsTheyWere) {
    std::mt19937 random(7);
    for (const Device& device : test::Devices()) {
        for (int round = 0; round < 25; ++round) {
            const Configuration configuration = test::RandomConfiguration(device, random);
            const auto fuses = WriteFuses(device, configuration);
            ASSERT_TRUE(ReadConfiguration(device, fuses) == configuration) << device.Name << round;
            ASSERT_EQ(WriteFuses(device, ReadConfiguration(device, fuses)), fuses);
        }
    }
}

TEST(CpldFuses, AreToldWhereTheySayNothing) {
    const Device& device = test::Devices()[0];
    const auto blank = WriteFuses(device, EmptyConfiguration(device));
    const auto told = [&](std::initializer_list<std::size_t> changed) {
        auto fuses = blank;
        for (const std::size_t fuse : changed) fuses[fuse].flip();
        return ErrorOf([&] { ReadConfiguration(device, fuses); });
    };
    EXPECT_EQ(told({15360}), "a reserved fuse is changed (fuse 15360)");
    EXPECT_EQ(told({15647}), "no value of gclk_mux of MC1 (fuse 15646)");
    EXPECT_EQ(told({480}), "MC2 has a term without power (fuse 480)");
    EXPECT_EQ(told({16320, 16323}), "two signals are brought to one place (fuse 16323)");
    EXPECT_EQ(told({16762}), "no signal of GCLK1 (fuse 16762)");
    EXPECT_EQ(ErrorOf([&] { ReadConfiguration(device, {true}); }), "a map of 1 fuses, C1502 has 16808");
}

TEST(CpldFuses, StandInAJedecFileWithTheirPins) {
    const Device& device = test::Devices()[1];
    std::mt19937 random(3);
    const auto fuses = WriteFuses(device, test::RandomConfiguration(device, random));
    DesignNames names{"t44", std::vector<std::string>(device.Pads.size()), {}};
    names.Pads[0] = "RESET*";
    names.Pads.back() = "CLK";
    const auto text = model::WriteJedec(JedecMapOf(device, fuses, names));
    const auto file = proof::ReadJedec(text);
    EXPECT_TRUE(file.Messages.empty());
    EXPECT_EQ(file.Fuses, fuses);
    EXPECT_EQ(file.Pins, 44u);
    EXPECT_EQ(file.Notes, (std::vector<std::string>{" DEVICE C1504T44", " PIN 6 RESET?", " PIN 38 CLK"}));
}

TEST(CpldLibrary, IsRefusedWhereItDoesNotHoldTogether) {
    struct Row {
        const char* From;
        const char* To;
        const char* Told;
    };
    const Row rows[] = {
        {"TESK-CPLD 1", "TESK-DL 1", "line 1 of the device library: not a library of complex devices"},
        {"\nEND\n", "\n", "the device library is cut: no END"},
        {"BLOCK B MC17", "BLOCK B MC18", "blocks have 16 macrocells"},
        {"BLOCK B MC17 7680 480", "BLOCK B MC17 7680 400", "has two meanings"},
        {"SPECIAL TCK M25", "SPECIAL TCK M99", "\"M99\" is not a pad"},
        {"SPECIAL TCK M25", "", "C1502 lacks a special function"},
        {"PACKAGE T44 44 42 43", "PACKAGE T44 44 42 42", "two pads at one pin"},
        {"PACKAGE T44 44 42 43", "PACKAGE T44 44 42 45", "\"45\" is not a number from 1 to 44"},
        {"TERM PT2 288 288 672", "TERM PT2 288 288 671", "has two meanings"},
        {"OPTION fb_mux 15566,-1,-3 sync comb", "OPTION fb_mux 15566,-1,-3 sync",
         "too few or too many words"},
        {"OPTION fb_mux 15566,-1,-3 sync comb", "OPTION fb_mux 15566,-1,-3 sync both",
         "no fuses for the value \"comb\""},
        {"SWITCH A95 B95 MC1 MC4", "SWITCH A95 B95 MC1 MC33", "\"33\" is not a number from 1 to 32"},
        {"SWITCH A95 B95", "SWITCH A93 B95", "does not have a switch for each column"},
        {"CLEAR 16760=0 R", "CLEAR 16760 R", "an inverter is told as"},
        {"AREA 256 32", "AREA 256 31", "is programmed nowhere, or where another is"},
        {"ALONG 16750 32 32 256 31", "ALONG 16750 31 32 256 31", "fuse 16781 of C1502 is programmed nowhere"},
        {"SIGNATURE 16786", "SIGNATUR 16786", "\"SIGNATUR\" is not a record"},
    };
    for (const Row& row : rows) {
        std::string text = test::LibraryText();
        const auto at = text.find(row.From);
        ASSERT_NE(at, text.npos) << row.From;
        text.replace(at, std::string_view(row.From).size(), row.To);
        const auto told = ErrorOf([&] { ReadDevices(text); });
        EXPECT_TRUE(base::Contains(told, row.Told)) << row.To << ": " << told;
    }
}

}  // namespace
