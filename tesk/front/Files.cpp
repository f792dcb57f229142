#include "front/Files.h"

namespace front {

namespace {

bool IsWholePath(std::string_view name) {
    if (name.empty()) return false;
    return name[0] == '/' || name[0] == '\\' || (name.size() > 1 && name[1] == ':');
}

}  // namespace

std::string_view FileName(std::string_view path) {
    const std::size_t cut = path.find_last_of("/\\:");
    return cut == std::string_view::npos ? path : path.substr(cut + 1);
}

std::string Beside(std::string_view path, std::string_view name) {
    if (IsWholePath(name)) return std::string(name);
    const std::string_view folder = path.substr(0, path.size() - FileName(path).size());
    return std::string(folder) + std::string(name);
}

}  // namespace front
