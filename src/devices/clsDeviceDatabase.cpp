#include "devices/clsDeviceDatabase.h"

#include <array>

#include "base/RunTimeError.h"
#include "devices/DeviceQueries.h"

namespace devices {
namespace {

// What the queries need of each table. Asked for at the opening, so that a foreign file is told there and not
// in the middle of a choice.
constexpr std::array tableChecks = {
    "Select PKey, Name From Manufacturers Where 1 = 0",
    "Select PKey, Name From Packages Where 1 = 0",
    "Select PKey, Name, ManufacturerKey, PackageKey, MnemonicKey From Devices Where 1 = 0",
    "Select PKey, Name, PinCount, SpecialOptions From Mnemonics Where 1 = 0",
    "Select MnemonicKey, LibraryKey From MnemonicLibrary Where 1 = 0",
    "Select PKey From Libraries Where 1 = 0",
    "Select DeviceKey, PartNumber From AlternatePartNumbers Where 1 = 0",
    "Select MnemonicKey, Name From RelatedMnemonics Where 1 = 0",
    "Select MnemonicKey, Pin, Name From PinList Where 1 = 0",
    "Select MnemonicKey, Notes From Notes Where 1 = 0",
};

}  // namespace

bool clsDeviceDatabase::OpenDatabase() {
    CloseDatabase();
    try {
        database_ = engine_.OpenDatabase(path_);
        CheckTables();
        return true;
    } catch (const base::RunTimeError& error) {
        CloseDatabase();
        boxes_.MessageBox(
            {.Text = error.Description(), .Title = "Data Access Error", .Picture = platform::Icon::Warning});
        return false;
    }
}

void clsDeviceDatabase::CheckTables() {
    for (const char* query : tableChecks) database_->OpenRecordset(query);
}

clsDeviceDatabase::Recordset clsDeviceDatabase::GetListManufacturers() {
    return rsOpen(ManufacturersQuery());
}

clsDeviceDatabase::Recordset clsDeviceDatabase::GetListPackages() { return rsOpen(PackagesQuery()); }

std::string clsDeviceDatabase::GetMnemonic(std::int32_t deviceKey) {
    const Recordset rows = rsOpen(MnemonicQuery(deviceKey));
    return rows && !rows->IsBof() ? rows->Text("MName").value_or("") : "";
}

clsDeviceDatabase::Recordset clsDeviceDatabase::rsOpen(const std::string& query) {
    return database_ ? database_->OpenRecordset(query) : nullptr;
}

}  // namespace devices
