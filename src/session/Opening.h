#pragma once

#include <string>

#include "session/App.h"

namespace session {

// Makes WorkDir the current directory if it exists.
void EnterWorkDir(App& app);

// Opens a file that the user chose, unless a window with exactly this caption is open: that is told. Kept:
// case counts, so a path chosen in mixed case opens a second window.
void OpenUnlessOpen(App& app, const std::string& path);

}  // namespace session
