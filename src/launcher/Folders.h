#pragma once

#include <string>

namespace launcher {

// Host paths without a final slash.
struct Folders {
    std::string Installation;  // where this program's own `bin` lies; read only as far as this program cares
    std::string Tree;          // the user's own installation, which the main program finds around itself
    std::string Examples;      // in the user's documents
    std::string RunTime;       // where the main program listens; as the toolkit finds it

    std::string Program() const { return Tree + "/Korvane/Korvane"; }
};

// By the running program and the environment: XDG_DATA_HOME, XDG_CONFIG_HOME (user-dirs.dirs),
// XDG_RUNTIME_DIR.
Folders FindFolders();

}  // namespace launcher
