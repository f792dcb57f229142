#pragma once

#include <vector>

#include "session/App.h"

namespace shell {

// The commands mnuImport…: each asks for a foreign design, has its converter write a design beside it and
// opens that.
std::vector<session::MainCommand> ImportCommands(session::App& app);

}  // namespace shell
