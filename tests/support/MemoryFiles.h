#pragma once

#include <map>
#include <string>

#include "base/RunTimeError.h"
#include "base/Text.h"
#include "platform/FileSystem.h"

namespace doubles {

// Files by upper-case logic path, for logic that needs little of a file system: no folders, no lists.
class MemoryFiles : public platform::FileSystem {
  public:
    std::map<std::string, std::string> Files;
    int FailReads = 0;   // error number, 0 for none
    int FailWrites = 0;  // error number, 0 for none

    bool FileExists(std::string_view path) const override { return Files.contains(base::Upper(path)); }
    bool DirectoryExists(std::string_view) const override { return true; }
    std::optional<platform::FileStamp> Stamp(std::string_view path) const override {
        if (!FileExists(path)) return std::nullopt;
        return platform::FileStamp{ReadFile(path).size(), 0};
    }
    std::string ReadFile(std::string_view path) const override {
        if (FailReads != 0) throw base::RunTimeError(FailReads);
        if (!FileExists(path)) throw base::RunTimeError(base::errFileNotFound);
        return Files.at(base::Upper(path));
    }
    void WriteFile(std::string_view path, std::string_view bytes) override {
        if (FailWrites != 0) throw base::RunTimeError(FailWrites);
        Files[base::Upper(path)] = bytes;
    }
    void CopyFile(std::string_view from, std::string_view to) override { WriteFile(to, ReadFile(from)); }
    void DeleteFile(std::string_view path) override { Files.erase(base::Upper(path)); }
    void TrashFile(std::string_view path) override { DeleteFile(path); }
    void MakeDirectory(std::string_view) override {}
    std::vector<std::string> List(std::string_view) const override { return {}; }
    std::vector<std::string> ListFolders(std::string_view) const override { return {}; }
    std::string CurrentDirectory() const override { return "C:\\"; }
    void SetCurrentDirectory(std::string_view) override {}
    std::string ToHostPath(std::string_view path) const override { return std::string(path); }
    std::string FromHostPath(std::string_view path) const override { return std::string(path); }
};

}  // namespace doubles
