#include "base/HostNames.h"

#include <algorithm>
#include <filesystem>

#include "base/Text.h"

namespace base {

bool IsDrivePath(std::string_view text) {
    return text.size() >= 3 && UpperChar(text[0]) >= 'A' && UpperChar(text[0]) <= 'Z' && text[1] == ':' &&
           (text[2] == '\\' || text[2] == '/');
}

bool IsWholePath(std::string_view text) { return IsDrivePath(text) || text.starts_with('/'); }

std::vector<std::string_view> PathNames(std::string_view path, std::string_view separators) {
    std::vector<std::string_view> names;
    for (std::size_t at = 0; (at = path.find_first_not_of(separators, at)) != path.npos;) {
        const auto end = std::min(path.find_first_of(separators, at), path.size());
        names.push_back(path.substr(at, end - at));
        at = end;
    }
    return names;
}

std::string FindName(const std::string& hostFolder, std::string_view name) {
    namespace fs = std::filesystem;
    std::error_code ignored;
    if (fs::exists(fs::symlink_status(fs::path(hostFolder) / name, ignored))) return std::string(name);
    std::string found;
    for (fs::directory_iterator it(hostFolder, ignored), end; !ignored && it != end; it.increment(ignored)) {
        const std::string entry = it->path().filename().string();
        if (EqualNoCase(entry, name) && (found.empty() || entry < found)) found = entry;
    }
    return found.empty() ? std::string(name) : found;
}

std::string HostPathBelow(const std::string& hostFolder, std::string_view path) {
    std::vector<std::string_view> names;
    for (const std::string_view name : PathNames(path, "\\/")) {
        if (name == "..") {
            if (!names.empty()) names.pop_back();
        } else if (name != ".") {
            names.push_back(name);
        }
    }
    std::string host = hostFolder;
    for (const std::string_view name : names) {
        const std::string found = FindName(host.empty() ? "/" : host, name);
        (host += '/') += found;
    }
    return host.empty() ? "/" : host;
}

}  // namespace base
