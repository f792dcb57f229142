#include "front/Property.h"

#include "base/Text.h"
#include "model/Number.h"

namespace front {
namespace {

constexpr std::array kRows{
    PropertyRow{PropertyKind::Slew, "SLEW", {"SLOW", "FAST"}, true},
    PropertyRow{PropertyKind::Driver, "DRIVER", {"PUSH_PULL", "OPEN_DRAIN"}, true},
    PropertyRow{PropertyKind::Power, "POWER", {"FULL", "LOW"}, true},
    PropertyRow{PropertyKind::Keeper, "KEEPER", {"ON", "OFF"}},
    PropertyRow{PropertyKind::PullUp, "PULLUP", {"OFF", "ON"}},
    PropertyRow{PropertyKind::Jtag, "JTAG", {"ON", "OFF"}},
    PropertyRow{PropertyKind::Protect, "PROTECT", {"OFF", "ON"}},
    PropertyRow{PropertyKind::Signature, "SIGNATURE", {}},
};

}  // namespace

const PropertyRow* FindProperty(std::string_view word) {
    for (const PropertyRow& row : kRows)
        if (base::EqualNoCase(row.Word, word)) return &row;
    return nullptr;
}

std::optional<int> PropertyValue(const PropertyRow& row, std::string_view text) {
    for (std::size_t i = 0; i < row.Values.size(); ++i)
        if (!row.Values[i].empty() && base::EqualNoCase(row.Values[i], text)) return static_cast<int>(i);
    if (!row.Values.front().empty()) return std::nullopt;
    return model::WholeNumber<std::uint16_t>(text, 16);
}

std::string PropertyWords() {
    std::string words;
    for (const PropertyRow& row : kRows) words += (words.empty() ? "" : ", ") + std::string(row.Word);
    return words;
}

}  // namespace front
