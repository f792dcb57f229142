#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/Host.h"

namespace shell {

// A value as text: a text without a final NUL, a number in signed decimal figures. Nothing for a value that
// is not there or has more than 1024 bytes.
std::optional<std::string> ReadKeyValue(platform::Registry& settings, std::string_view key,
                                        std::string_view name);

// Starts the program that tells about the machine, and does not wait. A box says so if there is none.
void StartSysInfo(platform::Host& host);

}  // namespace shell
