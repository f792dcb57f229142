#include "base/AtomicFile.h"

#include <fcntl.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>

#include "base/RunTimeError.h"

namespace base {
namespace {

constexpr int MaxLinks = 40;  // as the kernel follows
constexpr int MaxNames = 100;

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

// Some file systems know no fsync and say so with EINVAL.
void Settle(const Descriptor& file, const std::string& hostPath) {
    if (::fsync(file.Get()) != 0 && errno != EINVAL && errno != EROFS) RaiseErrno(errno, hostPath);
}

bool HasAccessList(const std::string& hostPath) {
    return ::getxattr(hostPath.c_str(), "system.posix_acl_access", nullptr, 0) > 0;
}

}  // namespace

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
    if (exists) staysItself_ = !TakeRights(old) || old.st_nlink > 1 || HasAccessList(target_);
}

AtomicFile::~AtomicFile() {
    if (!temporary_.empty()) ::unlink(temporary_.c_str());
}

void AtomicFile::OpenBeside() {
    static std::atomic<unsigned> number = 0;
    const std::string head = FolderOf(target_) + "/.korvane-" + std::to_string(::getpid()) + "-";
    for (int i = 0; i < MaxNames; ++i) {
        const std::string name = head + std::to_string(number++);
        const int descriptor = ::open(name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (descriptor >= 0) {
            temporary_ = name;
            file_.Reset(descriptor);
            return;
        }
        if (errno != EEXIST) RaiseErrno(errno, target_);
    }
    RaiseErrno(EEXIST, target_);
}

// False if the system does not grant the old file's owner, group and rights to a new one.
bool AtomicFile::TakeRights(const struct stat& old) {
    const bool owned = ::fchown(file_.Get(), old.st_uid, old.st_gid) == 0;
    const mode_t rights = old.st_mode & (owned ? 07777U : 0777U);
    return ::fchmod(file_.Get(), rights) == 0 && owned;
}

void AtomicFile::Stamp(const Descriptor& file) const {
    if (!modified_) return;
    const struct timespec times[2] = {*modified_, *modified_};
    if (::futimens(file.Get(), times) != 0) RaiseErrno(errno, target_);
}

void AtomicFile::Commit(Durability durability) {
    const bool settle = durability == Durability::Settled;
    Stamp(file_);
    if (settle || staysItself_) Settle(file_, target_);
    const bool isIn = staysItself_ && WriteInto();
    if (!file_.Close() && !isIn) RaiseErrno(errno, target_);
    if (isIn) {
        ::unlink(temporary_.c_str());
    } else if (::rename(temporary_.c_str(), target_.c_str()) != 0) {
        RaiseErrno(errno, target_);
    }
    temporary_.clear();
    if (settle) SyncFolder(FolderOf(target_));
}

// Writes the new bytes into the old file. They lie beside it on the disk until that is done: whatever cuts it
// short leaves one whole text. Throws while nothing has changed; false if the old bytes are gone and the new
// ones can't be had in full: then only the rename helps.
bool AtomicFile::WriteInto() {
    struct stat fresh {};
    struct stat old {};
    const Descriptor into(::open(target_.c_str(), O_WRONLY | O_NOFOLLOW | O_CLOEXEC));
    if (into.Get() < 0 || ::fstat(into.Get(), &old) != 0 || ::fstat(file_.Get(), &fresh) != 0 ||
        ::lseek(file_.Get(), 0, SEEK_SET) != 0)
        RaiseErrno(errno, target_);
    if (fresh.st_size > old.st_size) Reserve(into, old.st_size, fresh.st_size);
    try {
        ReadBlocks(file_, temporary_, [&](std::string_view block) { WriteBytes(into, target_, block); });
        if (::ftruncate(into.Get(), fresh.st_size) != 0) return false;
        Stamp(into);
        Settle(into, target_);
        return true;
    } catch (const RunTimeError&) {
        return false;
    }
}

// A full disk has to show before the first byte is overwritten.
void AtomicFile::Reserve(const Descriptor& into, off_t before, off_t size) const {
    if (::fallocate(into.Get(), 0, 0, size) == 0 || errno == EOPNOTSUPP || errno == ENOSYS) return;
    const int code = errno;
    if (::ftruncate(into.Get(), before) == 0) RaiseErrno(code, target_);
}

}  // namespace base
