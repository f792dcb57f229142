#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "sim/Run.h"

namespace sim {

// The vectors of a run as a JEDEC file (JESD3-C) tells them: one character a pin, pin 1 first. Pins that the
// design does not use are N, used ones that are not in ORDER are X; what the simulation computed stands for L
// H Z and *.
std::vector<std::string> PinVectors(const AbsDesign& design, const SiFile& file, const RunResult& run);

// Puts the vectors into a JEDEC text: old QV and V fields go, new ones stand before the end of text, and the
// transmission checksum is that of the new text. Empty, with a message, if the text has no frame (STX … ETX).
std::string AppendVectors(std::string_view jedec, const std::vector<std::string>& vectors, MessageLog& log);

}  // namespace sim
