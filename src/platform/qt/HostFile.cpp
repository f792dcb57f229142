#include "platform/qt/HostFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <memory>

#include "base/RunTimeError.h"

namespace platform::qt {
namespace {

constexpr int errOutOfMemory = 7;
constexpr int MaxLinks = 40;  // as the kernel follows
constexpr int MaxNames = 100;
constexpr std::size_t BlockSize = 1 << 16;

std::string FolderOf(const std::string& hostPath) {
    const auto slash = hostPath.rfind('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : hostPath.substr(0, slash);
}

// What a chain of links ends at, whether it exists or not.
std::string FollowLinks(std::string path) {
    for (int i = 0; i < MaxLinks; ++i) {
        std::string target(4096, '\0');
        const ssize_t length = ::readlink(path.c_str(), target.data(), target.size());
        if (length < 0) return path;
        target.resize(static_cast<std::size_t>(length));
        path = target.starts_with('/') ? target : FolderOf(path) + "/" + target;
    }
    RaiseErrno(ELOOP, path);
}

void SyncFolder(const std::string& folder) {
    const Descriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor.Get() >= 0) ::fsync(descriptor.Get());
}

}  // namespace

void RaiseErrno(int code, const std::string& hostPath) {
    switch (code) {
        case ENOENT: {
            struct stat folder {};
            const bool found = ::stat(FolderOf(hostPath).c_str(), &folder) == 0 && S_ISDIR(folder.st_mode);
            throw base::RunTimeError(found ? base::errFileNotFound : base::errPathNotFound);
        }
        case ENOTDIR:
        case ENAMETOOLONG:
            throw base::RunTimeError(base::errPathNotFound);
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            throw base::RunTimeError(base::errDiskFull);
        case ENOMEM:
            throw base::RunTimeError(errOutOfMemory, "Out of memory");
        default:
            throw base::RunTimeError(base::errPathFileAccess);
    }
}

bool IsReadOnly(const struct stat& status, const std::string& hostPath) {
    return (status.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0 || ::access(hostPath.c_str(), W_OK) != 0;
}

void Descriptor::Reset(int descriptor) {
    Close();
    descriptor_ = descriptor;
}

bool Descriptor::Close() {
    const int descriptor = descriptor_;
    descriptor_ = -1;
    return descriptor < 0 || ::close(descriptor) == 0;
}

void OpenRegular(const std::string& hostPath, Descriptor& file, struct stat& status) {
    if (::stat(hostPath.c_str(), &status) != 0) RaiseErrno(errno, hostPath);
    if (!S_ISREG(status.st_mode)) RaiseErrno(EACCES, hostPath);
    file.Reset(::open(hostPath.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (file.Get() < 0 || ::fstat(file.Get(), &status) != 0) RaiseErrno(errno, hostPath);
    if (!S_ISREG(status.st_mode)) RaiseErrno(EACCES, hostPath);
}

void ReadBlocks(const Descriptor& file, const std::string& hostPath,
                const std::function<void(std::string_view)>& take) {
    const auto block = std::make_unique<char[]>(BlockSize);
    for (;;) {
        const ssize_t count = ::read(file.Get(), block.get(), BlockSize);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) RaiseErrno(errno, hostPath);
        if (count == 0) return;
        take({block.get(), static_cast<std::size_t>(count)});
    }
}

std::string ReadWhole(const std::string& hostPath, std::uint64_t limit) {
    Descriptor file;
    struct stat status {};
    OpenRegular(hostPath, file, status);
    if (static_cast<std::uint64_t>(status.st_size) > limit) RaiseErrno(ENOMEM, hostPath);
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(status.st_size));
    // The size is only a promise: files of the kernel have none, others grow.
    ReadBlocks(file, hostPath, [&](std::string_view block) {
        if (bytes.size() + block.size() > limit) RaiseErrno(ENOMEM, hostPath);
        bytes += block;
    });
    return bytes;
}

bool CanReplace(const std::string& hostPath) {
    struct stat status {};
    std::string path = FollowLinks(hostPath);
    if (::stat(path.c_str(), &status) == 0) {
        if (!S_ISREG(status.st_mode) || IsReadOnly(status, path)) return false;
    } else if (errno != ENOENT) {
        return false;
    }
    do {
        path = FolderOf(path);
    } while (::stat(path.c_str(), &status) != 0 && errno == ENOENT && path.size() > 1);
    return S_ISDIR(status.st_mode) && !IsReadOnly(status, path);
}

AtomicFile::AtomicFile(const std::string& hostPath) : target_(FollowLinks(hostPath)) {
    // A write beyond the file size limit shall fail with EFBIG and not end the program.
    std::signal(SIGXFSZ, SIG_IGN);
    struct stat old {};
    const bool exists = ::stat(target_.c_str(), &old) == 0;
    if (!exists && errno != ENOENT) RaiseErrno(errno, target_);
    if (exists && (!S_ISREG(old.st_mode) || IsReadOnly(old, target_))) RaiseErrno(EACCES, target_);
    OpenBeside();
    if (exists) TakeRights(old);
}

AtomicFile::~AtomicFile() {
    if (!temporary_.empty()) ::unlink(temporary_.c_str());
}

void AtomicFile::OpenBeside() {
    static int number = 0;
    const std::string head = FolderOf(target_) + "/.korvane-" + std::to_string(::getpid()) + "-";
    for (int i = 0; i < MaxNames; ++i) {
        const std::string name = head + std::to_string(number++);
        const int descriptor = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (descriptor >= 0) {
            temporary_ = name;
            file_.Reset(descriptor);
            return;
        }
        if (errno != EEXIST) RaiseErrno(errno, name);
    }
    RaiseErrno(EEXIST, target_);
}

void AtomicFile::TakeRights(const struct stat& old) {
    // A stranger's file becomes the writer's own where the system grants nothing else.
    const bool owned = ::fchown(file_.Get(), old.st_uid, old.st_gid) == 0;
    const mode_t rights = old.st_mode & (owned ? 07777U : 0777U);
    if (::fchmod(file_.Get(), rights) != 0) RaiseErrno(errno, target_);
}

void AtomicFile::Write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(file_.Get(), bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) RaiseErrno(errno, target_);
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

void AtomicFile::SetModified(const struct timespec& time) {
    const struct timespec times[2] = {time, time};
    if (::futimens(file_.Get(), times) != 0) RaiseErrno(errno, target_);
}

void AtomicFile::Commit(Durability durability) {
    const bool settle = durability == Durability::Settled;
    // Some file systems know no fsync and say so with EINVAL.
    if (settle && ::fsync(file_.Get()) != 0 && errno != EINVAL && errno != EROFS) RaiseErrno(errno, target_);
    if (!file_.Close()) RaiseErrno(errno, target_);
    if (::rename(temporary_.c_str(), target_.c_str()) != 0) RaiseErrno(errno, target_);
    temporary_.clear();
    if (settle) SyncFolder(FolderOf(target_));
}

}  // namespace platform::qt
