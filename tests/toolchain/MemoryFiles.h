#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "base/RunTimeError.h"
#include "base/Text.h"
#include "platform/FileSystem.h"

namespace toolchain {

// Files in memory, found without regard to case; keeps what went to the trash.
class MemoryFiles : public platform::FileSystem {
  public:
    std::map<std::string, std::string> Files;  // by the name as written
    std::vector<std::string> Trash;            // names as asked for
    std::set<std::string> Locked;              // names in upper case: every change is error 75
    int WriteError = 0;

    bool FileExists(std::string_view path) const override { return Name(path) != nullptr; }
    bool DirectoryExists(std::string_view) const override { return true; }
    std::optional<platform::FileStamp> Stamp(std::string_view path) const override {
        if (!FileExists(path)) return std::nullopt;
        return platform::FileStamp{.Size = Files.at(*Name(path)).size(), .Modified = 0};
    }
    std::string ReadFile(std::string_view path) const override {
        if (!FileExists(path)) throw base::RunTimeError(base::errFileNotFound);
        return Files.at(*Name(path));
    }
    void WriteFile(std::string_view path, std::string_view bytes) override {
        if (WriteError != 0) throw base::RunTimeError(WriteError);
        Files[FileExists(path) ? *Name(path) : std::string(path)] = bytes;
    }
    void CopyFile(std::string_view from, std::string_view to) override { WriteFile(to, ReadFile(from)); }
    void DeleteFile(std::string_view path) override {
        if (!FileExists(path)) throw base::RunTimeError(base::errFileNotFound);
        if (Locked.count(base::Upper(path)) != 0) throw base::RunTimeError(base::errPathFileAccess);
        Files.erase(*Name(path));
    }
    void TrashFile(std::string_view path) override {
        DeleteFile(path);
        Trash.emplace_back(path);
    }
    // Only a pattern that ends in ".*".
    std::vector<std::string> List(std::string_view pattern) const override {
        const std::string head = base::Upper(pattern.substr(0, pattern.size() - 1));
        std::vector<std::string> names;
        for (const auto& file : Files) {
            if (!base::Upper(file.first).starts_with(head)) continue;
            names.push_back(file.first.substr(file.first.rfind('\\') + 1));
        }
        return names;
    }
    std::string CurrentDirectory() const override { return "C:\\"; }
    void SetCurrentDirectory(std::string_view) override {}
    std::string ToHostPath(std::string_view path) const override { return std::string(path); }
    std::string FromHostPath(std::string_view path) const override { return std::string(path); }

  private:
    const std::string* Name(std::string_view path) const {
        for (const auto& file : Files) {
            if (base::EqualNoCase(file.first, path)) return &file.first;
        }
        return nullptr;
    }
};

}  // namespace toolchain
