#pragma once

#include <string>

#include "session/App.h"

namespace shell {

// Shows `file` in a companion tool: in the one that runs, else in one that is started with it. Panel 1 tells
// meanwhile.
void LaunchTool(session::App& app, const std::string& tool, const std::string& file);

// The standard tool of that index: the one that runs comes forward, a companion into its quarter of the
// screen; else it is started. Silent if it is not installed.
void ActivateTool(session::App& app, int index);

// Wavrik, Stavrik and Schematic into three quarters of the screen, started if need be, each with its file of
// the project. The fourth, at the top left, is frmMain's.
void TileCompanions(session::App& app);
platform::ScreenSize HalfScreen(const platform::Windows& screen);

// Asks the standard tools that this program started to close. Companions stay open.
void CloseTools(session::App& app);

// Starts the program of a tool, a further copy if it runs. A box tells if that fails.
void StartUtility(session::App& app, const std::string& program);

// The choice of a tool in the Utilities menu, by its caption: a further copy of a standard tool, else the
// first custom tool of that name.
void RunUtility(session::App& app, session::Document& document, const std::string& caption);

}  // namespace shell
