#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

struct FileStamp {
    std::uint64_t Size = 0;     // bytes
    std::int64_t Modified = 0;  // nanoseconds since 1970
    bool operator==(const FileStamp&) const = default;
};

// Files under logic paths. Operations that fail throw base::RunTimeError: 53 file not found, 76 path not
// found, 75 path/file access error (rights, in use, a folder in the place of a file), 61 disk full,
// 7 out of memory for a file above MaxFileSize.
class FileSystem {
  public:
    static constexpr std::uint64_t MaxFileSize = std::uint64_t{1} << 29;  // bytes that ReadFile takes

    virtual ~FileSystem() = default;

    virtual bool FileExists(std::string_view path) const = 0;       // a regular file
    virtual bool DirectoryExists(std::string_view path) const = 0;  // with or without final backslash
    virtual std::optional<FileStamp> Stamp(std::string_view path) const = 0;

    virtual std::string ReadFile(std::string_view path) const = 0;
    // Writes beside the target and renames over it: a failure leaves the old file whole. Keeps the rights.
    virtual void WriteFile(std::string_view path, std::string_view bytes) = 0;
    virtual void CopyFile(std::string_view from, std::string_view to) = 0;  // keeps the modification time
    virtual void DeleteFile(std::string_view path) = 0;
    virtual void MakeDirectory(std::string_view path) = 0;  // and those above it; there already is no error
    virtual void TrashFile(std::string_view path) = 0;  // to the desktop's trash; error 75 if there is none

    // The names (without folder) that match a path whose last part holds `*` and `?`, without regard to case,
    // files only, in the directory order of the file system. A missing folder gives none.
    virtual std::vector<std::string> List(std::string_view pattern) const = 0;
    // The names of the folders in a folder but for hidden ones, in byte order without regard to case.
    virtual std::vector<std::string> ListFolders(std::string_view folder) const = 0;

    virtual std::string CurrentDirectory() const = 0;  // no final backslash but for C:\.
    virtual void SetCurrentDirectory(std::string_view path) = 0;

    virtual std::string ToHostPath(std::string_view path) const = 0;  // for dialogs and child processes
    virtual std::string FromHostPath(std::string_view hostPath) const = 0;
};

}  // namespace platform
