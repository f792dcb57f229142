#include <algorithm>
#include <cstdio>

#include "devpage/DevicePage.h"

namespace devpage {
namespace {

std::string Uses(const cpld::Device& device, std::size_t pad) {
    const auto& special = device.Special;
    std::string text;
    const auto add = [&](std::size_t which, const std::string& name) {
        if (which == pad) text += (text.empty() ? "`" : ", `") + name + "`";
    };
    for (std::size_t i = 0; i < special.Clocks.size(); ++i)
        add(special.Clocks[i], "CLK" + std::to_string(i + 1));
    add(special.Clear, "CLR");
    for (std::size_t i = 0; i < special.Enables.size(); ++i)
        add(special.Enables[i], "OE" + std::to_string(i + 1));
    for (std::size_t i = 0; i < special.PowerDown.size(); ++i)
        add(special.PowerDown[i], "PD" + std::to_string(i + 1));
    add(special.Tdi, "TDI");
    add(special.Tms, "TMS");
    add(special.Tck, "TCK");
    add(special.Tdo, "TDO");
    return text;
}

std::string PinTable(const cpld::Device& device) {
    std::string head = "| macrocell | block | also", rule = "| --- | --- | ---";
    for (const auto& package : device.Packages) {
        head += " | " + package.Suffix;
        rule += " | ---";
    }
    std::string text = head + " |\n" + rule + " |\n";
    for (std::size_t pad = 0; pad < device.Pads.size(); ++pad) {
        const bool isCell = pad < device.CellCount();
        text += "| " + (isCell ? std::to_string(pad + 1) : "input only") + " | " +
                (isCell ? std::string(1, device.BlockOf(pad).Name) : "") + " | " + Uses(device, pad);
        for (const auto& package : device.Packages) {
            const int pin = package.Pins[pad];
            text += " | " + (pin == 0 ? "buried" : std::to_string(pin));
        }
        text += " |\n";
    }
    return text;
}

}  // namespace

std::string ComplexPage(const std::vector<cpld::Device>& devices) {
    std::string page;
    for (const auto& device : devices) {
        char identification[16];
        std::snprintf(identification, sizeof identification, "%08X", static_cast<unsigned>(device.IdCode));
        page += "\n## " + device.Name + "\n\n" + std::to_string(device.CellCount()) + " macrocells of " +
                std::to_string(cpld::CellTerms) + " terms in " + std::to_string(device.Blocks.size()) +
                " blocks, each of which reads " + std::to_string(cpld::BlockSwitches) + " signals;\n" +
                std::to_string(device.Fuses) + " fuses; JTAG identification `" + identification +
                "`. A `PINNODE` takes the number of the macrocell.\nThe pins of each package:\n\n" +
                PinTable(device);
    }
    return page;
}

}  // namespace devpage
