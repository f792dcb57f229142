#pragma once

#include "session/App.h"

namespace session {

// Whether a save may write the document's text to `path`. An empty window under the name of a file that could
// not be read must not replace that file unasked: then the user is asked.
bool MayReplace(App& app, const Document& document, const std::string& path);

}  // namespace session
