#include "platform/qt/HostFileSystem.h"

#include <dirent.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <memory>

#include "base/AtomicFile.h"
#include "base/RunTimeError.h"
#include "base/Text.h"
#include "platform/qt/HostTrash.h"

namespace platform::qt {
namespace {

bool EndsAsFolder(std::string_view path) {
    return !path.empty() && (path.back() == '\\' || path.back() == '/');
}

// A path with a NUL would be cut by the system: it names nothing.
bool IsUsable(std::string_view path) { return !path.empty() && path.find('\0') == std::string_view::npos; }

std::optional<struct stat> StatusOf(const std::string& hostPath) {
    struct stat status {};
    if (::stat(hostPath.c_str(), &status) != 0) return std::nullopt;
    return status;
}

// A file may go only if it may be changed; of a link, the link goes.
void CheckRemovable(const std::string& hostPath) {
    struct stat status {};
    if (::lstat(hostPath.c_str(), &status) != 0) base::RaiseErrno(errno, hostPath);
    if (S_ISDIR(status.st_mode) || (!S_ISLNK(status.st_mode) && base::IsReadOnly(status, hostPath)))
        base::RaiseErrno(EACCES, hostPath);
}

}  // namespace

bool MatchesPattern(std::string_view name, std::string_view pattern) {
    if (pattern == "*.*") return true;
    std::size_t at = 0;
    std::size_t mark = 0;                       // in the name: where the last star stops taking
    std::size_t star = std::string_view::npos;  // in the pattern
    for (std::size_t i = 0; i < name.size();) {
        if (at < pattern.size() && pattern[at] == '*') {
            star = at++;
            mark = i;
        } else if (at < pattern.size() &&
                   (pattern[at] == '?' || base::UpperChar(pattern[at]) == base::UpperChar(name[i]))) {
            ++at;
            ++i;
        } else if (star != std::string_view::npos) {
            at = star + 1;
            i = ++mark;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', at) == std::string_view::npos;
}

HostFileSystem::HostFileSystem(PathMap paths) : paths_(std::move(paths)), current_("C:\\") {
    std::error_code failed;
    const std::string folder = std::filesystem::current_path(failed).string();
    const std::string logic = failed ? "" : paths_.FromHost(folder);
    if (PathMap::IsDrivePath(logic)) current_ = logic;
}

bool HostFileSystem::FileExists(std::string_view path) const {
    if (!IsUsable(path) || EndsAsFolder(path)) return false;
    const auto status = StatusOf(ToHostPath(path));
    return status && S_ISREG(status->st_mode);
}

bool HostFileSystem::DirectoryExists(std::string_view path) const {
    if (!IsUsable(path)) return false;
    const auto status = StatusOf(ToHostPath(path));
    return status && S_ISDIR(status->st_mode);
}

std::optional<FileStamp> HostFileSystem::Stamp(std::string_view path) const {
    if (!IsUsable(path)) return std::nullopt;
    const auto status = StatusOf(ToHostPath(path));
    if (!status || !S_ISREG(status->st_mode)) return std::nullopt;
    return FileStamp{static_cast<std::uint64_t>(status->st_size),
                     std::int64_t{status->st_mtim.tv_sec} * 1'000'000'000 + status->st_mtim.tv_nsec};
}

std::string HostFileSystem::ReadFile(std::string_view path) const {
    return base::ReadWhole(ToHostPath(path), MaxFileSize);
}

void HostFileSystem::WriteFile(std::string_view path, std::string_view bytes) {
    base::AtomicFile file(ToHostPath(path));
    file.Write(bytes);
    file.Commit();
}

void HostFileSystem::CopyFile(std::string_view from, std::string_view to) {
    const std::string host = ToHostPath(from);
    base::Descriptor source;
    struct stat status {};
    base::OpenRegular(host, source, status);
    base::AtomicFile target(ToHostPath(to));
    base::ReadBlocks(source, host, [&](std::string_view block) { target.Write(block); });
    target.SetModified(status.st_mtim);
    target.Commit(base::AtomicFile::Durability::Quick);  // there is still the source
}

void HostFileSystem::DeleteFile(std::string_view path) {
    const std::string host = ToHostPath(path);
    CheckRemovable(host);
    if (::unlink(host.c_str()) != 0) base::RaiseErrno(errno, host);
}

void HostFileSystem::TrashFile(std::string_view path) {
    const std::string host = ToHostPath(path);
    CheckRemovable(host);
    MoveToTrash(host);
}

void HostFileSystem::MakeDirectory(std::string_view path) {
    const std::string host = ToHostPath(path);
    std::error_code error;
    std::filesystem::create_directories(host, error);
    if (error) base::RaiseErrno(error.value(), host);
}

std::vector<std::string> HostFileSystem::List(std::string_view pattern) const {
    std::vector<std::string> names;
    if (!IsUsable(pattern)) return names;
    const auto slash = pattern.find_last_of("\\/");
    const bool hasFolder = slash != std::string_view::npos;
    const std::string folder = ToHostPath(hasFolder ? pattern.substr(0, slash + 1) : ".");
    const std::string_view last = hasFolder ? pattern.substr(slash + 1) : pattern;
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(::opendir(folder.c_str()), &::closedir);
    if (!entries) return names;
    while (const dirent* entry = ::readdir(entries.get())) {
        if (!MatchesPattern(entry->d_name, last)) continue;
        const auto status = StatusOf(folder + "/" + entry->d_name);
        if (status && S_ISREG(status->st_mode)) names.emplace_back(entry->d_name);
    }
    return names;
}

std::vector<std::string> HostFileSystem::ListFolders(std::string_view folder) const {
    std::vector<std::string> names;
    if (!DirectoryExists(folder)) return names;
    std::error_code failed;
    for (std::filesystem::directory_iterator entry(ToHostPath(folder), failed), end; !failed && entry != end;
         entry.increment(failed)) {
        std::error_code gone;
        const std::string name = entry->path().filename().string();
        if (!name.starts_with('.') && entry->is_directory(gone)) names.push_back(name);
    }
    std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
        const std::string first = base::Upper(a), second = base::Upper(b);
        return first == second ? a < b : first < second;
    });
    return names;
}

std::string HostFileSystem::CurrentDirectory() const {
    const std::lock_guard lock(mutex_);
    return current_;
}

void HostFileSystem::SetCurrentDirectory(std::string_view path) {
    if (!DirectoryExists(path)) throw base::RunTimeError(base::errPathNotFound);
    const std::string host = ToHostPath(path);
    if (::chdir(host.c_str()) != 0) base::RaiseErrno(errno, host);
    const std::string current = FromHostPath(host);
    const std::lock_guard lock(mutex_);
    current_ = current;
}

std::string HostFileSystem::ToHostPath(std::string_view path) const {
    if (path.find('\0') != std::string_view::npos) throw base::RunTimeError(base::errFileNotFound);
    return paths_.ToHost(path, CurrentDirectory());
}

std::string HostFileSystem::FromHostPath(std::string_view hostPath) const {
    return paths_.FromHost(hostPath);
}

}  // namespace platform::qt
