#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fit/Fitter.h"

namespace fit {

// What a JEDEC file tells beside the fuses.
struct JedecNotes {
    std::vector<std::pair<std::string, std::string>>
        Header;                         // keyword and text of the design's header, in order
    bool Secure = false;                // "g": the security fuse is to be programmed (G1)
    std::vector<std::string> Places{};  // N fields: where names went, as model::PlaceNote tells
};

// The fuse map as JESD3-C: STX, design specification with the header, QP, QF, G, F0, L fields (rows that hold
// a 1), C fuse checksum, ETX, transmission checksum. Lines end CR LF. Characters that the format reserves or
// does not have ("*", codes below 32 and above 126) become "?". Empty for a fit without fuses.
std::string WriteJedec(const Device& device, const Fit& fit, const JedecNotes& notes);

// Sum of the fuses in groups of eight, the first one the least significant bit; modulo 65536.
std::uint16_t FuseChecksum(const std::vector<bool>& fuses);

}  // namespace fit
