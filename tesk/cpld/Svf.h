#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "cpld/Device.h"

// Programs of JTAG players (Serial Vector Format) that write and read these devices.
namespace cpld {

struct SvfOptions {
    std::string Title;         // of the first comment
    bool WithoutJtag = false;  // the user's word for a map that gives the JTAG pins away
};

// Checks the identification, erases, programs every word and verifies it. The words of the arming switch and
// then of JTAG pins and read protection come last. A map that turns the JTAG pins into ordinary ones, and so
// lets nobody program the device in its circuit again, throws base::RunTimeError without `WithoutJtag`.
std::string WriteSvf(const Device& device, const std::vector<bool>& fuses, const SvfOptions& options);

struct SvfMap {
    const Device* Of = nullptr;  // one of the devices
    std::vector<bool> Fuses;
};

// The fuses that a player would program. Takes any bytes; throws base::RunTimeError with the line for what is
// no SVF, is cut, or does something else than program one of these devices.
SvfMap ReadSvf(std::string_view text, const std::vector<Device>& devices);

}  // namespace cpld
