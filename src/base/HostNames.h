#pragma once

#include <string>
#include <string_view>
#include <vector>

// Names in the folders of a POSIX host, whose case the logic does not look at.
namespace base {

// True for text that is a whole drive path: a letter, a colon, a slash or backslash.
bool IsDrivePath(std::string_view text);
// True for a drive path, or one of the host that begins at its root.
bool IsWholePath(std::string_view text);

// The names of a path between the separators, without empty ones.
std::vector<std::string_view> PathNames(std::string_view path, std::string_view separators);

// The entry of a host folder that a name means: itself if it is there, else the first in byte order that is
// equal without regard to ASCII case, else the name as it is.
std::string FindName(const std::string& hostFolder, std::string_view name);

// The host path of what lies below a host folder (empty: the root) under names parted by slashes or
// backslashes, each as FindName finds it; "." and ".." are taken out of the path first.
std::string HostPathBelow(const std::string& hostFolder, std::string_view path);

}  // namespace base
