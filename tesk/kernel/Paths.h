#pragma once

#include <string>
#include <string_view>

#include "base/RunTimeError.h"
#include "front/Files.h"

namespace kernel {

// The host's path of a name in the form C:\WORK\COUNT8.PLD or in the host's own form. `C:\` is `/`. Names are
// found without regard to case: an exact match first, then the first in byte order; what does not exist keeps
// the name as written.
std::string HostPath(std::string_view name);

// The device library of the installation that the running program is part of: `tesk.dl`, or the full set that
// it is made from.
std::string InstalledLibrary();

bool IsFile(std::string_view name);
// For the user, of a host path.
std::string WhyNotWritten(const std::string& hostPath, const base::RunTimeError& error);

// The host's file system.
class DiskFiles : public front::Files {
  public:
    std::optional<std::string> Read(std::string_view path, std::size_t maxBytes) override;
    std::string Write(std::string_view path, std::string_view bytes) override;
    std::string Identity(std::string_view path) override;
};

}  // namespace kernel
