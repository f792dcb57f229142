#pragma once

#include <QString>
#include <string_view>

namespace platform::qt {

// A text of the data as it is shown: bytes that are no UTF-8 are replaced.
QString Shown(std::string_view text);

// A text of the data, such as a file's or a tool's name, as the caption of an entry or a button: an "&" is
// shown and marks no access key, control characters are blanks.
QString CaptionOf(std::string_view text);

// The same as a line of a list, which shows an "&" as it is.
QString LineOf(std::string_view text);

// The same as a tool tip, which shows every character as it is.
QString TipOf(std::string_view text);

}  // namespace platform::qt
