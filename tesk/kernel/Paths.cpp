#include "kernel/Paths.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <vector>

#include "base/AtomicFile.h"
#include "base/Text.h"

namespace kernel {

namespace fs = std::filesystem;

namespace {

std::vector<std::string> Components(std::string_view path) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    while (start <= path.size()) {
        const std::size_t end = std::min(path.find('/', start), path.size());
        if (end > start) parts.emplace_back(path.substr(start, end - start));
        start = end + 1;
    }
    return parts;
}

std::string Found(const fs::path& folder, const std::string& name) {
    std::error_code error;
    if (fs::exists(fs::symlink_status(folder / name, error))) return name;
    std::string best;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        const std::string other = entry->path().filename().string();
        if (base::EqualNoCase(other, name) && (best.empty() || other < best)) best = other;
    }
    return best.empty() ? name : best;
}

}  // namespace

std::string HostPath(std::string_view name) {
    std::string path(name);
    const bool drive = path.size() > 1 && path[1] == ':';
    if (drive) path = "/" + path.substr(2);
    if (drive || path.find('/') == std::string::npos) std::replace(path.begin(), path.end(), '\\', '/');
    fs::path result = path.starts_with('/') ? "/" : ".";
    for (const std::string& part : Components(path))
        result /= part == "." || part == ".." ? part : Found(result, part);
    return result.string();
}

bool IsFile(std::string_view name) {
    std::error_code error;
    return fs::is_regular_file(HostPath(name), error);
}

std::string WhyNotWritten(const std::string& hostPath, const base::RunTimeError& error) {
    struct stat status {};
    const bool exists = ::stat(hostPath.c_str(), &status) == 0;
    return exists && base::IsReadOnly(status, hostPath) ? "the file is write-protected" : error.Description();
}

std::optional<std::string> DiskFiles::Read(std::string_view path, std::size_t maxBytes) {
    const std::string host = HostPath(path);
    std::error_code error;
    if (!fs::is_regular_file(host, error) || fs::file_size(host, error) > maxBytes) return std::nullopt;
    std::ifstream in(host, std::ios::binary);
    std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (!in.is_open() || in.bad() || bytes.size() > maxBytes) return std::nullopt;
    return bytes;
}

std::string DiskFiles::Write(std::string_view path, std::string_view bytes) {
    const std::string host = HostPath(path);
    try {
        base::AtomicFile file(host);
        file.Write(bytes);
        file.Commit(base::AtomicFile::Durability::Quick);  // a run makes it anew
        return {};
    } catch (const base::RunTimeError& error) {
        return WhyNotWritten(host, error);
    }
}

std::string DiskFiles::Identity(std::string_view path) {
    std::error_code error;
    const fs::path whole = fs::weakly_canonical(HostPath(path), error);
    return error ? HostPath(path) : whole.string();
}

}  // namespace kernel
