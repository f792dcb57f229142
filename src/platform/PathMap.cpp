#include "platform/PathMap.h"

#include <algorithm>
#include <filesystem>
#include <vector>

#include "base/Text.h"

namespace platform {
namespace {

namespace fs = std::filesystem;

// The entry of `folder` that `name` means: itself if it is there, else the first in byte order that is equal
// without regard to case, else `name`.
std::string FindName(const std::string& folder, const std::string& name) {
    std::error_code ignored;
    const fs::path exact = fs::path(folder) / name;
    if (fs::exists(fs::symlink_status(exact, ignored))) return name;
    std::string found;
    for (fs::directory_iterator it(folder, ignored), end; !ignored && it != end; it.increment(ignored)) {
        const std::string entry = it->path().filename().string();
        if (base::EqualNoCase(entry, name) && (found.empty() || entry < found)) found = entry;
    }
    return found.empty() ? name : found;
}

std::vector<std::string> Split(std::string_view path) {
    std::vector<std::string> parts;
    std::size_t at = 0;
    while (at <= path.size()) {
        const auto end = std::min(path.find_first_of("\\/", at), path.size());
        std::string part(path.substr(at, end - at));
        if (part == "..") {
            if (!parts.empty()) parts.pop_back();
        } else if (!part.empty() && part != ".") {
            parts.push_back(std::move(part));
        }
        at = end + 1;
    }
    return parts;
}

}  // namespace

PathMap::PathMap(std::string root) : root_(std::move(root)) {
    while (root_.size() > 1 && root_.back() == '/') root_.pop_back();
    if (root_ == "/") root_.clear();
}

bool PathMap::IsDrivePath(std::string_view text) {
    return text.size() >= 3 && base::UpperChar(text[0]) >= 'A' && base::UpperChar(text[0]) <= 'Z' &&
           text[1] == ':' && (text[2] == '\\' || text[2] == '/');
}

std::string PathMap::ToHost(std::string_view path, std::string_view currentFolder) const {
    const bool hasDrive = path.size() >= 2 && path[1] == ':';
    std::string_view tail = hasDrive ? path.substr(2) : path;
    std::string whole(tail);
    if (tail.empty() || (tail[0] != '\\' && tail[0] != '/')) {
        const bool currentHasDrive = currentFolder.size() >= 2 && currentFolder[1] == ':';
        whole = std::string(currentHasDrive ? currentFolder.substr(2) : currentFolder) + "\\" + whole;
    }
    std::string host = root_;
    for (const std::string& part : Split(whole)) {
        const std::string name = FindName(host.empty() ? "/" : host, part);
        host += "/" + name;
    }
    return host.empty() ? "/" : host;
}

std::string PathMap::FromHost(std::string_view hostPath) const {
    if (!hostPath.starts_with(root_ + "/") && hostPath != root_) return std::string(hostPath);
    std::string path(hostPath.substr(root_.size()));
    std::replace(path.begin(), path.end(), '/', '\\');
    return path.empty() ? "C:\\" : "C:" + path;
}

}  // namespace platform
