#pragma once

#include <sys/stat.h>

#include <map>
#include <set>
#include <string>
#include <string_view>

#include "front/Options.h"

namespace kernel {

// The extensions of the files that the options ask for.
std::set<std::string_view> OutputsOf(const front::Options& options);

// The outputs of earlier runs beside a design. They are looked at before a run and cleared away after it, not
// before, so that what the run writes takes over their rights and links.
class EarlierOutputs {
  public:
    // Of those that `options` ask for. `base`: the design's path without extension.
    EarlierOutputs(const std::string& base, const front::Options& options);
    // Removes what the run did not write: it would be taken for the run's. What it could not write stays, as
    // `refusals` name it: the lines of the message list that say so.
    void RemoveThoseLeft(std::string_view refusals) const;

  private:
    struct File {
        std::string Name;  // as the run names it
        struct stat Before {};
    };
    std::map<std::string, File> files_;  // by host path, links followed
};

}  // namespace kernel
