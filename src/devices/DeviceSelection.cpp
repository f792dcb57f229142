#include "devices/DeviceSelection.h"

#include <set>

#include "base/Text.h"
#include "devices/DeviceQueries.h"

namespace devices {
namespace {

ListItem ReadItem(const platform::Recordset& row, const char* text, const char* key) {
    return {row.Text(text).value_or(""), row.Number(key).value_or(0)};
}

std::vector<ListItem> ReadItems(clsDeviceDatabase::Recordset rows) {
    std::vector<ListItem> items;
    for (; rows && !rows->IsEof(); rows->MoveNext()) items.push_back(ReadItem(*rows, "Name", "PKey"));
    return items;
}

}  // namespace

std::vector<ListItem> ManufacturerItems(clsDeviceDatabase& database) {
    return ReadItems(database.GetListManufacturers());
}

std::vector<ListItem> PackageItems(clsDeviceDatabase& database) {
    return ReadItems(database.GetListPackages());
}

std::vector<ListItem> DeviceItems(clsDeviceDatabase& database, std::optional<std::int32_t> manufacturerKey,
                                  std::optional<std::int32_t> packageKey) {
    std::vector<ListItem> items;
    if (!manufacturerKey || !packageKey) return items;
    std::set<std::int32_t> seen;
    const auto rows = database.rsOpen(DevicesQuery(*manufacturerKey, *packageKey));
    for (; rows && !rows->IsEof(); rows->MoveNext()) {
        ListItem item = ReadItem(*rows, "DeviceName", "DeviceKey");
        if (!seen.insert(item.Key).second) continue;
        item.Text = base::Trim(item.Text);
        items.push_back(std::move(item));
    }
    return items;
}

// Shorter than a mnemonic: "&", or none yet.
bool IsDeviceInFile(const std::string& deviceName) { return deviceName.size() < 2; }

std::string ChosenDeviceName(clsDeviceDatabase& database, const std::string& deviceName, bool isDeviceInFile,
                             std::optional<std::int32_t> selectedDevice) {
    if (isDeviceInFile) return "&";
    return selectedDevice ? database.GetMnemonic(*selectedDevice) : deviceName;
}

}  // namespace devices
