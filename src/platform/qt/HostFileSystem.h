#pragma once

#include <mutex>

#include "platform/FileSystem.h"
#include "platform/PathMap.h"

namespace platform::qt {

// The files of a POSIX host. A path without drive is taken from the current directory, which is also the
// process's, so that started programs inherit it. All operations may be called from any thread.
class HostFileSystem : public FileSystem {
  public:
    explicit HostFileSystem(PathMap paths = PathMap());

    bool FileExists(std::string_view path) const override;
    bool DirectoryExists(std::string_view path) const override;
    std::optional<FileStamp> Stamp(std::string_view path) const override;

    std::string ReadFile(std::string_view path) const override;
    void WriteFile(std::string_view path, std::string_view bytes) override;
    void CopyFile(std::string_view from, std::string_view to) override;
    void DeleteFile(std::string_view path) override;
    void MakeDirectory(std::string_view path) override;
    void TrashFile(std::string_view path) override;

    std::vector<std::string> List(std::string_view pattern) const override;
    std::vector<std::string> ListFolders(std::string_view folder) const override;

    std::string CurrentDirectory() const override;
    void SetCurrentDirectory(std::string_view path) override;

    std::string ToHostPath(std::string_view path) const override;
    std::string FromHostPath(std::string_view hostPath) const override;

  private:
    PathMap paths_;
    mutable std::mutex mutex_;  // of current_
    std::string current_;
};

// True if the name matches a pattern of `*` and `?`, without regard to ASCII case. `*.*` matches every name.
bool MatchesPattern(std::string_view name, std::string_view pattern);

}  // namespace platform::qt
