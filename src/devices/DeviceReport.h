#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "devices/clsDeviceDatabase.h"

namespace devices {

// What the database knows of a device, as the report shows it. Null fields are empty.
struct DeviceFacts {
    struct Pin {
        std::string Number;  // or a name
        std::string Name;    // its function
    };

    bool HasMnemonic = false;  // the three fields below
    std::string Mnemonic;
    std::string PinCount;
    std::string SpecialOptions;
    std::vector<std::string> AlternatePartNumbers;
    std::vector<std::string> RelatedMnemonics;
    std::vector<Pin> Pins;
    std::string Notes;
};

// Nothing of it without an open database. Throws base::RunTimeError with the engine's words.
DeviceFacts ReadDeviceFacts(clsDeviceDatabase& database, std::int32_t deviceKey);

// Lines end CR LF; the notes stand at the end as they are.
std::string DeviceReport(const DeviceFacts& facts);

}  // namespace devices
