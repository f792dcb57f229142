#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/FileSystem.h"

// The partitioner's device library zrxlib.db, as far as its editor knows it. Integers are little-endian: the
// number of devices (2 bytes, 2 more unused), for each device 20 bytes of a name ended by a NUL and 4 bytes
// of the position of its data, and at 20, 24 and 28 of the data its figures of 16 bits.
namespace partitioner {

struct ZrxDevice {
    std::string Name;
    std::int32_t DataOffset = 0;
    std::array<std::int16_t, 3> Figures{};
};

// Error 9 if it lists no device (a missing file is made, empty), 5 for a name without its end, 62 if the file
// is cut off.
std::vector<ZrxDevice> LoadDevices(platform::FileSystem& files, const std::string& path);

// Name, third and second figure.
std::string DeviceEntry(const ZrxDevice& device);

// Writes the figures of 61 devices, not where they were read from (kept: the libraries don't look there). The
// file as it was before goes into the same name with .bak. Error 9, with what there is written, for fewer.
void UpdateDevices(platform::FileSystem& files, const std::string& path,
                   const std::vector<ZrxDevice>& devices);

}  // namespace partitioner
