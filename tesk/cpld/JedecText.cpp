#include "cpld/JedecText.h"

#include <algorithm>

namespace cpld {
namespace {

// In the order of the pins.
std::vector<std::string> PinNotes(const Package& package, const DesignNames& names) {
    std::vector<std::string> notes;
    for (int pin = 1; pin <= package.PinCount; ++pin) {
        const int pad = package.PadAt(pin);
        if (pad < 0 || static_cast<std::size_t>(pad) >= names.Pads.size()) continue;
        const auto& name = names.Pads[static_cast<std::size_t>(pad)];
        if (!name.empty()) notes.push_back(model::WritePlaceNote({pin, false, false, name}));
    }
    return notes;
}

}  // namespace

model::JedecMap JedecMapOf(const Device& device, std::vector<bool> fuses, const DesignNames& names) {
    const Package* package = device.FindPackage(names.Package);
    model::JedecMap map;
    map.Device = device.Name + (names.Package.empty() ? "" : package->Suffix);
    map.Notes.push_back("DEVICE " + map.Device);
    const auto pins = PinNotes(*package, names);
    map.Notes.insert(map.Notes.end(), pins.begin(), pins.end());
    map.Pins = package->PinCount;
    map.Fuses = std::move(fuses);
    std::size_t array = 0;
    for (const Block& block : device.Blocks)
        array = std::max(array, block.TermShift + BlockCells * CellTerms * TermColumns);
    map.Lines = {{array, TermColumns}};
    return map;
}

const Device* DeviceOfFuses(const std::vector<Device>& devices, std::size_t fuses) {
    const auto found = std::find_if(devices.begin(), devices.end(),
                                    [&](const Device& device) { return device.Fuses == fuses; });
    return found == devices.end() ? nullptr : &*found;
}

}  // namespace cpld
