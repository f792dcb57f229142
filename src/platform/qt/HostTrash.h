#pragma once

#include <string>

namespace platform::qt {

// Moves a file to the desktop's trash: that of its own disk, or where there is none a copy of it to the
// user's. Throws base::RunTimeError, 75 if there is no trash.
void MoveToTrash(const std::string& hostPath);

}  // namespace platform::qt
