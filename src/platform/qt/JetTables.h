#pragma once

#include <memory>
#include <string>

#include "platform/qt/SqlDatabase.h"

namespace platform::qt {

// The tables of a Jet file in a database in memory. `reader`: host path of jetreader. Throws
// base::RunTimeError if the file can't be read in whole.
std::unique_ptr<SqlDatabase> ReadJetFile(const std::string& reader, const std::string& hostPath);

}  // namespace platform::qt
