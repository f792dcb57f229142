#include "front/Property.h"

#include <charconv>

#include "base/Text.h"

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
    std::uint16_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, 16);
    return error == std::errc() && end == text.data() + text.size() ? std::optional<int>(number)
                                                                    : std::nullopt;
}

std::string PropertyWords() {
    std::string words;
    for (const PropertyRow& row : kRows) words += (words.empty() ? "" : ", ") + std::string(row.Word);
    return words;
}

}  // namespace front
