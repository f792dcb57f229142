#pragma once

#include <string>

#include "platform/FileSystem.h"

namespace platform::qt {

// Where the program keeps what is the user's but no setting: $XDG_STATE_HOME/korvane, by default below
// ~/.local/state. A logic path with final backslash; the folder need not exist.
std::string StateFolder(const FileSystem& files);

}  // namespace platform::qt
