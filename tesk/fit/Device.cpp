#include "fit/Device.h"

#include <algorithm>

#include "base/Text.h"

namespace fit {

const Cell* Mode::CellAt(int pin) const {
    const auto cell = std::find_if(Cells.begin(), Cells.end(), [&](const Cell& c) { return c.Pin == pin; });
    return cell == Cells.end() ? nullptr : &*cell;
}

int Mode::InputColumn(int pin) const {
    const auto input =
        std::find_if(Inputs.begin(), Inputs.end(), [&](const auto& i) { return i.first == pin; });
    return input == Inputs.end() ? -1 : input->second;
}

const Device* Library::Find(std::string_view mnemonic) const {
    const auto same = [&](const Device& d) { return base::EqualNoCase(d.Mnemonic, mnemonic); };
    const auto device = std::find_if(Devices.begin(), Devices.end(), same);
    return device == Devices.end() ? nullptr : &*device;
}

}  // namespace fit
