#pragma once

#include "sim/SiFile.h"
#include "sim/SiLines.h"

namespace sim {

// Reads up to VECTORS: and compares the header with the design's. `rest` is what stands behind VECTORS: in
// its line. False, with messages, if there is nothing to read vectors by.
bool ReadHead(SiLines& lines, const AbsDesign& design, MessageLog& log, SiHead& head, std::string& rest);

}  // namespace sim
