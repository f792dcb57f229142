#include "base/PosixFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <memory>

#include "base/RunTimeError.h"

namespace base {
namespace {

constexpr int errOutOfMemory = 7;
constexpr std::size_t BlockSize = 1 << 16;

}  // namespace

void RaiseErrno(int code, const std::string& hostPath) {
    switch (code) {
        case ENOENT: {
            struct stat folder {};
            const bool found = ::stat(FolderOf(hostPath).c_str(), &folder) == 0 && S_ISDIR(folder.st_mode);
            throw RunTimeError(found ? errFileNotFound : errPathNotFound);
        }
        case ENOTDIR:
        case ENAMETOOLONG:
            throw RunTimeError(errPathNotFound);
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            throw RunTimeError(errDiskFull);
        case ENOMEM:
            throw RunTimeError(errOutOfMemory, "Out of memory");
        default:
            throw RunTimeError(errPathFileAccess);
    }
}

std::string FolderOf(const std::string& hostPath) {
    const auto slash = hostPath.rfind('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : hostPath.substr(0, slash);
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

void WriteBytes(const Descriptor& file, const std::string& hostPath, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(file.Get(), bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) RaiseErrno(errno, hostPath);
        bytes.remove_prefix(static_cast<std::size_t>(written));
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

}  // namespace base
