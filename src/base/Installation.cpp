#include "base/Installation.h"

#include <filesystem>

namespace base {

namespace fs = std::filesystem;

std::string ProgramFile() {
    std::error_code unknown;
    return fs::read_symlink("/proc/self/exe", unknown).string();
}

std::string InstalledFile(std::initializer_list<const char*> names) {
    const fs::path own = fs::path(ProgramFile()).parent_path();
    std::error_code ignored;
    for (fs::path folder = own;; folder = folder.parent_path()) {
        for (const char* name : names)
            if (fs::exists(folder / name, ignored)) return (folder / name).string();
        if (!folder.has_relative_path()) break;
    }
    return (own.parent_path() / *(names.end() - 1)).string();
}

}  // namespace base
