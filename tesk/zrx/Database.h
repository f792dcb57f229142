#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fit/Device.h"

// The partitioner's device library, zrxlib.db. Integers are little-endian:
//
//   0   2   number of devices, signed
//   4   24  for each device: 20 bytes name, ended by a NUL; 4 bytes position of its data, signed
//
// and at the position of a device's data
//
//   20  2   package pins                     the editor of the library rewrites bytes 18 to 23 with figures
//   of 24  2   cost                             its own, so that nothing that is read here may lie there 28
//   2   power 30  2   bytes of the text behind it; 0: limits not known 32      the device's record of the
//   compiler's device library, from DEVICE to before the next
namespace zrx {

struct DeviceRecord {
    std::string Name;
    std::int16_t Pins = 0;
    std::int16_t Cost = 0;   // estimate, 100: a P16L8
    std::int16_t Power = 0;  // estimate of the supply current, mA
    std::string Text;        // empty: limits not known
};

struct DatabaseLimits {
    static constexpr std::size_t FileBytes = 8u << 20;
    static constexpr std::size_t Devices = 2000;
};

std::string WriteDatabase(const std::vector<DeviceRecord>& records);

struct Database {
    std::vector<DeviceRecord> Records;
    std::string Error;  // empty: sound

    const DeviceRecord* Find(std::string_view name) const;  // in any case of letters; null if it is not there
};

// Takes any bytes.
Database ReadDatabase(std::string_view bytes);

// The limits of a device; nothing if they are not known.
std::optional<fit::Device> LimitsOf(const DeviceRecord& record);

}  // namespace zrx
