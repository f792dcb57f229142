#include "cpld/FuseMap.h"

#include <algorithm>

#include "base/RunTimeError.h"

namespace cpld {
namespace {

std::size_t FirstFuseOf(const Device& device, std::size_t cell, std::size_t term) {
    return device.BlockOf(cell).TermShift + device.Terms[term].Of(cell % BlockCells);
}

class Writer {
  public:
    Writer(const Device& device, const Configuration& configuration)
        : device_(device), from_(configuration), fuses_(device.Fuses, false) {}

    std::vector<bool> Write() {
        for (std::size_t i = 0; i < device_.Reserved.size(); ++i)
            fuses_[device_.Reserved[i]] = device_.ReservedStates[i];
        for (std::size_t cell = 0; cell < from_.Cells.size(); ++cell) WriteCell(cell);
        WriteOptions(device_.Settings, DeviceSettings(), from_.Settings, 0, 0);
        for (std::size_t block = 0; block < from_.Switches.size(); ++block)
            for (std::size_t i = 0; i < BlockSwitches; ++i) {
                const Switch& into = device_.Blocks[block].Switches[i];
                Choose(into.FirstFuse, into.Signals.size(), from_.Switches[block][i]);
            }
        WriteGlobals();
        for (std::size_t i = 0; i < 16; ++i)
            fuses_[device_.SignatureFuse + i] = (from_.Signature >> (15 - i) & 1) != 0;
        return std::move(fuses_);
    }

  private:
    void WriteCell(std::size_t cell) {
        for (std::size_t term = 0; term < CellTerms; ++term) {
            const std::size_t first = FirstFuseOf(device_, cell, term);
            for (std::size_t column = 0; column < TermColumns; ++column)
                fuses_[first + column] = !from_.Cells[cell].Terms[term][column];
        }
        WriteOptions(device_.Options, CellOptions(), from_.Cells[cell], cell % BlockCells,
                     device_.BlockOf(cell).OptionShift);
    }

    template <typename Record, typename Options>
    void WriteOptions(const std::vector<Choice>& choices, Options options, const Record& from,
                      std::size_t cell, std::size_t shift) {
        for (std::size_t i = 0; i < choices.size(); ++i) {
            const unsigned value = choices[i].Values[options[i].Get(from)];
            for (std::size_t k = 0; k < choices[i].Fuses.size(); ++k)
                fuses_[choices[i].Fuses[k].Of(cell) + shift] = (value >> k & 1) != 0;
        }
    }

    void Choose(std::size_t first, std::size_t count, int signal) {
        for (std::size_t i = 0; i < count; ++i) fuses_[first + i] = static_cast<int>(i) != signal;
    }

    void Invert(const Inverter& inverter, bool on) { fuses_[inverter.Fuse] = on == inverter.On; }

    void WriteGlobals() {
        Invert(device_.ClearInvert, from_.InvertClear);
        for (std::size_t i = 0; i < ClockCount; ++i) {
            const Global& clock = device_.Clocks[i];
            Invert(clock.Invert, from_.Clocks[i].Invert);
            for (std::size_t k = 0; k < clock.Fuses; ++k)
                fuses_[clock.FirstFuse + k] = (from_.Clocks[i].Signal >> k & 1) != 0;
        }
        for (std::size_t i = 0; i < EnableCount; ++i) {
            const Global& enable = device_.Enables[i];
            Invert(enable.Invert, from_.Enables[i].Invert);
            Choose(enable.FirstFuse, enable.Fuses, from_.Enables[i].Signal);
        }
    }

    const Device& device_;
    const Configuration& from_;
    std::vector<bool> fuses_;
};

[[noreturn]] void Unknown(const std::string& what, std::size_t fuse) {
    throw base::RunTimeError(base::errTypeMismatch, what + " (fuse " + std::to_string(fuse) + ")");
}

struct OptionPlace {
    std::size_t Cell = 0, Shift = 0;
    std::string Owner = "the device";
};

template <typename Record, typename Options>
void ReadOptions(const std::vector<bool>& fuses, const std::vector<Choice>& choices, Options options,
                 const OptionPlace& at, Record& into) {
    for (std::size_t i = 0; i < choices.size(); ++i) {
        unsigned value = 0;
        for (std::size_t k = 0; k < choices[i].Fuses.size(); ++k)
            value |= static_cast<unsigned>(fuses[choices[i].Fuses[k].Of(at.Cell) + at.Shift]) << k;
        const auto& values = choices[i].Values;
        const auto found = std::find(values.begin(), values.end(), value);
        if (found == values.end())
            Unknown("no value of " + std::string(options[i].Name) + " of " + at.Owner,
                    choices[i].Fuses[0].Of(at.Cell) + at.Shift);
        options[i].Set(into, static_cast<unsigned>(found - values.begin()));
    }
}

class Reader {
  public:
    Reader(const Device& device, const std::vector<bool>& fuses)
        : device_(device), fuses_(fuses), into_(EmptyConfiguration(device)) {}

    Configuration Read(const Settings& settings) {
        for (std::size_t i = 0; i < device_.Reserved.size(); ++i)
            if (fuses_[device_.Reserved[i]] != device_.ReservedStates[i])
                Unknown("a reserved fuse is changed", device_.Reserved[i]);
        for (std::size_t cell = 0; cell < into_.Cells.size(); ++cell) ReadCell(cell);
        into_.Settings = settings;
        for (std::size_t block = 0; block < into_.Switches.size(); ++block)
            for (std::size_t i = 0; i < BlockSwitches; ++i) {
                const Switch& from = device_.Blocks[block].Switches[i];
                into_.Switches[block][i] = Chosen(from.FirstFuse, from.Signals.size());
            }
        ReadGlobals();
        into_.Signature = 0;
        for (std::size_t i = 0; i < 16; ++i)
            into_.Signature =
                static_cast<std::uint16_t>(into_.Signature << 1 | fuses_[device_.SignatureFuse + i]);
        return std::move(into_);
    }

  private:
    void ReadCell(std::size_t cell) {
        Cell& into = into_.Cells[cell];
        const std::string name = "MC" + std::to_string(cell + 1);
        ReadOptions(fuses_, device_.Options, CellOptions(),
                    {cell % BlockCells, device_.BlockOf(cell).OptionShift, name}, into);
        for (std::size_t term = 0; term < CellTerms; ++term) {
            const std::size_t first = FirstFuseOf(device_, cell, term);
            for (std::size_t column = 0; column < TermColumns; ++column)
                into.Terms[term][column] = !fuses_[first + column];
            if (into.TermPower == Switched::Off && !into.Terms[term].all())
                Unknown(name + " has a term without power", first);
        }
    }

    int Chosen(std::size_t first, std::size_t count) const {
        int chosen = NoSignal;
        for (std::size_t i = 0; i < count; ++i) {
            if (fuses_[first + i]) continue;
            if (chosen != NoSignal) Unknown("two signals are brought to one place", first + i);
            chosen = static_cast<int>(i);
        }
        return chosen;
    }

    bool Inverts(const Inverter& inverter) const { return fuses_[inverter.Fuse] == inverter.On; }

    void ReadGlobals() {
        into_.InvertClear = Inverts(device_.ClearInvert);
        for (std::size_t i = 0; i < ClockCount; ++i) {
            const Global& clock = device_.Clocks[i];
            int value = 0;
            for (std::size_t k = 0; k < clock.Fuses; ++k) value |= fuses_[clock.FirstFuse + k] << k;
            if (clock.Signals[static_cast<std::size_t>(value)].Is == Signal::Kind::Ground)
                Unknown("no signal of GCLK" + std::to_string(i + 1), clock.FirstFuse);
            into_.Clocks[i] = {value, Inverts(clock.Invert)};
        }
        for (std::size_t i = 0; i < EnableCount; ++i) {
            const Global& enable = device_.Enables[i];
            into_.Enables[i] = {Chosen(enable.FirstFuse, enable.Fuses), Inverts(enable.Invert)};
        }
    }

    const Device& device_;
    const std::vector<bool>& fuses_;
    Configuration into_;
};

}  // namespace

std::vector<bool> WriteFuses(const Device& device, const Configuration& configuration) {
    return Writer(device, configuration).Write();
}

Settings ReadSettings(const Device& device, const std::vector<bool>& fuses) {
    if (fuses.size() != device.Fuses)
        throw base::RunTimeError(base::errTypeMismatch, "a map of " + std::to_string(fuses.size()) +
                                                            " fuses, " + device.Name + " has " +
                                                            std::to_string(device.Fuses));
    Settings settings;
    ReadOptions(fuses, device.Settings, DeviceSettings(), {}, settings);
    return settings;
}

Configuration ReadConfiguration(const Device& device, const std::vector<bool>& fuses) {
    const Settings settings = ReadSettings(device, fuses);
    return Reader(device, fuses).Read(settings);
}

}  // namespace cpld
