#pragma once

#include "session/App.h"

// Pin back-annotation: the tool backpin.exe takes the pin numbers of a fit out of the design sProject, or
// writes them into it.
namespace toolchain {

enum class BackPin { FloatAll, AssignAll, AssignPins };

// Runs the tool and reads the document's file again, whichever design it is of and whatever came of the tool.
// Unsaved text is replaced unasked; a file that can't be read leaves it, without a word.
void RunBackPin(session::App& app, session::Document& document, BackPin what);

}  // namespace toolchain
