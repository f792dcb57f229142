#pragma once

#include <string>

#include "platform/PathMap.h"
#include "wavrik/Waves.h"

namespace wavrik {

struct Loaded {
    std::string Source;  // the file that they come from
    Waves Shown;
};

// The waves of a .SI, .SO or .VCD file. For a .SI that has been simulated since it was written these are the
// results beside it. Throws base::RunTimeError with the file and, where one is at fault, the line.
Loaded LoadWaves(const std::string& path, const platform::PathMap& paths);

}  // namespace wavrik
