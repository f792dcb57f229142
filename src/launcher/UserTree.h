#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "launcher/Folders.h"

// The user's own installation: the main program writes beside itself (its configuration, device notes,
// macros), which a packaged one may not. What is small is copied, programs, libraries and large data are
// linked.
namespace launcher {

struct Upkeep {
    bool IsOfNewerVersion = false;    // then nothing was touched
    std::vector<std::string> Beside;  // the user's files that a new one was put beside, as NAME.new
};

// What went wrong, as a sentence for the user. Nothing was left half done.
struct TreeError : std::runtime_error {
    using runtime_error::runtime_error;
    bool HasTree = false;  // there is an earlier, whole tree to go on with
};

// Makes the tree, or brings what the installation has that it has not. A file that the user changed stays, a
// missing one and a broken link come again. Costs a look at each file when there is nothing to do. Throws
// TreeError.
Upkeep KeepUp(const Folders& folders);

}  // namespace launcher
