#pragma once

#include <string>
#include <string_view>

#include "sim/Run.h"

namespace sim {

// The .SO text: the design's header, the listing (the numbered .SI text with its messages under the lines) if
// asked for, the messages that belong to no line, the names of the columns from top to bottom, and the
// vectors with the computed values: "0001: 1C LLHH", under it a line for each mismatch. Lines end CR LF.
std::string WriteSo(const AbsDesign& design, const SiFile& file, const RunResult& run,
                    const std::vector<Message>& messages, std::string_view siText, bool listing);

}  // namespace sim
