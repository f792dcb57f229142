#pragma once

#include <string>
#include <vector>

#include "session/App.h"

namespace aids {

// Where a file lies that the document includes: its folder with final backslash; without a file the current
// one.
std::string FolderOf(session::App& app, const session::Document& document);

// After frmMacroDef: what lies on the clipboard into the text. A library file that it includes is copied
// beside the design unless a file of that name is there.
void InsertDefinition(session::App& app, session::Document& document);

// What lies on the clipboard, coloured; the caret stands behind it. Nothing without text.
void PasteMacro(session::App& app, session::Document& document);

// The names that frmMacroRef offers for arguments.
std::vector<std::string> SymbolNames(session::App& app, session::Document& document);

}  // namespace aids
