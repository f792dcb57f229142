#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// What PROPERTY statements set: how pins and macrocells of complex devices behave beside their equations.
namespace front {

enum class PropertyKind : std::uint8_t { Slew, Driver, Power, Keeper, PullUp, Jtag, Protect, Signature };

struct PropertyRow {
    PropertyKind Kind;
    std::string_view Word;
    // The first one is what holds without the statement. Without values it takes a number of 16 bits.
    std::array<std::string_view, 2> Values;
    bool OfNames = false;  // of single outputs; else of the whole device
};

const PropertyRow* FindProperty(std::string_view word);  // in any case; null if there is none
// The index of a value, or the number itself. Nothing if it is none of the property.
std::optional<int> PropertyValue(const PropertyRow& row, std::string_view text);
std::string PropertyWords();  // "SLEW, DRIVER, …"

}  // namespace front
