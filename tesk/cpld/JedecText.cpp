#include "cpld/JedecText.h"

#include <algorithm>
#include <map>

namespace cpld {
namespace {

constexpr std::size_t lineWidth = 100;

// "PIN 4=CLK 5=D0 …", in the order of the pins, as many a line as it takes.
std::vector<std::string> PinNotes(const Package& package, const DesignNames& names) {
    std::map<int, std::string> pins;
    for (std::size_t pad = 0; pad < names.Pads.size(); ++pad)
        if (package.Pins[pad] != 0 && !names.Pads[pad].empty()) pins[package.Pins[pad]] = names.Pads[pad];
    std::vector<std::string> notes;
    for (const auto& [pin, name] : pins) {
        const std::string entry = " " + std::to_string(pin) + "=" + name;
        if (notes.empty() || notes.back().size() + entry.size() > lineWidth) notes.emplace_back("PIN");
        notes.back() += entry;
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
