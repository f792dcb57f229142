#pragma once

#include <string>
#include <string_view>

namespace platform {

// Maps the paths of the logic (C:\WORK\COUNT8.PLD) to those of a POSIX host and back. `C:\` is the root.
class PathMap {
  public:
    explicit PathMap(std::string root = "/");  // a host folder; tests give one of their own

    // The host path. Each name is looked for as written, then without regard to ASCII case (the first in byte
    // order); a name that does not exist stays as written. A path without drive is taken from `currentFolder`
    // (a logic path). Forward slashes count as backslashes.
    std::string ToHost(std::string_view path, std::string_view currentFolder = "C:\\") const;

    // C:\… of an absolute host path below the root; other text comes back unchanged.
    std::string FromHost(std::string_view hostPath) const;

    // True for text that is a whole drive path: a letter, a colon, a slash or backslash.
    static bool IsDrivePath(std::string_view text);

  private:
    std::string root_;
};

}  // namespace platform
