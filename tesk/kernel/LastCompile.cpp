#include "kernel/LastCompile.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <vector>

#include "base/AtomicFile.h"
#include "base/RunTimeError.h"
#include "base/Text.h"

namespace kernel {

namespace {

constexpr std::size_t mostDesigns = 500;
constexpr std::uint64_t mostBytes = 1 << 22;

// Empty if the user has no folder for it.
std::string StateFile() {
    const char* const state = std::getenv("XDG_STATE_HOME");
    const char* const home = std::getenv("HOME");
    if (state != nullptr && state[0] == '/') return std::string(state) + "/tesk/letters";
    return home != nullptr && home[0] == '/' ? std::string(home) + "/.local/state/tesk/letters" : "";
}

// The lines of the file, "letters design", the latest last. Throws; a missing file is an error too.
std::vector<std::string> ReadLines(const std::string& path) {
    return base::Lines(base::ReadWhole(path, mostBytes));
}

bool IsOf(std::string_view line, std::string_view design) {
    return line.size() > design.size() && line.ends_with(design) &&
           line.find(' ') == line.size() - design.size() - 1;
}

void Keep(const std::string& path, std::string_view design, const std::string& line) {
    std::vector<std::string> lines;
    try {
        lines = ReadLines(path);
    } catch (const base::RunTimeError&) {
        std::filesystem::create_directories(base::FolderOf(path));
    }
    if (std::find(lines.begin(), lines.end(), line) != lines.end()) return;
    std::erase_if(lines, [&](const std::string& old) { return IsOf(old, design); });
    lines.push_back(line);
    base::AtomicFile file(path);
    for (std::size_t i = lines.size() - std::min(lines.size(), mostDesigns); i < lines.size(); ++i)
        file.Write(lines[i] + "\n");
    file.Commit(base::AtomicFile::Durability::Quick);
}

}  // namespace

void KeepLetters(std::string_view design, std::string_view letters) {
    const std::string path = StateFile();
    if (path.empty() || design.find_first_of("\r\n") != design.npos) return;
    std::string line;
    std::copy_if(letters.begin(), letters.end(), std::back_inserter(line),
                 [](unsigned char c) { return std::isalnum(c) != 0; });
    try {
        Keep(path, design, (line += ' ') += design);
    } catch (const std::exception&) {
        // Told in the header.
    }
}

std::optional<std::string> KeptLetters(std::string_view design) {
    try {
        for (const std::string& line : ReadLines(StateFile()))
            if (IsOf(line, design)) return line.substr(0, line.find(' '));
    } catch (const std::exception&) {
        // Told in the header.
    }
    return std::nullopt;
}

}  // namespace kernel
