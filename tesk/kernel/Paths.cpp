#include "kernel/Paths.h"

#include <filesystem>
#include <fstream>

#include "base/AtomicFile.h"
#include "base/HostNames.h"
#include "base/Installation.h"

namespace kernel {

namespace fs = std::filesystem;

std::string HostPath(std::string_view name) {
    if (name.substr(1, 1) == ":") return base::HostPathBelow("", name.substr(2));
    // A backslash is a letter of a host's path that has slashes. The host alone knows where ".." leads.
    const bool hasSlashes = name.find('/') != name.npos;
    fs::path result = name.starts_with('/') ? "/" : ".";
    for (const std::string_view part : base::PathNames(name, hasSlashes ? "/" : "\\"))
        result /= part == "." || part == ".." ? std::string(part) : base::FindName(result.string(), part);
    return result.string();
}

std::string InstalledLibrary() { return base::InstalledFile({"Shared/tesk.dl", "Shared/Fullset.dl"}); }

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
