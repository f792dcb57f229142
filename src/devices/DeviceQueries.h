#pragma once

#include <cstdint>
#include <string>

// The query texts, which users' own databases are made for. Keys are put in as decimal numbers.
namespace devices {

std::string ManufacturersQuery();
std::string PackagesQuery();
std::string MnemonicQuery(std::int32_t deviceKey);
// A row for every library that carries the device.
std::string DevicesQuery(std::int32_t manufacturerKey, std::int32_t packageKey);
std::string MnemonicRecordQuery(std::int32_t deviceKey);
std::string AlternatePartNumbersQuery(std::int32_t deviceKey);
std::string RelatedMnemonicsQuery(std::int32_t mnemonicKey);
std::string PinListQuery(std::int32_t mnemonicKey);
std::string NotesQuery(std::int32_t mnemonicKey);

}  // namespace devices
