#include "front/Constant.h"

#include <cstdint>

#include "base/Text.h"
#include "front/Limits.h"

namespace front {

namespace {

int DigitValue(char c) {
    c = base::UpperChar(c);
    if (c >= '0' && c <= '9') return c - '0';
    return c >= 'A' && c <= 'F' ? c - 'A' + 10 : 99;
}

std::optional<Constant> ParseDigits(std::string_view digits, int width) {
    Constant result;
    for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit) {
        const int value = DigitValue(*digit);
        const bool free = base::UpperChar(*digit) == 'X';
        if (!free && value >= (1 << width)) return std::nullopt;
        for (int bit = 0; bit < width; ++bit)
            result.Digits += free ? 'X' : (value >> bit & 1) != 0 ? '1' : '0';
    }
    if (result.Digits.size() > Limits::ConstantDigits) return std::nullopt;
    return result;
}

}  // namespace

std::optional<Constant> ParseConstant(char base, std::string_view digits) {
    if (digits.empty() || digits.size() > Limits::ConstantDigits) return std::nullopt;
    switch (base::UpperChar(base)) {
        case 'B':
            return ParseDigits(digits, 1);
        case 'O':
            return ParseDigits(digits, 3);
        case 'H':
            return ParseDigits(digits, 4);
        case 'D':
            break;
        default:
            return std::nullopt;
    }
    std::uint64_t value = 0;
    for (char c : digits) {
        if (c < '0' || c > '9') return std::nullopt;
        if (__builtin_mul_overflow(value, std::uint64_t{10}, &value) ||
            __builtin_add_overflow(value, static_cast<std::uint64_t>(c - '0'), &value))
            return std::nullopt;
    }
    Constant result;
    for (; value != 0; value >>= 1) result.Digits += (value & 1) != 0 ? '1' : '0';
    return result;
}

bool IsHexadecimal(std::string_view text) {
    for (char c : text)
        if (DigitValue(c) > 15 && base::UpperChar(c) != 'X') return false;
    return !text.empty();
}

bool IsDecimal(std::string_view text) {
    for (char c : text)
        if (c < '0' || c > '9') return false;
    return !text.empty();
}

std::optional<int> ParseDecimal(std::string_view text, int most) {
    if (!IsDecimal(text)) return std::nullopt;
    std::int64_t value = 0;
    for (char c : text) {
        value = value * 10 + (c - '0');
        if (value > most) return std::nullopt;
    }
    return static_cast<int>(value);
}

}  // namespace front
