#pragma once

#include "session/App.h"

namespace editor {

// Pastes the clipboard's text. The block of a schematic sheet takes the place of the sheet's earlier block,
// if the text has one, and the design is coloured anew. Error 380 if that block's end stands too far before
// its beginning, or is missing.
void EditPaste(session::App& app, session::Document& document);

}  // namespace editor
