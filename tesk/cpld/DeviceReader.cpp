#include <algorithm>
#include <map>
#include <set>

#include "base/RunTimeError.h"
#include "base/Text.h"
#include "cpld/Configuration.h"
#include "model/Number.h"

namespace cpld {
namespace {

using Words = std::vector<std::string_view>;

constexpr std::size_t mostBytes = 4u << 20;
constexpr long mostFuses = 1 << 18;
constexpr std::size_t mostBlocks = 16;
constexpr long mostPins = 512;
constexpr std::size_t mostChoices = 16;  // of a switch or a global

[[noreturn]] void Fault(const std::string& what) { throw base::RunTimeError(base::errTypeMismatch, what); }

void Require(bool good, std::string_view what) {
    if (!good) Fault(std::string(what));
}

long Number(std::string_view word, long low, long high, int radix = 10) {
    const auto value = model::WholeNumber<long>(word, radix);
    if (!value || *value < low || *value > high)
        Fault("\"" + std::string(word) + "\" is not a number from " + std::to_string(low) + " to " +
              std::to_string(high));
    return *value;
}

std::size_t Natural(std::string_view word, std::size_t high) {
    return static_cast<std::size_t>(Number(word, 0, static_cast<long>(high)));
}

std::vector<std::string_view> Split(std::string_view word, char at) {
    std::vector<std::string_view> parts;
    for (std::size_t end = 0; end != word.npos; word.remove_prefix(end == word.npos ? 0 : end + 1)) {
        end = word.find(at);
        parts.push_back(word.substr(0, end));
    }
    return parts;
}

class Reader {
  public:
    std::vector<Device> Read(std::string_view text) {
        Require(text.size() <= mostBytes, "the device library is too large");
        std::size_t line = 0;
        bool ended = false;
        for (auto rest = text; !rest.empty() && !ended;) {
            ++line;
            const auto words = [&] {
                const auto whole = base::TakeLine(rest);
                return base::Words(whole.substr(0, whole.find(';')));
            }();
            try {
                ended = TakeLine(words, line == 1);
            } catch (const base::RunTimeError& error) {
                Fault("line " + std::to_string(line) + " of the device library: " + error.what());
            }
        }
        Require(ended, "the device library is cut: no END");
        return std::move(devices_);
    }

  private:
    using Record = void (Reader::*)(const Words&);
    struct Form {
        Record Take;
        std::size_t Fewest, Most;  // words, the record's own among them
    };

    bool TakeLine(const Words& words, bool first) {
        if (first) {
            Require(words == Words{"TESK-CPLD", "1"}, "not a library of complex devices of version 1");
            return false;
        }
        if (words.empty()) return false;
        const bool end = words[0] == "END";
        if (end || words[0] == "DEVICE") {
            Finish();
            if (end) return true;
        }
        const auto found = Forms().find(words[0]);
        if (found == Forms().end()) Fault("\"" + std::string(words[0]) + "\" is not a record");
        const auto [take, fewest, most] = found->second;
        Require(words.size() >= fewest && words.size() <= most, "too few or too many words");
        Require(words[0] == "DEVICE" || !devices_.empty(), "a record before DEVICE");
        (this->*take)(words);
        return false;
    }

    static const std::map<std::string_view, Form>& Forms() {
        static const std::map<std::string_view, Form> forms{
            {"DEVICE", {&Reader::TakeDevice, 4, 4}},     {"BLOCK", {&Reader::TakeBlock, 5, 5}},
            {"PADS", {&Reader::TakePads, 2, 17}},        {"SPECIAL", {&Reader::TakeSpecial, 3, 3}},
            {"PACKAGE", {&Reader::TakePackage, 4, 512}}, {"TERM", {&Reader::TakeTerm, 5, 5}},
            {"OPTION", {&Reader::TakeOption, 5, 32}},    {"SWITCHES", {&Reader::TakeSwitches, 2, 2}},
            {"SWITCH", {&Reader::TakeSwitch, 3, 32}},    {"CLEAR", {&Reader::TakeClear, 3, 3}},
            {"CLOCK", {&Reader::TakeClock, 5, 32}},      {"ENABLE", {&Reader::TakeEnable, 4, 32}},
            {"SETTING", {&Reader::TakeSetting, 5, 5}},   {"SIGNATURE", {&Reader::TakeSignature, 2, 2}},
            {"ZEROS", {&Reader::TakeZeros, 3, 3}},       {"AREA", {&Reader::TakeArea, 3, 3}},
            {"DOWN", {&Reader::TakeProgram, 6, 6}},      {"ALONG", {&Reader::TakeProgram, 6, 6}}};
        return forms;
    }

    Device& Now() { return devices_.back(); }
    std::size_t Fuse(std::string_view word) { return Natural(word, Now().Fuses - 1); }

    // Every fuse has one meaning.
    std::size_t Claim(std::size_t fuse) {
        if (fuse >= Now().Fuses) Fault("the device has no fuse " + std::to_string(fuse));
        if (named_[fuse]) Fault("fuse " + std::to_string(fuse) + " has two meanings");
        named_[fuse] = true;
        return fuse;
    }
    void Claim(std::size_t first, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) Claim(first + i);
    }

    void TakeDevice(const Words& words) {
        Device device;
        device.Name = words[1];
        for (const Device& other : devices_)
            Require(other.Name != device.Name, "the device stands here twice");
        device.Fuses = static_cast<std::size_t>(Number(words[2], 1, mostFuses));
        device.IdCode = static_cast<std::uint32_t>(Number(words[3], 0, 0xFFFFFFFFL, 16));
        device.Options.resize(CellOptions().size());
        device.Settings.resize(DeviceSettings().size());
        devices_.push_back(std::move(device));
        named_.assign(Now().Fuses, false);
        zeros_.assign(Now().Fuses, false);
        special_.clear();
        clocks_ = enables_ = 0;
        nextSwitch_ = 0;
        cleared_ = false;
        Now().SignatureFuse = Now().Fuses;
    }

    void TakeBlock(const Words& words) {
        Block block;
        Require(words[1].size() == 1 && Now().Blocks.size() < mostBlocks && Now().Pads.empty(),
                "a block has one letter and stands before PADS");
        block.Name = words[1][0];
        block.FirstCell = Now().CellCount();
        Require(words[2] == "MC" + std::to_string(block.FirstCell + 1),
                "blocks have 16 macrocells each, in order");
        block.TermShift = Fuse(words[3]);
        block.OptionShift = Fuse(words[4]);
        Now().Blocks.push_back(std::move(block));
    }

    void TakePads(const Words& words) {
        Require(!Now().Blocks.empty() && Now().Pads.empty(), "PADS stands once, behind the blocks");
        for (std::size_t i = 0; i < Now().CellCount(); ++i) Now().Pads.push_back("M" + std::to_string(i + 1));
        Now().Pads.insert(Now().Pads.end(), words.begin() + 1, words.end());
    }

    std::size_t Pad(std::string_view name) {
        const auto found = std::find(Now().Pads.begin(), Now().Pads.end(), name);
        if (found == Now().Pads.end()) Fault("\"" + std::string(name) + "\" is not a pad");
        return static_cast<std::size_t>(found - Now().Pads.begin());
    }

    Signal SignalOf(std::string_view word) {
        if (word == "GND" || word == "-") return {};
        if (!base::StartsWith(word, "MC")) return {Signal::Kind::Pad, static_cast<std::uint16_t>(Pad(word))};
        const long cell = Number(word.substr(2), 1, static_cast<long>(Now().CellCount()));
        return {Signal::Kind::Feedback, static_cast<std::uint16_t>(cell - 1)};
    }

    std::vector<Signal> Signals(const Words& words, std::size_t first) {
        Require(words.size() <= first + mostChoices && words.size() > first, "too few or too many signals");
        std::vector<Signal> signals;
        for (std::size_t i = first; i < words.size(); ++i) signals.push_back(SignalOf(words[i]));
        return signals;
    }

    void TakeSpecial(const Words& words) {
        auto& special = Now().Special;
        const std::map<std::string_view, std::size_t*> places{
            {"CLR", &special.Clear},      {"CLK1", &special.Clocks[0]},   {"CLK2", &special.Clocks[1]},
            {"CLK3", &special.Clocks[2]}, {"OE1", &special.Enables[0]},   {"OE2", &special.Enables[1]},
            {"TDI", &special.Tdi},        {"TMS", &special.Tms},          {"TCK", &special.Tck},
            {"TDO", &special.Tdo},        {"PD1", &special.PowerDown[0]}, {"PD2", &special.PowerDown[1]}};
        const auto found = places.find(words[1]);
        Require(found != places.end() && special_.insert(std::string(words[1])).second,
                "a special function that is not known, or a second time");
        *found->second = Pad(words[2]);
    }

    void TakePackage(const Words& words) {
        Package package{std::string(words[1]), static_cast<int>(Number(words[2], 1, mostPins)), {}};
        Require(words.size() == 3 + Now().Pads.size(), "a package names a pin or - for each pad");
        std::set<int> used;
        for (std::size_t i = 3; i < words.size(); ++i) {
            const long pin = words[i] == "-" ? 0 : Number(words[i], 1, package.PinCount);
            Require(pin == 0 || used.insert(static_cast<int>(pin)).second, "two pads at one pin");
            package.Pins.push_back(static_cast<int>(pin));
        }
        Now().Packages.push_back(std::move(package));
    }

    FuseRow Row(std::string_view first, std::string_view step, std::string_view next) {
        const long most = static_cast<long>(Now().Fuses);
        return {Fuse(first),
                {static_cast<int>(Number(step, -most, most)), static_cast<int>(Number(next, -most, most))}};
    }

    void ClaimRow(const FuseRow& row, std::size_t Block::*shift, std::size_t width) {
        for (const Block& block : Now().Blocks)
            for (std::size_t cell = 0; cell < BlockCells; ++cell) Claim(row.Of(cell) + block.*shift, width);
    }

    void TakeTerm(const Words& words) {
        Require(words[1].size() == 3 && base::StartsWith(words[1], "PT"), "terms are PT1 to PT5");
        const auto term = static_cast<std::size_t>(Number(words[1].substr(2), 1, CellTerms)) - 1;
        Now().Terms[term] = Row(words[2], words[3], words[4]);
        ClaimRow(Now().Terms[term], &Block::TermShift, TermColumns);
    }

    // The index of a name, and for each value of its enumeration the number at which it stands from `first`
    // on.
    template <typename Options>
    std::size_t TakeValues(Options options, const Words& words, std::size_t first,
                           std::vector<Choice>& choices) {
        const auto row = std::find_if(options.begin(), options.end(),
                                      [&](const auto& option) { return option.Name == words[1]; });
        if (row == options.end()) Fault("\"" + std::string(words[1]) + "\" is not an option");
        const auto index = static_cast<std::size_t>(row - options.begin());
        Require(choices[index].Fuses.empty(), "the option stands here twice");
        for (const auto value : row->Values) {
            const auto at = std::find(words.begin() + static_cast<std::ptrdiff_t>(first), words.end(), value);
            if (at == words.end()) Fault("no fuses for the value \"" + std::string(value) + "\"");
            choices[index].Values.push_back(static_cast<unsigned>(at - words.begin()) -
                                            static_cast<unsigned>(first));
        }
        return index;
    }

    void TakeOption(const Words& words) {
        std::size_t fuses = 0;
        while (2 + fuses < words.size() && base::Contains(words[2 + fuses], ",")) ++fuses;
        Require(fuses >= 1 && fuses <= 3 && words.size() == 2 + fuses + (std::size_t(1) << fuses),
                "an option has one to three fuses, and 2, 4 or 8 values");
        auto& choices = Now().Options;
        Choice& choice = choices[TakeValues(CellOptions(), words, 2 + fuses, choices)];
        for (std::size_t i = 0; i < fuses; ++i) {
            const auto parts = Split(words[2 + i], ',');
            Require(parts.size() == 3, "a fuse is told by its first number and two steps");
            choice.Fuses.push_back(Row(parts[0], parts[1], parts[2]));
            ClaimRow(choice.Fuses.back(), &Block::OptionShift, 1);
        }
    }

    void TakeSetting(const Words& words) {
        auto& choices = Now().Settings;
        Choice& choice = choices[TakeValues(DeviceSettings(), words, 3, choices)];
        choice.Fuses.push_back({Claim(Fuse(words[2])), {0, 0}});
    }

    void TakeSwitches(const Words& words) { nextSwitch_ = Fuse(words[1]); }

    void TakeSwitch(const Words& words) {
        std::vector<std::pair<Block*, std::size_t>> places;
        for (std::size_t i = 1; i < words.size() && words[i].size() >= 2; ++i) {
            const auto column = words[i].substr(1);
            if (column.find_first_not_of("0123456789") != column.npos || words[i][0] == 'M') break;
            auto& blocks = Now().Blocks;
            const auto block = std::find_if(blocks.begin(), blocks.end(),
                                            [&](const Block& b) { return b.Name == words[i][0]; });
            if (block == blocks.end()) break;
            places.emplace_back(&*block, Natural(column, TermColumns - 1));
        }
        Require(!places.empty(), "a switch stands in a block, \"A95\"");
        const auto signals = Signals(words, 1 + places.size());
        for (const auto& [block, column] : places) {
            Require(column >= BlockCells && block->Switches.size() < BlockSwitches,
                    "a block has 40 switches");
            block->Switches.push_back({nextSwitch_, column, signals});
            Claim(nextSwitch_, signals.size());
            nextSwitch_ += signals.size();
        }
    }

    Inverter TakeInverter(std::string_view word) {
        const auto parts = Split(word, '=');
        Require(parts.size() == 2 && (parts[1] == "0" || parts[1] == "1"),
                "an inverter is told as \"16760=0\"");
        return {Claim(Fuse(parts[0])), parts[1] == "1"};
    }

    void TakeClear(const Words& words) {
        Require(!cleared_, "CLEAR stands here twice");
        cleared_ = true;
        Now().ClearInvert = TakeInverter(words[1]);
        Require(Pad(words[2]) == Now().Special.Clear, "the clear is at the pad of CLR");
    }

    void TakeGlobal(Global& global, const Words& words, std::size_t signals) {
        global.Invert = TakeInverter(words[1]);
        global.FirstFuse = Fuse(words[2]);
        global.Signals = Signals(words, signals);
        global.Fuses = signals == 3 ? global.Signals.size() : Natural(words[3], 4);
        Claim(global.FirstFuse, global.Fuses);
    }

    void TakeClock(const Words& words) {
        Require(clocks_ < ClockCount, "too many clocks");
        Global& clock = Now().Clocks[clocks_++];
        TakeGlobal(clock, words, 4);
        Require(clock.Signals.size() == std::size_t(1) << clock.Fuses,
                "a clock names a signal or - for each value");
    }

    void TakeEnable(const Words& words) {
        Require(enables_ < EnableCount, "too many enables");
        TakeGlobal(Now().Enables[enables_++], words, 3);
    }

    void TakeSignature(const Words& words) {
        Require(Now().SignatureFuse == Now().Fuses, "SIGNATURE stands here twice");
        Now().SignatureFuse = Fuse(words[1]);
        Claim(Now().SignatureFuse, 16);
    }

    void TakeZeros(const Words& words) {
        const std::size_t first = Fuse(words[1]), count = Natural(words[2], Now().Fuses - first);
        std::fill_n(zeros_.begin() + static_cast<std::ptrdiff_t>(first), count, true);
    }

    void TakeArea(const Words& words) {
        const std::size_t address = Natural(words[1], 2047), width = Natural(words[2], 4096);
        const bool inOrder = Now().Areas.empty() || Now().Areas.back().Address < address;
        Require(address % 256 == 0 && width > 0 && inOrder, "areas begin at multiples of 256, in order");
        Now().Areas.push_back({address, width});
    }

    void TakeProgram(const Words& words) {
        ProgramRun run;
        run.FirstFuse = Fuse(words[1]);
        run.Count = Natural(words[2], Now().Fuses - run.FirstFuse);
        run.Along = words[0] == "ALONG";
        run.Length = static_cast<std::size_t>(Number(words[3], 1, static_cast<long>(Now().Fuses)));
        run.Address = Natural(words[4], 2047);
        run.Bit = Natural(words[5], 4096);
        Now().Program.push_back(run);
    }

    void Finish() {
        if (devices_.empty()) return;
        Device& device = Now();
        const auto missing = [&](bool there, std::string_view what) {
            if (!there) Fault(device.Name + " lacks " + std::string(what));
        };
        const auto told = [](const Choice& choice) { return !choice.Fuses.empty(); };
        missing(!device.Packages.empty(), "a package");
        missing(special_.size() == 12, "a special function");
        missing(
            std::all_of(device.Terms.begin(), device.Terms.end(), [](auto& t) { return t.Steps[0] != 0; }),
            "a term");
        missing(std::all_of(device.Options.begin(), device.Options.end(), told), "an option");
        missing(std::all_of(device.Settings.begin(), device.Settings.end(), told), "a setting");
        missing(clocks_ == ClockCount && enables_ == EnableCount && cleared_,
                "a clock, an enable or the clear");
        missing(device.SignatureFuse < device.Fuses, "its signature");
        for (Block& block : device.Blocks) FinishBlock(block);
        for (std::size_t fuse = 0; fuse < device.Fuses; ++fuse) {
            if (named_[fuse]) continue;
            device.Reserved.push_back(fuse);
            device.ReservedStates.push_back(!zeros_[fuse]);
        }
        CheckProgram();
    }

    static void FinishBlock(Block& block) {
        auto& switches = block.Switches;
        std::sort(switches.begin(), switches.end(),
                  [](const Switch& a, const Switch& b) { return a.TrueColumn < b.TrueColumn; });
        bool whole = switches.size() == BlockSwitches;
        for (std::size_t i = 0; whole && i < BlockSwitches; ++i)
            whole = switches[i].TrueColumn / 2 == BlockCells / 2 + i;
        if (!whole) Fault(std::string("block ") + block.Name + " does not have a switch for each column");
    }

    // Reserved fuses that are 0 need no place.
    void CheckProgram() {
        std::set<std::pair<std::size_t, std::size_t>> taken;
        const auto places = Now().ProgramPlaces();
        for (std::size_t fuse = 0; fuse < places.size(); ++fuse) {
            const auto [address, bit] = places[fuse];
            if (address == WordPlace::Nowhere && zeros_[fuse]) continue;
            if (bit >= Now().WordWidth(address) || !taken.emplace(address, bit).second)
                Fault("fuse " + std::to_string(fuse) + " of " + Now().Name +
                      " is programmed nowhere, or where another is");
        }
    }

    std::vector<Device> devices_;
    std::vector<bool> named_, zeros_;
    std::set<std::string> special_;
    std::size_t clocks_ = 0, enables_ = 0, nextSwitch_ = 0;
    bool cleared_ = false;
};

}  // namespace

std::vector<Device> ReadDevices(std::string_view text) { return Reader().Read(text); }

}  // namespace cpld
