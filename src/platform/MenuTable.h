#pragma once

#include <span>

namespace platform {

enum MenuFlags : unsigned {
    menuHidden = 1,
    menuDisabled = 2,   // stays disabled: no command exists
    menuChecked = 4,    // can carry a check mark, and starts with it
    menuCheckable = 8,  // can carry a check mark
    menuToMain = 16,    // a document's entry that forwards to the same-named command of frmMain
};

// One entry of a window's menu. The table is read from top to bottom; an entry is part of the nearest entry
// above it with a lower level. A caption "-" is a separator.
struct MenuRow {
    int Level;            // 0: in the menu bar
    const char* Name;     // control name
    const char* Caption;  // with & before the access key
    const char* Shortcut = "";
    unsigned Flags = 0;
    int Count = 0;       // > 0: an array of that many entries
    int FirstIndex = 0;  // of the array
};

using MenuTable = std::span<const MenuRow>;

}  // namespace platform
