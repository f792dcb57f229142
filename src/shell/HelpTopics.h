#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "session/Session.h"

namespace shell {

// The help topic of a form, by its name; null if it has none.
const char* HelpTopicOf(std::string_view form);

struct HelpFile {
    const char* Entry;  // of the menu, which opens it at its contents; empty if it is reached otherwise
    std::string Path;
};

// All help files, the program's own first.
std::vector<HelpFile> HelpFiles(const session::Session& state);

}  // namespace shell
