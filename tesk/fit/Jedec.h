#pragma once

#include <string>
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

// The file of a fit; empty for one without fuses.
std::string WriteJedec(const Device& device, const Fit& fit, const JedecNotes& notes);

}  // namespace fit
