#pragma once

#include "platform/MenuTable.h"

namespace shell {

// The menu of frmMain, in the bar while no document is active.
platform::MenuTable MainMenu();

}  // namespace shell
