#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "devices/clsDeviceDatabase.h"

// What the device dialog shows and hands back, as values. Each throws base::RunTimeError with the engine's
// words; without an open database the lists are empty.
namespace devices {

// A line of a list box with its data.
struct ListItem {
    std::string Text;
    std::int32_t Key = 0;
    bool operator==(const ListItem&) const = default;
};

std::vector<ListItem> ManufacturerItems(clsDeviceDatabase& database);
std::vector<ListItem> PackageItems(clsDeviceDatabase& database);

// Each device once, whatever the number of libraries that carry it; blanks cut. Nothing while one of the two
// lists has no selection.
std::vector<ListItem> DeviceItems(clsDeviceDatabase& database, std::optional<std::int32_t> manufacturerKey,
                                  std::optional<std::int32_t> packageKey);

// How chkDevInFile opens.
bool IsDeviceInFile(const std::string& deviceName);

// The DeviceName that OK leaves behind.
std::string ChosenDeviceName(clsDeviceDatabase& database, const std::string& deviceName, bool isDeviceInFile,
                             std::optional<std::int32_t> selectedDevice);

}  // namespace devices
