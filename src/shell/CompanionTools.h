#pragma once

#include <string>

#include "session/App.h"

namespace shell {

// Shows `file` in a companion tool, which is started with it. Panel 1 tells meanwhile.
void LaunchTool(session::App& app, const std::string& tool, const std::string& file);

// Starts the standard tool of that index and keeps its process id. Silent if it is not installed.
void ActivateTool(session::App& app, int index);

// Asks the standard tools that this program started to close. Companions stay open.
void CloseTools(session::App& app);

// The choice of a tool in the Utilities menu, by its caption: a further copy of a standard tool, else the
// first custom tool of that name.
void RunUtility(session::App& app, const std::string& caption);

}  // namespace shell
