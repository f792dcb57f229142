#pragma once

#include <string_view>
#include <vector>

#include "sim/SiFile.h"

namespace sim {

// Reads the list behind ORDER: entries parted by commas: `name`, `!name` (the mark is read over: vectors are
// pin levels), `%n`, a field, or a list such as [A, B] or [A3..0]. Faults go to the log, their entries are
// left out.
std::vector<OrderItem> ReadOrder(std::string_view text, int line, const AbsDesign& design, MessageLog& log);

}  // namespace sim
