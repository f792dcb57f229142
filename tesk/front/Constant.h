#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace front {

// A number as binary digits, the least significant first: '0', '1', or 'X' for "don't care". What lies beyond
// the last digit is 0.
struct Constant {
    std::string Digits;

    char At(std::size_t weight) const { return weight < Digits.size() ? Digits[weight] : '0'; }
    bool HasDontCare() const { return Digits.find('X') != std::string::npos; }
    bool operator==(const Constant&) const = default;
};

// `base` is one of b o d h in any case. Nothing if a digit does not belong to the base or there is none, or
// if the number has more than `Limits::ConstantDigits` digits (a decimal one: more than 64 bits).
std::optional<Constant> ParseConstant(char base, std::string_view digits);

bool IsHexadecimal(std::string_view text);  // hexadecimal digits and X, at least one
bool IsDecimal(std::string_view text);

// A decimal number from 0 to `most`.
std::optional<int> ParseDecimal(std::string_view text, int most);

}  // namespace front
