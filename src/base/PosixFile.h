#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

// Files under their host paths, every call of the system checked.
namespace base {

// Raises the run-time error of the failed call on a host path: 53 no file, 76 no folder, 61 disk full, 7 out
// of memory, else 75.
[[noreturn]] void RaiseErrno(int code, const std::string& hostPath);

// "." for a path without one.
std::string FolderOf(const std::string& hostPath);

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

// Writes all of it; throws.
void WriteBytes(const Descriptor& file, const std::string& hostPath, std::string_view bytes);

// A whole regular file of at most `limit` bytes; throws, 7 for a larger one.
std::string ReadWhole(const std::string& hostPath, std::uint64_t limit);

}  // namespace base
