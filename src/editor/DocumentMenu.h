#pragma once

#include "platform/MenuTable.h"

namespace editor {

// The menu of every document window.
platform::MenuTable DocumentMenu();

}  // namespace editor
