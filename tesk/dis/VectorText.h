#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "dis/DesignText.h"
#include "proof/JedecFile.h"

namespace dis {

// The vectors of a fuse file as a .SI for the design made from it, whose header is given; empty if the file
// has none. Conditions that the simulator has no words for become N, with a message.
std::string VectorText(std::string_view header, const proof::JedecFile& file, const Programmed& chip,
                       const Naming& naming, std::vector<Message>& messages);

}  // namespace dis
