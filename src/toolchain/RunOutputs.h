#pragma once

#include <map>
#include <string>

#include "platform/FileSystem.h"

namespace toolchain {

// The files that runs wrote beside their designs, as they left them: what a later run may delete. Any other
// file, or one that was changed since, is the user's. Kept from one session to the next.
class RunOutputs {
  public:
    // `file`: the logic path of the record; empty for this session alone. What can't be read or written there
    // is not known the next time.
    RunOutputs(platform::FileSystem& files, std::string file) : files_(files), file_(std::move(file)) {}

    // Right before and right after the call of a run's library: what came or changed between was the run's.
    // `design`: folder and base name.
    void Begin(const std::string& design) { before_ = StampsOf(design); }
    void End(const std::string& design);

    bool Wrote(const std::string& path);  // and nobody changed it since

  private:
    using Stamps = std::map<std::string, platform::FileStamp>;  // by path in upper case

    Stamps StampsOf(const std::string& design) const;
    void Load();
    void Save() const;

    platform::FileSystem& files_;
    std::string file_;
    bool isLoaded_ = false;
    Stamps before_;
    Stamps written_;
};

}  // namespace toolchain
