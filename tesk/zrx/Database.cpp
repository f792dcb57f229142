#include "zrx/Database.h"

#include <algorithm>

#include "base/Text.h"

namespace zrx {

namespace {

constexpr std::size_t nameSize = 20;
constexpr std::size_t entrySize = 24;
constexpr std::size_t indexAt = 4;
constexpr std::size_t pinsAt = 20;
constexpr std::size_t costAt = 24;
constexpr std::size_t powerAt = 28;
constexpr std::size_t sizeAt = 30;
constexpr std::size_t textAt = 32;

void Put(std::string& bytes, std::size_t at, std::uint32_t value, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) bytes[at + i] = static_cast<char>(value >> (8 * i) & 0xFF);
}

std::uint32_t Get(std::string_view bytes, std::size_t at, std::size_t count) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < count; ++i)
        value |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[at + i])) << (8 * i);
    return value;
}

std::int16_t Get16(std::string_view bytes, std::size_t at) {
    return static_cast<std::int16_t>(Get(bytes, at, 2));
}

// Empty if the record is sound.
std::string ReadRecord(std::string_view bytes, std::size_t entry, DeviceRecord& record) {
    const std::string_view name = bytes.substr(entry, nameSize);
    const std::size_t end = name.find('\0');
    if (end == name.npos) return "a name without its end";
    record.Name = name.substr(0, end);
    const std::uint32_t at = Get(bytes, entry + nameSize, 4);
    if (at > bytes.size() || bytes.size() - at < textAt)
        return "the data of " + record.Name + " lie behind its end";
    const std::string_view data = bytes.substr(at);
    record.Pins = Get16(data, pinsAt);
    record.Cost = Get16(data, costAt);
    record.Power = Get16(data, powerAt);
    const std::size_t size = Get(data, sizeAt, 2);
    if (data.size() - textAt < size) return "the limits of " + record.Name + " are cut off";
    record.Text = data.substr(textAt, size);
    return {};
}

}  // namespace

std::string WriteDatabase(const std::vector<DeviceRecord>& records) {
    std::string bytes(indexAt + entrySize * records.size(), '\0');
    Put(bytes, 0, static_cast<std::uint32_t>(records.size()), 2);
    for (std::size_t i = 0; i < records.size(); ++i) {
        const DeviceRecord& record = records[i];
        const std::size_t entry = indexAt + entrySize * i;
        std::copy_n(record.Name.begin(), std::min(record.Name.size(), nameSize - 1),
                    bytes.begin() + static_cast<std::ptrdiff_t>(entry));
        Put(bytes, entry + nameSize, static_cast<std::uint32_t>(bytes.size()), 4);
        std::string data(textAt, '\0');
        Put(data, pinsAt, static_cast<std::uint16_t>(record.Pins), 2);
        Put(data, costAt, static_cast<std::uint16_t>(record.Cost), 2);
        Put(data, powerAt, static_cast<std::uint16_t>(record.Power), 2);
        Put(data, sizeAt, static_cast<std::uint32_t>(record.Text.size()), 2);
        bytes += data + record.Text;
    }
    return bytes;
}

const DeviceRecord* Database::Find(std::string_view name) const {
    const auto found = std::find_if(Records.begin(), Records.end(), [&](const DeviceRecord& record) {
        return base::EqualNoCase(record.Name, name);
    });
    return found == Records.end() ? nullptr : &*found;
}

Database ReadDatabase(std::string_view bytes) {
    Database database;
    const std::int16_t count = bytes.size() < indexAt ? std::int16_t{-1} : Get16(bytes, 0);
    const auto devices = static_cast<std::size_t>(std::max<std::int16_t>(count, 0));
    if (count < 0 || devices > DatabaseLimits::Devices || bytes.size() < indexAt + entrySize * devices) {
        database.Error = "its count of devices is wrong, or the file is cut off";
        return database;
    }
    for (std::size_t i = 0; i < devices && database.Error.empty(); ++i)
        database.Error = ReadRecord(bytes, indexAt + entrySize * i, database.Records.emplace_back());
    return database;
}

std::optional<fit::Device> LimitsOf(const DeviceRecord& record) {
    if (record.Text.empty()) return std::nullopt;
    const fit::Library library = fit::ReadLibrary("TESK-DL 1\n" + record.Text + "END\n");
    const fit::Device* device = library.Ok() ? library.Find(record.Name) : nullptr;
    return device == nullptr || device->IsVirtual() ? std::nullopt : std::optional(*device);
}

}  // namespace zrx
