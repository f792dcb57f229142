#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/Dialogs.h"
#include "platform/System.h"
#include "session/Symbols.h"

namespace editor {

// What the scan needs of the program around it.
struct SymbolDesk {
    platform::System& Desktop;
    platform::Dialogs& Boxes;
    std::function<void(const std::string& text)> ShowStatus;  // panel 1 of the status bar
};

// Adds the names that a design (line ends CR LF) declares behind `Pin`, `Node` and `Field` to `symbols`; what
// is there stays. A bad list is told in a box and the scan goes on (`text` must outlast the box: a copy, not
// the control's view). What it found before an error stays. Errors: 5 for a declaration without a line end
// behind it and for a range without a name before its number, 6 for a range whose number has no 32 bits, 7
// for too many names.
void LoadSymbols(const SymbolDesk& desk, std::string_view text, session::Symbols& symbols);

// `mnuMacroSym`: empties the list, then LoadSymbols.
void ResetSymbols(const SymbolDesk& desk, std::string_view text, session::Symbols& symbols);

// Adds the names of one declaration: a name, or a list in brackets.
void AddSymbols(std::string_view declaration, session::Symbols& symbols, platform::Dialogs& boxes);

}  // namespace editor
