#pragma once

#include <string>

#include "platform/Database.h"
#include "platform/FileSystem.h"

namespace platform::qt {

// SQLite files as they are. The tables of Jet files are read by the program `jetreader` into a database in
// memory, where the same queries run.
class HostDatabaseEngine : public DatabaseEngine {
  public:
    // `reader`: host path of jetreader, the one beside the running program unless given.
    explicit HostDatabaseEngine(const FileSystem& files, std::string reader = {});

    std::unique_ptr<Database> OpenDatabase(const std::string& path) override;

  private:
    const FileSystem& files_;
    std::string reader_;
};

}  // namespace platform::qt
