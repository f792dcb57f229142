#pragma once

#include <string>
#include <string_view>

#include "platform/FileSystem.h"

namespace toolchain {

// True for an extension (lower case, without dot) of a file that a tool of the chain writes.
bool IsToolOutput(std::string_view extension);

// Clears away the files of a design (folder and base name) that a run makes anew: all but those with the
// extensions pld, si and m. What no tool wrote goes to the desktop's trash. Errors are passed over.
void DeleteStaleOutputs(platform::FileSystem& files, const std::string& design);

}  // namespace toolchain
