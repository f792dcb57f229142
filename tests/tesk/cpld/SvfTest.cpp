#include <gtest/gtest.h>

#include <map>
#include <sstream>

#include "Support.h"
#include "base/RunTimeError.h"
#include "base/Text.h"
#include "cpld/FuseMap.h"
#include "cpld/Svf.h"

namespace {

using namespace cpld;
using Bits = std::vector<bool>;

unsigned Value(const Bits& bits) {
    unsigned value = 0;
    for (std::size_t i = 0; i < bits.size(); ++i) value |= static_cast<unsigned>(bits[i]) << i;
    return value;
}

// A device behind its JTAG port.
class Chip {
  public:
    Chip(std::uint32_t id, unsigned width) : id_(id), width_(width) {}

    std::map<unsigned, Bits> Words;
    std::vector<unsigned> Order;  // addresses as they were programmed
    bool Enabled = false;
    bool Idle = false;

    // Through the register of instructions or that of the present one; what comes out.
    Bits Shift(bool instruction, const Bits& in) {
        EXPECT_TRUE(Idle);
        Bits bits = instruction ? Bits(10) : Captured();
        const std::size_t width = bits.size();
        bits.insert(bits.end(), in.begin(), in.end());
        const auto rest = bits.end() - static_cast<std::ptrdiff_t>(width);
        if (instruction) {
            instruction_ = Value({rest, bits.end()});
            erases_ = instruction_ == 0x2B3 || (erases_ && instruction_ == 0x29E);
        } else {
            Update({rest, bits.end()});
        }
        bits.resize(in.size());
        return bits;
    }

    void Wait(double seconds) {
        EXPECT_TRUE(Idle);
        if (instruction_ == 0x28C && seconds >= 0.02) data_ = Words[address_];
        if (instruction_ != 0x29E || !Enabled) return;
        if (erases_ && seconds >= 0.21) Words.clear();
        if (!erases_ && seconds >= 0.03) {
            Words[address_] = data_;
            Order.push_back(address_);
        }
        erases_ = false;
    }

  private:
    Bits Captured() const {
        Bits bits(instruction_ == 0x059   ? 32
                  : instruction_ == 0x280 ? 10
                  : instruction_ == 0x2A1 ? 11
                                          : Width());
        if (instruction_ == 0x059)
            for (unsigned i = 0; i < 32; ++i) bits[i] = (id_ >> i & 1) != 0;
        if (IsData() && data_.size() == bits.size()) bits = data_;
        return bits;
    }
    bool IsData() const { return instruction_ >= 0x290 && instruction_ < 0x294; }
    unsigned Width() const {
        const unsigned widths[] = {width_, 32, 4, 16};
        return IsData() ? widths[instruction_ - 0x290] : 1;
    }
    void Update(const Bits& bits) {
        if (instruction_ == 0x280) Enabled = Value(bits) == 0x1B9;
        if (instruction_ == 0x2A1) address_ = Value(bits);
        if (IsData() && address_ >> 8 == instruction_ - 0x290) data_ = bits;
    }

    std::uint32_t id_;
    unsigned width_;
    unsigned instruction_ = 0, address_ = 0;
    bool erases_ = false;
    Bits data_;
};

// Plays the statements that the writer uses.
class Player {
  public:
    explicit Player(Chip& chip) : chip_(chip) {}

    void Play(const std::string& text) {
        for (const auto& line : base::Lines(text)) {
            if (line.empty() || line[0] == '!') continue;
            std::istringstream words(line.substr(0, line.find(';')));
            std::string word;
            words >> word;
            if (word == "SIR" || word == "SDR") Shift(word == "SIR", words);
            if (word == "STATE") chip_.Idle = line == "STATE IDLE;";
            if (word == "RUNTEST") {
                double seconds = 0;
                words >> word >> seconds;
                chip_.Wait(seconds);
            }
        }
    }
    int Compared = 0, Differing = 0;

  private:
    static Bits FromHex(const std::string& text, std::size_t count) {
        Bits bits;
        for (std::size_t i = text.size(); i-- > 0;)
            if (text[i] != '(' && text[i] != ')')
                for (unsigned k = 0; k < 4; ++k)
                    bits.push_back((std::stoul(text.substr(i, 1), nullptr, 16) >> k & 1) != 0);
        bits.resize(count);
        return bits;
    }

    void Shift(bool instruction, std::istringstream& words) {
        std::size_t count = 0;
        std::map<std::string, Bits> values;
        std::string name, value;
        words >> count;
        while (words >> name >> value) values[name] = FromHex(value, count);
        const Bits seen = chip_.Shift(instruction, values["TDI"]);
        for (std::size_t i = 0; i < count && values.contains("TDO"); ++i) {
            if (!values["MASK"][i]) continue;
            ++Compared;
            Differing += seen[i] != values["TDO"][i];
        }
    }

    Chip& chip_;
};

class Svf : public testing::TestWithParam<bool> {
  protected:
    const Device& Of() const { return test::Devices()[GetParam()]; }
    Bits Fuses(JtagPins pins, Switched protection) {
        Configuration any = test::RandomConfiguration(Of(), random_);
        any.Settings.Jtag = pins;
        any.Settings.ReadProtection = protection;
        return WriteFuses(Of(), any);
    }
    std::mt19937 random_{11};
};

TEST_P(Svf, ProgramsTheFusesIntoAChip) {
    const std::size_t words = GetParam() ? 216 : 212;
    for (const Switched protection : {Switched::Off, Switched::On}) {
        const auto fuses = Fuses(JtagPins::Jtag, protection);
        Chip chip(Of().IdCode, GetParam() ? 166 : 86);
        chip.Words[700] = {true};  // an earlier design's
        Player player(chip);
        player.Play(WriteSvf(Of(), fuses, {"A design\nof two lines", false}));
        EXPECT_EQ(player.Differing, 0);
        const int unread = protection == Switched::On ? 4 : 0;
        EXPECT_EQ(player.Compared, static_cast<int>(Of().Fuses) - 6 - unread + 32);
        EXPECT_FALSE(chip.Enabled);
        EXPECT_EQ(chip.Words.size(), words);
        EXPECT_EQ(chip.Order.size(), words);
        EXPECT_EQ((std::vector(chip.Order.end() - 2, chip.Order.end())), (std::vector{256u, 512u}));
        const auto places = Of().ProgramPlaces();
        for (std::size_t fuse = 0; fuse < fuses.size() - 6; ++fuse)
            ASSERT_EQ(chip.Words[static_cast<unsigned>(places[fuse].Address)].at(places[fuse].Bit),
                      fuses[fuse])
                << fuse;
    }
    Chip other(0x0150A03F, 86);
    Player player(other);
    player.Play(WriteSvf(Of(), Fuses(JtagPins::Jtag, Switched::Off), {}));
    EXPECT_GT(player.Differing, 0);
}

TEST_P(Svf, ComesBackAsFuses) {
    const auto fuses = Fuses(JtagPins::User, Switched::Off);
    EXPECT_THROW(WriteSvf(Of(), fuses, {}), base::RunTimeError);
    auto text = WriteSvf(Of(), fuses, {"", true});
    for (int pass = 0; pass < 2; ++pass) {
        const SvfMap map = ReadSvf(text, test::Devices());
        EXPECT_EQ(map.Of, &Of());
        EXPECT_EQ(map.Fuses, fuses);
        // Other writers break lines, write small letters and leave out what has not changed.
        text = base::ReplaceAll(base::ReplaceAll(base::Lower(text), "tdi (", "\n\ttdi(\n"), "mask (ffffffff)",
                                "");
        text = base::ReplaceAll(text, "sdr 11", "frequency 1e6 hz; // slow\nsdr 11");
    }
}

TEST_P(Svf, IsRefusedCutOrForeign) {
    const auto whole = WriteSvf(Of(), Fuses(JtagPins::Jtag, Switched::Off), {});
    const auto told = [&](const std::string& text) -> std::string {
        try {
            ReadSvf(text, test::Devices());
        } catch (const base::RunTimeError& error) {
            return error.what();
        }
        return "none";
    };
    for (std::size_t cut = 0; cut < whole.size() - 60; cut += 997)
        EXPECT_NE(told(whole.substr(0, cut)), "none") << cut;
    const std::tuple<const char*, std::string, std::string> rows[] = {
        {"SIR 10 TDI (059);", "SIR 10 TDI (1FE);", "line 11: an instruction that the device does not have"},
        {"SIR 10 TDI (059);", "SIR 10 TDI (459);", "line 11: a value has more bits than are shifted"},
        {"SIR 10 TDI (059);", "SIR ten TDI (059);", "line 11: SIR needs a number of bits"},
        {"SIR 10 TDI (059);", "SIR 10 TDI 059;", "line 11: \"TDI\" without a value in parentheses"},
        {"HIR 0;", "HIR 8 TDI (FF);", "line 4: it is for a chain of several devices"},
        {"HIR 0;", "PIO (H);", "line 4: \"PIO\" is not known"},
        {"HIR 0;", "HIR 0 (;);", "line 4: parentheses that do not match"},
        {"HIR 0;", "HIR \x80;", "line 4: not a text of a JTAG player"},
        {"(0150", "(0160", "line 12: the identification is that of another device"},
        {"MASK (FFFFFFFF)", "MASK (F0000000)",
         "line 12: the identification could be that of several devices"},
        {"(1B9)", "(1B8)", "it programs without a word, or before it enables that"},
    };
    for (const auto& [from, to, expected] : rows) {
        auto text = whole;
        const auto at = text.find(from);
        ASSERT_NE(at, text.npos) << from;
        text.replace(at, std::string_view(from).size(), to);
        EXPECT_TRUE(base::Contains(told(text), expected)) << to << ": " << told(text);
    }
    EXPECT_EQ(told(""), "it programs no device that is known");
}

INSTANTIATE_TEST_SUITE_P(BothDevices, Svf, testing::Bool());

}  // namespace
