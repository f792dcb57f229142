#include <cstdint>
#include <cstdlib>
#include <string>

#include "base/RunTimeError.h"
#include "cpld/FuseMap.h"
#include "cpld/ReadBack.h"
#include "cpld/Svf.h"
#include "tesk/cpld/Support.h"

namespace {

using namespace cpld;

using test::Devices;
using test::LibraryText;

// Three bytes of a place and one that is put there, inserted or taken out.
std::string Edited(std::string text, const std::uint8_t* data, std::size_t size) {
    for (; size >= 4; data += 4, size -= 4) {
        const auto number = static_cast<unsigned>(data[0] | data[1] << 8 | (data[2] & 15) << 16);
        const std::size_t place = number % (text.size() + 1);
        if (data[2] >> 6 == 0)
            text.insert(place, 1, static_cast<char>(data[3]));
        else if (data[2] >> 6 == 1)
            text.erase(place, data[3]);
        else if (place < text.size())
            text[place] = static_cast<char>(data[3]);
    }
    return text;
}

// A player's program that is taken is written and taken again.
void TrySvf(const std::string& text) {
    const SvfMap map = ReadSvf(text, Devices());
    if (ReadSvf(WriteSvf(*map.Of, map.Fuses, {"", true}), Devices()).Fuses != map.Fuses) std::abort();
}

// Fuses are what their configuration writes, and read back for every package.
void TryFuses(const Device& device, const std::uint8_t* data, std::size_t size) {
    auto fuses = WriteFuses(device, EmptyConfiguration(device));
    for (; size >= 2; data += 2, size -= 2) {
        const std::size_t fuse = static_cast<std::size_t>(data[0] | data[1] << 8) % fuses.size();
        fuses[fuse] = !fuses[fuse];
    }
    const Configuration configuration = ReadConfiguration(device, fuses);
    if (WriteFuses(device, configuration) != fuses) std::abort();
    for (const Package& package : device.Packages)
        if (ReadBack(device, package, configuration).Parts.size() < device.CellCount()) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 1) return 0;
    const Device& device = Devices()[data[0] / 4 % 2];
    static const std::string programs[] = {
        WriteSvf(Devices()[0], WriteFuses(Devices()[0], EmptyConfiguration(Devices()[0])), {}),
        WriteSvf(Devices()[1], WriteFuses(Devices()[1], EmptyConfiguration(Devices()[1])), {})};
    try {
        switch (data[0] % 4) {
            case 0:
                TrySvf({reinterpret_cast<const char*>(data) + 1, size - 1});
                break;
            case 1:
                TrySvf(Edited(programs[data[0] / 4 % 2], data + 1, size - 1));
                break;
            case 2:
                TryFuses(device, data + 1, size - 1);
                break;
            default:
                ReadDevices(Edited(LibraryText(), data + 1, size - 1));
        }
    } catch (const base::RunTimeError&) {
    }
    return 0;
}
