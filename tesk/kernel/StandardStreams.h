#pragma once

#include <string>

namespace kernel {

// Compiles the design of the standard input. The one output that the letters ask for goes to the standard
// output, the message list to standard error. Included files are looked for in the current folder. False if
// there were errors; `fault`: one of them is of our own. `isGnu`: the
// messages have the form of GnuLine.
bool CompileStandardInput(const std::string& letters, const std::string& device, const std::string& library,
                          bool isGnu, bool& fault);

}  // namespace kernel
