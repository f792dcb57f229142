#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/Database.h"
#include "platform/Dialogs.h"

namespace devices {

// The program's thin layer over the device reference database. Nothing is cached. Without an open database
// the queries give nothing.
class clsDeviceDatabase {
  public:
    using Recordset = std::unique_ptr<platform::Recordset>;

    clsDeviceDatabase(platform::DatabaseEngine& engine, platform::Dialogs& boxes)
        : engine_(engine), boxes_(boxes) {}

    const std::string& DatabasePath() const { return path_; }
    void DatabasePath(const std::string& path) { path_ = path; }

    // False after a box with the engine's words: the caller goes on with no database. A file that lacks one
    // of the catalogue's tables or columns counts as none.
    bool OpenDatabase();
    void CloseDatabase() { database_.reset(); }

    Recordset GetListManufacturers();
    Recordset GetListPackages();
    std::string GetMnemonic(std::int32_t deviceKey);  // empty for an unknown device

    // Throws base::RunTimeError with the engine's words.
    Recordset rsOpen(const std::string& query);
    static void rsClose(Recordset& recordset) { recordset.reset(); }

  private:
    void CheckTables();

    platform::DatabaseEngine& engine_;
    platform::Dialogs& boxes_;
    std::string path_;
    std::unique_ptr<platform::Database> database_;
};

}  // namespace devices
