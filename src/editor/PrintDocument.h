#pragma once

#include "session/App.h"

namespace editor {

// Prints the text or its selection on a printer that the user chooses.
void FilePrint(session::App& app, session::Document& document);

}  // namespace editor
