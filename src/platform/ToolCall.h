#pragma once

#include <string>

#include "platform/Host.h"

namespace platform {

// Calls `entry` of a loaded library and gives its result. What goes wrong is told in a box, which names the
// library, and gives 0.
std::int32_t CallTool(Host& host, ToolLibraries::Module module, const std::string& library,
                      const std::string& entry, std::span<std::uint8_t> record);

}  // namespace platform
