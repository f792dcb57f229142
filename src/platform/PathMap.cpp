#include "platform/PathMap.h"

#include <algorithm>

#include "base/HostNames.h"

namespace platform {

PathMap::PathMap(std::string root) : root_(std::move(root)) {
    while (root_.size() > 1 && root_.back() == '/') root_.pop_back();
    if (root_ == "/") root_.clear();
}

bool PathMap::IsDrivePath(std::string_view text) { return base::IsDrivePath(text); }

std::string PathMap::ToHost(std::string_view path, std::string_view currentFolder) const {
    const bool hasDrive = path.size() >= 2 && path[1] == ':';
    std::string_view tail = hasDrive ? path.substr(2) : path;
    std::string whole(tail);
    if (tail.empty() || (tail[0] != '\\' && tail[0] != '/')) {
        const bool currentHasDrive = currentFolder.size() >= 2 && currentFolder[1] == ':';
        whole = std::string(currentHasDrive ? currentFolder.substr(2) : currentFolder) + "\\" + whole;
    }
    return base::HostPathBelow(root_, whole);
}

std::string PathMap::FromHost(std::string_view hostPath) const {
    if (!hostPath.starts_with(root_ + "/") && hostPath != root_) return std::string(hostPath);
    std::string path(hostPath.substr(root_.size()));
    std::replace(path.begin(), path.end(), '/', '\\');
    return path.empty() ? "C:\\" : "C:" + path;
}

}  // namespace platform
