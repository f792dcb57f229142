#pragma once

#include "fit/ModeFit.h"

namespace fit {

// The fuses of a mode that a design was fitted into, FUSE statements included. Statements that the device has
// no fuse for go to the messages.
std::vector<bool> MakeFuseMap(const Device& device, const Mode& mode, const Needs& needs, const ModeFit& fit,
                              std::vector<Message>& messages);

}  // namespace fit
