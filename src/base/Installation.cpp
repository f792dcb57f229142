#include "base/Installation.h"

#include <cerrno>
#include <filesystem>

namespace base {
namespace {

namespace fs = std::filesystem;

// A user's own installation has links to the programs beside copies of what he may change.
fs::path NameStartedUnder() {
    const fs::path name = ::program_invocation_name;
    return name.is_absolute() ? name : "";
}

std::string NearestTo(const fs::path& program, std::initializer_list<const char*> names) {
    std::error_code ignored;
    for (fs::path folder = program; folder.has_relative_path();) {
        folder = folder.parent_path();
        for (const char* name : names)
            if (fs::exists(folder / name, ignored)) return (folder / name).string();
    }
    return {};
}

}  // namespace

std::string ProgramFile() {
    std::error_code unknown;
    return fs::read_symlink("/proc/self/exe", unknown).string();
}

std::string InstalledFile(std::initializer_list<const char*> names) {
    const fs::path own = ProgramFile();
    for (const fs::path& program : {NameStartedUnder(), own})
        if (std::string found = NearestTo(program, names); !found.empty()) return found;
    return (own.parent_path().parent_path() / *(names.end() - 1)).string();
}

}  // namespace base
