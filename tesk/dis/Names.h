#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "dis/MessageTable.h"

namespace dis {

struct PinName {
    std::string Name;
    bool ActiveLow = false;  // asked for an input; of an output the fuses decide
};
using PinNames = std::map<int, PinName>;

// A pin file: on each line a pin number and a name, in either order, "=" or "," between them or not; "!" or
// "/" before the name for active-low; ";" and "#" begin a comment. Names that the language does not take are
// changed later. Faults go to the messages with their line.
PinNames ReadPinFile(std::string_view text, std::vector<Message>& messages);

// The pins of a design: as it declares them, those without a number where its own device has room for them.
PinNames ReadDesignNames(std::string_view text, std::string_view library, std::vector<Message>& messages);

}  // namespace dis
