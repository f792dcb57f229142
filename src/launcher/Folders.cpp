#include "launcher/Folders.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "base/Installation.h"
#include "base/PosixFile.h"
#include "base/RunTimeError.h"
#include "base/Text.h"

namespace launcher {
namespace {

namespace fs = std::filesystem;

constexpr std::uint64_t maxUserDirs = 1 << 16;

// Empty unless it is an absolute path, as the rules for these variables want it.
std::string FromEnvironment(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr && value[0] == '/' ? value : "";
}

const passwd* User() { return ::getpwuid(::getuid()); }

std::string Home() {
    const std::string home = FromEnvironment("HOME");
    return !home.empty() || User() == nullptr ? home : User()->pw_dir;
}

std::string Below(const char* variable, const char* otherwise) {
    const std::string folder = FromEnvironment(variable);
    return folder.empty() ? Home() + otherwise : folder;
}

// The desktop's own entry, such as XDG_DOCUMENTS_DIR="$HOME/Dokumente".
std::string DocumentsByDesktop() {
    constexpr std::string_view key = "XDG_DOCUMENTS_DIR=\"";
    constexpr std::string_view home = "$HOME";
    try {
        const std::string text =
            base::ReadWhole(Below("XDG_CONFIG_HOME", "/.config") + "/user-dirs.dirs", maxUserDirs);
        for (std::string_view line : base::LineViews(text)) {
            if (!line.starts_with(key)) continue;
            line = line.substr(key.size(), line.rfind('"') - key.size());
            if (line.starts_with(home)) return Home() + std::string(line.substr(home.size()));
            if (line.starts_with('/')) return std::string(line);
        }
    } catch (const base::RunTimeError&) {
        // Many desktops have no such file.
    }
    return Home() + "/Documents";
}

std::string Documents() {
    std::error_code error;
    const std::string folder = DocumentsByDesktop();
    return fs::is_directory(folder, error) ? folder : Home();
}

std::string RunTimeFolder() {
    std::string folder = FromEnvironment("XDG_RUNTIME_DIR");
    if (!folder.empty() || User() == nullptr) return folder;
    std::error_code error;
    return (fs::temp_directory_path(error) / (std::string("runtime-") + User()->pw_name)).string();
}

}  // namespace

Folders FindFolders() {
    return {.Installation = fs::path(base::ProgramFile()).parent_path().parent_path().string(),
            .Tree = Below("XDG_DATA_HOME", "/.local/share") + "/korvane",
            .Examples = Documents() + "/Korvane",
            .RunTime = RunTimeFolder()};
}

}  // namespace launcher
