#pragma once

#include "session/App.h"

namespace session {

// Writes the document's text to `path`, and counts it as saved. An empty window under the name of a file that
// could not be read must not replace that file unasked: false if the user kept it. Throws what the disk says;
// then the text counts as unsaved.
bool WriteText(App& app, Document& document, const std::string& path);

}  // namespace session
