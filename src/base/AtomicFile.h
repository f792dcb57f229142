#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>
#include <string_view>

#include "base/PosixFile.h"

namespace base {

// True if AtomicFile has the rights to make or replace the file, after making folders that are missing.
bool CanReplace(const std::string& hostPath);

// A file that takes the place of another only as a whole: written under another name in the same folder and
// renamed over the target by Commit. Without Commit nothing has changed. A symbolic link stays, its target is
// replaced; rights, owner and further names (hard links) of an old file stay. A write-protected target is
// refused. All operations throw base::RunTimeError.
class AtomicFile {
  public:
    explicit AtomicFile(const std::string& hostPath);
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    void Write(std::string_view bytes) { WriteBytes(file_, target_, bytes); }
    void SetModified(const struct timespec& time) { modified_ = time; }
    // Settled: on the disk when this returns, which may take seconds on a busy one. Quick: in the system's
    // hands; a power failure leaves the old file or the new one.
    enum class Durability { Settled, Quick };
    void Commit(Durability durability = Durability::Settled);

  private:
    void OpenBeside();
    bool TakeRights(const struct stat& old);
    void Stamp(const Descriptor& file) const;
    bool WriteInto();
    void Reserve(const Descriptor& into, off_t before, off_t size) const;

    std::string target_;
    std::string temporary_;
    Descriptor file_;
    std::optional<struct timespec> modified_;
    bool staysItself_ = false;  // another file in its place would lose names or rights
};

}  // namespace base
