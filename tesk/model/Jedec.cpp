#include "model/Jedec.h"

#include "base/Text.h"

namespace model {

std::string FuseNumber(std::size_t fuse) { return base::PadLeft(std::to_string(fuse), 5, '0'); }
std::string VectorNumber(std::size_t vector) { return base::PadLeft(std::to_string(vector), 4, '0'); }

std::string Checksum(unsigned sum) {
    std::string digits;
    for (int shift = 12; shift >= 0; shift -= 4) digits += "0123456789ABCDEF"[sum >> shift & 0xF];
    return digits;
}

std::string Transmission(std::string text) {
    unsigned sum = 0;
    for (const char c : text) sum += static_cast<unsigned char>(c);
    return std::move(text) + Checksum(sum) + "\r\n";
}

}  // namespace model
