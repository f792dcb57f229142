#pragma once

#include <string>

namespace kernel {

// A line of the message list, "[1201ta] Error: TEXT (FILE line 5 column 9)", in the form by which editors and
// build servers jump to a place: "FOLDER/FILE:5:9: error: TEXT [1201ta]". A line without a place gets none.
std::string GnuLine(const std::string& line, const std::string& folder);

}  // namespace kernel
