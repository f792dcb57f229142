#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace front {

// The files of a run. Names are whole paths as the caller of the run gave them.
class Files {
  public:
    virtual ~Files() = default;
    // Nothing if the file cannot be read or holds more than `maxBytes`.
    virtual std::optional<std::string> Read(std::string_view path, std::size_t maxBytes) = 0;
    // The file is the old one or the new one, never a part. Empty if done, else why not.
    virtual std::string Write(std::string_view path, std::string_view bytes) = 0;
    // One name for one file, however it was spelled.
    virtual std::string Identity(std::string_view path) = 0;
};

// The path of `name` in the folder of `path`; `name` itself if it is a whole path.
std::string Beside(std::string_view path, std::string_view name);
// What stands behind the last separator.
std::string_view FileName(std::string_view path);

}  // namespace front
