#include "support/TemporaryFolder.h"

#include <stdlib.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace doubles {

TemporaryFolder::TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "korvane-test-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

void TemporaryFolder::Write(const std::string& name, const std::string& bytes) const {
    std::filesystem::create_directories((path_ / name).parent_path());
    std::ofstream(path_ / name, std::ios::binary) << bytes;
}

std::string TemporaryFolder::Read(const std::string& name) const {
    std::ostringstream bytes;
    bytes << std::ifstream(path_ / name, std::ios::binary).rdbuf();
    return bytes.str();
}

bool TemporaryFolder::Exists(const std::string& name) const { return std::filesystem::exists(path_ / name); }

std::string TemporaryFolder::Logic(const std::string& name) const {
    std::string path = "C:" + path_.string() + (name.empty() ? "" : "/" + name);
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}

}  // namespace doubles
