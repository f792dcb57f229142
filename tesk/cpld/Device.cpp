#include "cpld/Device.h"

#include <algorithm>

#include "base/Text.h"

namespace cpld {

std::size_t FuseRow::Of(std::size_t cellOfBlock) const {
    const auto cell = static_cast<std::ptrdiff_t>(cellOfBlock);
    return First + static_cast<std::size_t>((cell + 1) / 2 * Steps[0] + cell / 2 * Steps[1]);
}

int Package::PadAt(int pin) const {
    const auto found = pin > 0 ? std::find(Pins.begin(), Pins.end(), pin) : Pins.end();
    return found == Pins.end() ? -1 : static_cast<int>(found - Pins.begin());
}

const Package* Device::FindPackage(std::string_view suffix) const {
    if (suffix.empty()) return &Packages.front();
    const auto found = std::find_if(Packages.begin(), Packages.end(), [&](const Package& package) {
        return base::EqualNoCase(package.Suffix, suffix);
    });
    return found == Packages.end() ? nullptr : &*found;
}

bool Device::IsJtagPad(std::size_t pad) const {
    return pad == Special.Tdi || pad == Special.Tms || pad == Special.Tck || pad == Special.Tdo;
}

std::vector<WordPlace> Device::ProgramPlaces() const {
    std::vector<WordPlace> places(Fuses);
    for (const ProgramRun& run : Program) {
        for (std::size_t i = 0; i < run.Count; ++i) {
            const std::size_t across = i / run.Length, along = i % run.Length;
            places[run.FirstFuse + i] = {run.Address + (run.Along ? across : along),
                                         run.Bit - (run.Along ? along : across)};
        }
    }
    return places;
}

std::size_t Device::WordWidth(std::size_t address) const {
    std::size_t width = 0;
    for (const ProgramArea& area : Areas)
        if (area.Address <= address && address < area.Address + 256) width = area.Width;
    return width;
}

std::string Device::NameOf(Signal signal) const {
    if (signal.Is == Signal::Kind::Ground) return "GND";
    if (signal.Is == Signal::Kind::Pad) return Pads[signal.Index];
    return "MC" + std::to_string(signal.Index + 1);
}

const Device* FindDevice(const std::vector<Device>& devices, std::string_view name) {
    const auto found = std::find_if(devices.begin(), devices.end(),
                                    [&](const Device& device) { return device.Name == name; });
    return found == devices.end() ? nullptr : &*found;
}

}  // namespace cpld
