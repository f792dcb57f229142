#pragma once

#include <QString>
#include <string>

namespace toolchain {

// A tool's text for one line of a window: cut at `maxBytes`, line ends and other control characters as
// blanks, bytes that are no UTF-8 as replacement characters.
QString DisplayLine(const std::string& text, std::size_t maxBytes);

}  // namespace toolchain
