#pragma once

#include <string>
#include <vector>

#include "dis/MessageTable.h"
#include "fit/Device.h"
#include "proof/JedecFile.h"

namespace dis {

// The device that a fuse file is for: the one of that mnemonic; if it is empty the one that has as many fuses
// and pins, and among several the one that the file names. Null with a message if there is none, or if
// several stay.
const fit::Device* ChooseDevice(const proof::JedecFile& file, const fit::Library& library,
                                const std::string& mnemonic, std::vector<Message>& messages);

// The device that is nothing but this mode of another one; null if the library has none.
const fit::Device* ForcedMode(const fit::Library& library, const fit::Device& device, const fit::Mode& mode);

}  // namespace dis
