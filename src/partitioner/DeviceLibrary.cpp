#include "partitioner/DeviceLibrary.h"

#include <algorithm>
#include <string_view>

#include "base/Number.h"
#include "base/RunTimeError.h"
#include "base/Text.h"

namespace partitioner {
namespace {

constexpr std::int64_t indexAt = 4;
constexpr std::size_t nameSize = 20;
constexpr std::int64_t entrySize = 24;
constexpr std::int64_t figuresAt = 20;  // from here on they are read, one in 4 bytes,
constexpr std::int64_t writtenAt = 18;  // and from here on written, one in 2
constexpr std::size_t updated = 61;     // devices

constexpr int errPastEnd = 62;

// Reads at positions that the file itself tells.
class Reader {
  public:
    explicit Reader(std::string_view bytes) : bytes_(bytes) {}

    std::string_view Bytes(std::int64_t at, std::size_t count) const {
        if (at < 0 || at + static_cast<std::int64_t>(count) > static_cast<std::int64_t>(bytes_.size()))
            throw base::RunTimeError(errPastEnd, "The device library is cut off or damaged.");
        return bytes_.substr(static_cast<std::size_t>(at), count);
    }
    std::int16_t Int16(std::int64_t at) const { return static_cast<std::int16_t>(Number(at, 2)); }
    std::int32_t Int32(std::int64_t at) const { return static_cast<std::int32_t>(Number(at, 4)); }

  private:
    std::uint32_t Number(std::int64_t at, std::size_t count) const {
        std::uint32_t value = 0;
        for (std::size_t i = count; i-- > 0;)
            value = value << 8 | static_cast<std::uint8_t>(Bytes(at, count)[i]);
        return value;
    }

    std::string_view bytes_;
};

std::string NameAt(const Reader& file, std::int64_t at) {
    const std::string_view field = file.Bytes(at, nameSize);
    const auto end = field.find('\0');
    if (end == field.npos)
        throw base::RunTimeError(base::errInvalidCall, "A device name in the library has no end.");
    return std::string(field.substr(0, end));
}

std::string WithFigures(std::string bytes, const std::vector<ZrxDevice>& devices) {
    for (std::size_t i = 0; i < std::min(devices.size(), updated); ++i) {
        auto at = static_cast<std::size_t>(devices[i].DataOffset + writtenAt);
        bytes.resize(std::max(bytes.size(), at + 2 * devices[i].Figures.size()));
        for (const std::int16_t figure : devices[i].Figures) {
            bytes[at++] = static_cast<char>(figure & 0xFF);
            bytes[at++] = static_cast<char>(figure >> 8 & 0xFF);
        }
    }
    return bytes;
}

// A copy that differs only in what is written here is of before an earlier update and stays: it has the
// figures in their places.
void KeepCopy(platform::FileSystem& files, const std::string& copy, const std::string& bytes,
              const std::string& updatedBytes, const std::vector<ZrxDevice>& devices) {
    if (files.FileExists(copy) && WithFigures(files.ReadFile(copy), devices) == updatedBytes) return;
    files.WriteFile(copy, bytes);
}

}  // namespace

std::vector<ZrxDevice> LoadDevices(platform::FileSystem& files, const std::string& path) {
    if (!files.FileExists(path)) files.WriteFile(path, "");
    const std::string bytes = files.ReadFile(path);
    const Reader file(bytes);
    const int count = bytes.empty() ? 0 : file.Int16(0);
    if (count <= 0)
        throw base::RunTimeError(base::errSubscript, "The device library " + path + " lists no devices.");
    std::vector<ZrxDevice> devices;
    for (std::int64_t i = 0; i < count; ++i) {
        const std::int64_t at = indexAt + entrySize * i;
        ZrxDevice& device = devices.emplace_back();
        device.Name = NameAt(file, at);
        device.DataOffset = file.Int32(at + static_cast<std::int64_t>(nameSize));
        std::int64_t figure = device.DataOffset + figuresAt;
        file.Bytes(figure - figuresAt + writtenAt, 1);
        for (std::int16_t& value : device.Figures) {
            value = file.Int16(figure);
            figure += 4;
        }
    }
    return devices;
}

std::string DeviceEntry(const ZrxDevice& device) {
    return base::PadRight(device.Name, nameSize) + std::to_string(device.Figures[2]) + "   " +
           std::to_string(device.Figures[1]);
}

void UpdateDevices(platform::FileSystem& files, const std::string& path,
                   const std::vector<ZrxDevice>& devices) {
    const std::string bytes = files.ReadFile(path);
    const std::string updatedBytes = WithFigures(bytes, devices);
    KeepCopy(files, path + ".bak", bytes, updatedBytes, devices);
    files.WriteFile(path, updatedBytes);
    if (devices.size() < updated) {
        throw base::RunTimeError(base::errSubscript, "The device library has fewer than " +
                                                         std::to_string(updated) +
                                                         " devices. The figures of those are written.");
    }
}

}  // namespace partitioner
