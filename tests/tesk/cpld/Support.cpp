#include "Support.h"

#include "base/PosixFile.h"

namespace test {

using namespace cpld;

const std::string& LibraryText() {
    static const std::string text = base::ReadWhole(CPLDS_DL, 1u << 20);
    return text;
}

const std::vector<Device>& Devices() {
    static const auto devices = ReadDevices(LibraryText());
    return devices;
}

namespace {

template <typename Record, typename Options>
void SetAny(Record& record, Options options, std::mt19937& random) {
    for (const auto& option : options)
        option.Set(record, static_cast<unsigned>(random() % option.Values.size()));
}

Term AnyTerm(std::mt19937& random) {
    if (random() % 3 == 0) return NeverTerm();
    Term term;
    for (std::size_t i = random() % 6; i > 0; --i) term.set(random() % TermColumns);
    return term;
}

int AnySignal(const std::vector<Signal>& signals, std::mt19937& random) {
    return static_cast<int>(random() % (signals.size() + 1)) - 1;
}

}  // namespace

Configuration RandomConfiguration(const Device& device, std::mt19937& random) {
    Configuration any = EmptyConfiguration(device);
    for (Cell& cell : any.Cells) {
        SetAny(cell, CellOptions(), random);
        if (cell.TermPower == Switched::On)
            for (Term& term : cell.Terms) term = AnyTerm(random);
    }
    SetAny(any.Settings, DeviceSettings(), random);
    for (std::size_t block = 0; block < device.Blocks.size(); ++block)
        for (std::size_t i = 0; i < BlockSwitches; ++i)
            any.Switches[block][i] = AnySignal(device.Blocks[block].Switches[i].Signals, random);
    any.InvertClear = random() % 2 == 0;
    for (std::size_t i = 0; i < ClockCount; ++i) {
        const auto& signals = device.Clocks[i].Signals;
        do any.Clocks[i] = {static_cast<int>(random() % signals.size()), random() % 2 == 0};
        while (signals[static_cast<std::size_t>(any.Clocks[i].Signal)].Is == Signal::Kind::Ground);
    }
    for (std::size_t i = 0; i < EnableCount; ++i)
        any.Enables[i] = {AnySignal(device.Enables[i].Signals, random), random() % 2 == 0};
    any.Signature = static_cast<std::uint16_t>(random());
    return any;
}

}  // namespace test
