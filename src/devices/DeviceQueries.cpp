#include "devices/DeviceQueries.h"

namespace devices {
namespace {

std::string Number(std::int32_t key) { return std::to_string(key); }

}  // namespace

std::string ManufacturersQuery() { return "Select * From Manufacturers Order By Name"; }

std::string PackagesQuery() { return "Select * From Packages Order By Name"; }

std::string MnemonicQuery(std::int32_t deviceKey) {
    return "Select Mnemonics.Name as MName From Devices Inner Join Mnemonics "
           "On Devices.MnemonicKey = Mnemonics.PKey Where Devices.PKey = " +
           Number(deviceKey);
}

// Kept: Mnemonics is joined on the manufacturer's key, so a manufacturer without a mnemonic row of its own
// number lists no devices. The shipped catalogue is numbered for it.
std::string DevicesQuery(std::int32_t manufacturerKey, std::int32_t packageKey) {
    return "SELECT Devices.Name As DeviceName,"
           " Devices.PKey as DeviceKey"
           " FROM (((Manufacturers INNER JOIN (Devices INNER JOIN Packages ON Devices.PackageKey ="
           " Packages.PKey) ON Manufacturers.PKey = Devices.ManufacturerKey) INNER JOIN MnemonicLibrary"
           " ON Devices.MnemonicKey = MnemonicLibrary.MnemonicKey) INNER JOIN Libraries"
           " ON MnemonicLibrary.LibraryKey = Libraries.PKey) INNER JOIN Mnemonics"
           " ON Manufacturers.PKey = Mnemonics.PKey"
           " WHERE Devices.PackageKey = " +
           Number(packageKey) + " AND Devices.ManufacturerKey = " + Number(manufacturerKey) +
           " Order By Devices.Name";
}

std::string MnemonicRecordQuery(std::int32_t deviceKey) {
    return "Select Mnemonics.* From Devices Inner Join Mnemonics On Devices.MnemonicKey = Mnemonics.PKey"
           " Where Devices.PKey = " +
           Number(deviceKey);
}

std::string AlternatePartNumbersQuery(std::int32_t deviceKey) {
    return "Select * From AlternatePartNumbers Where DeviceKey = " + Number(deviceKey) +
           " Order By PartNumber";
}

std::string RelatedMnemonicsQuery(std::int32_t mnemonicKey) {
    return "Select * From RelatedMnemonics Where MnemonicKey = " + Number(mnemonicKey) + " Order By Name";
}

std::string PinListQuery(std::int32_t mnemonicKey) {
    return "Select * From PinList Where MnemonicKey = " + Number(mnemonicKey);
}

std::string NotesQuery(std::int32_t mnemonicKey) {
    return "Select Notes From Notes Where MnemonicKey = " + Number(mnemonicKey);
}

}  // namespace devices
