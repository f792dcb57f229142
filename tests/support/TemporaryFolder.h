#pragma once

#include <filesystem>
#include <string>

namespace doubles {

// A folder below the temporary folder, removed with the object.
class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }
    void Write(const std::string& name, const std::string& bytes) const;  // makes folders on the way
    std::string Read(const std::string& name) const;                      // empty without the file
    bool Exists(const std::string& name) const;
    std::string Logic(const std::string& name = "") const;  // C:\… of a name below it (host root)

  private:
    std::filesystem::path path_;
};

}  // namespace doubles
