#pragma once

#include <string>

#include "platform/FileSystem.h"
#include "toolchain/RunOutputs.h"

namespace toolchain {

// Clears away the files of a design (folder and base name) that a run makes anew: all but those with the
// extensions pld, si and m. What no run wrote goes to the desktop's trash. Errors are passed over.
void DeleteStaleOutputs(platform::FileSystem& files, const std::string& design, RunOutputs& outputs);

}  // namespace toolchain
