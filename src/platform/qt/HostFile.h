#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace platform::qt {

// Raises the run-time error of the failed call on a host path: 53 no file, 76 no folder, 61 disk full, 7 out
// of memory, else 75.
[[noreturn]] void RaiseErrno(int code, const std::string& hostPath);

// True if nobody may write the file: the mode bits count even for the superuser.
bool IsReadOnly(const struct stat& status, const std::string& hostPath);

// A descriptor that closes itself.
class Descriptor {
  public:
    explicit Descriptor(int descriptor = -1) : descriptor_(descriptor) {}
    ~Descriptor() { Close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int Get() const { return descriptor_; }
    void Reset(int descriptor);
    bool Close();  // false: what was written may be lost

  private:
    int descriptor_;
};

// Opens a regular file for reading and takes its status; throws. Anything else could hang or do something by
// being opened, and is refused with error 75.
void OpenRegular(const std::string& hostPath, Descriptor& file, struct stat& status);

// Hands over the rest of an open file, block by block; throws.
void ReadBlocks(const Descriptor& file, const std::string& hostPath,
                const std::function<void(std::string_view block)>& take);

// A whole regular file of at most `limit` bytes; throws, 7 for a larger one.
std::string ReadWhole(const std::string& hostPath, std::uint64_t limit);

// True if AtomicFile has the rights to make or replace the file, after making folders that are missing.
bool CanReplace(const std::string& hostPath);

// A file that takes the place of another only as a whole: written under another name in the same folder and
// renamed over the target by Commit. Without Commit nothing has changed. A link stays, its target is
// replaced; rights and owner of an old file stay. All operations throw base::RunTimeError.
class AtomicFile {
  public:
    explicit AtomicFile(const std::string& hostPath);
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    void Write(std::string_view bytes);
    void SetModified(const struct timespec& time);
    // Settled: on the disk when this returns, which may take seconds on a busy one. Quick: in the system's
    // hands; a power failure leaves the old file or the new one.
    enum class Durability { Settled, Quick };
    void Commit(Durability durability = Durability::Settled);

  private:
    void OpenBeside();
    void TakeRights(const struct stat& old);

    std::string target_;
    std::string temporary_;
    Descriptor file_;
};

}  // namespace platform::qt
