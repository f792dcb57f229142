#include "devices/DeviceReport.h"

#include "devices/DeviceQueries.h"

namespace devices {
namespace {

constexpr std::size_t pinColumns = 3;
constexpr std::size_t ruleWidth = 50;

template <typename Take>
void ForEachRow(clsDeviceDatabase& database, const std::string& query, Take take) {
    const auto rows = database.rsOpen(query);
    for (; rows && !rows->IsEof(); rows->MoveNext()) take(*rows);
}

std::vector<std::string> ReadColumn(clsDeviceDatabase& database, const std::string& query,
                                    const char* field) {
    std::vector<std::string> values;
    ForEachRow(database, query,
               [&](const platform::Recordset& row) { values.push_back(row.Text(field).value_or("")); });
    return values;
}

// Returns the mnemonic's key, 0 if the device has none.
std::int32_t ReadMnemonic(clsDeviceDatabase& database, std::int32_t deviceKey, DeviceFacts& facts) {
    const auto rows = database.rsOpen(MnemonicRecordQuery(deviceKey));
    if (!rows || rows->IsBof()) return 0;
    facts.HasMnemonic = true;
    facts.Mnemonic = rows->Text("Name").value_or("");
    facts.PinCount = rows->Text("PinCount").value_or("");
    facts.SpecialOptions = rows->Text("SpecialOptions").value_or("");
    return rows->Number("PKey").value_or(0);
}

std::string JoinOrNone(const std::vector<std::string>& values) {
    std::string joined;
    for (const std::string& value : values) joined += value + ", ";
    if (values.empty()) joined = "None, ";
    return joined.substr(0, joined.size() - 2);
}

std::string RightAligned(const std::string& text) {
    return text.size() < pinColumns ? std::string(pinColumns - text.size(), ' ') + text : text;
}

}  // namespace

DeviceFacts ReadDeviceFacts(clsDeviceDatabase& database, std::int32_t deviceKey) {
    DeviceFacts facts;
    const std::int32_t mnemonicKey = ReadMnemonic(database, deviceKey, facts);
    facts.AlternatePartNumbers = ReadColumn(database, AlternatePartNumbersQuery(deviceKey), "PartNumber");
    facts.RelatedMnemonics = ReadColumn(database, RelatedMnemonicsQuery(mnemonicKey), "Name");
    ForEachRow(database, PinListQuery(mnemonicKey), [&](const platform::Recordset& row) {
        facts.Pins.push_back({row.Text("Pin").value_or(""), row.Text("Name").value_or("")});
    });
    const auto notes = ReadColumn(database, NotesQuery(mnemonicKey), "Notes");
    if (!notes.empty()) facts.Notes = notes.front();
    return facts;
}

std::string DeviceReport(const DeviceFacts& facts) {
    const std::string end = "\r\n";
    const std::string rule = std::string(ruleWidth, '*') + end;
    std::string report;
    if (facts.HasMnemonic) {
        report += "Mnemonic:  " + facts.Mnemonic + end;
        report += "Pin Count:  " + facts.PinCount + end;
        report += "Special Options:  " + (facts.SpecialOptions.empty() ? "None" : facts.SpecialOptions) + end;
    }
    report += "Alternate Part Numbers:  " + JoinOrNone(facts.AlternatePartNumbers) + end;
    report += "Related Mnemonics:  " + JoinOrNone(facts.RelatedMnemonics) + end;
    report += end + rule + "Pin#     Function" + end;
    for (const auto& pin : facts.Pins) {
        report += "   " + RightAligned(pin.Number) + "     " + pin.Name + end;
    }
    return report + end + rule + "Device Notes:" + end + facts.Notes;
}

}  // namespace devices
