#include "base/Number.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

#include "base/RunTimeError.h"
#include "base/Text.h"

namespace base {
namespace {

template <typename T>
T Narrow(std::int64_t value) {
    if (value < std::numeric_limits<T>::min() || value > std::numeric_limits<T>::max()) {
        throw RunTimeError(errOverflow);
    }
    return static_cast<T>(value);
}

template <typename T>
T RoundTo(double value) {
    const double even = std::nearbyint(value);  // the default mode rounds halves to even
    if (!(even >= static_cast<double>(std::numeric_limits<T>::min()) &&
          even <= static_cast<double>(std::numeric_limits<T>::max()))) {
        throw RunTimeError(errOverflow);
    }
    return static_cast<T>(even);
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Takes digits from `at` on and tells how many.
std::size_t SkipDigits(std::string_view text, std::size_t& at) {
    const std::size_t from = at;
    while (at < text.size() && IsDigit(text[at])) ++at;
    return at - from;
}

// Of a number that double can't hold: whether it is too large, not too small. `text` has no sign.
bool IsLarge(std::string_view text) {
    const std::string_view digits = text.substr(0, text.find_first_of("eE"));
    std::string_view power = text.substr(std::min(digits.size() + 1, text.size()));
    if (power.starts_with('+')) power.remove_prefix(1);
    int exponent = 0;
    const auto result = std::from_chars(power.data(), power.data() + power.size(), exponent);
    if (result.ec == std::errc::result_out_of_range) return power.front() != '-';
    const auto point = static_cast<std::int64_t>(std::min(digits.find('.'), digits.size()));
    const auto first = static_cast<std::int64_t>(digits.find_first_not_of("0."));
    return point - first + exponent > 0;
}

// What Parse has found to be a number. No locale has a say in it.
double Convert(std::string_view text) {
    const bool isNegative = text.front() == '-';
    if (isNegative || text.front() == '+') text.remove_prefix(1);
    double value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc()) value = IsLarge(text) ? std::numeric_limits<double>::infinity() : 0;
    return isNegative ? -value : value;
}

void SkipBlanks(std::string_view& text) {
    while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
}

// Of the decimal number that the text begins with; 0 without one.
std::size_t NumberLength(std::string_view text) {
    std::size_t at = 0;
    if (at < text.size() && (text[at] == '+' || text[at] == '-')) ++at;
    std::size_t digits = SkipDigits(text, at);
    if (at < text.size() && text[at] == '.') {
        ++at;
        digits += SkipDigits(text, at);
    }
    if (digits == 0) return 0;
    std::size_t exponent = at;
    if (exponent < text.size() && (text[exponent] == 'e' || text[exponent] == 'E')) {
        ++exponent;
        if (exponent < text.size() && (text[exponent] == '+' || text[exponent] == '-')) ++exponent;
        if (SkipDigits(text, exponent) > 0) return exponent;
    }
    return at;
}

std::string_view WithoutBlanks(std::string_view text) {
    SkipBlanks(text);
    while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
    return text;
}

std::optional<double> Parse(std::string_view text) {
    text = WithoutBlanks(text);
    if (text.empty() || NumberLength(text) != text.size()) return std::nullopt;
    return Convert(text);
}

// The digits behind "&H" and "&O".
struct Pattern {
    std::uint32_t Bits = 0;
    std::errc Error{};
    std::size_t Length = 0;  // with the prefix
};

// None if the text has no such prefix.
std::optional<Pattern> LeadingPattern(std::string_view text) {
    if (text.size() < 2 || text[0] != '&') return std::nullopt;
    const char letter = UpperChar(text[1]);
    if (letter != 'H' && letter != 'O') return std::nullopt;
    Pattern pattern;
    const auto [end, error] =
        std::from_chars(text.data() + 2, text.data() + text.size(), pattern.Bits, letter == 'H' ? 16 : 8);
    pattern.Error = error;
    pattern.Length = static_cast<std::size_t>(end - text.data());
    return pattern;
}

double ParseOrThrow(std::string_view text) {
    const auto value = Parse(text);
    if (!value) throw RunTimeError(errTypeMismatch);
    return *value;
}

}  // namespace

std::int16_t ToInt16(std::int64_t value) { return Narrow<std::int16_t>(value); }
std::int32_t ToInt32(std::int64_t value) { return Narrow<std::int32_t>(value); }
std::int16_t Add16(std::int16_t a, std::int16_t b) { return ToInt16(std::int64_t{a} + b); }
std::int16_t Multiply16(std::int16_t a, std::int16_t b) { return ToInt16(std::int64_t{a} * b); }
std::int16_t RoundToInt16(double value) { return RoundTo<std::int16_t>(value); }
std::int32_t RoundToInt32(double value) { return RoundTo<std::int32_t>(value); }
std::int16_t TextToInt16(std::string_view text) { return RoundTo<std::int16_t>(ParseOrThrow(text)); }
std::int32_t TextToInt32(std::string_view text) { return RoundTo<std::int32_t>(ParseOrThrow(text)); }

bool IsNumericText(std::string_view text) {
    text = WithoutBlanks(text);
    const auto pattern = LeadingPattern(text);
    if (pattern) return pattern->Error == std::errc() && pattern->Length == text.size();
    return Parse(text).has_value();
}

double LeadingNumber(std::string_view text) {
    SkipBlanks(text);
    if (const auto pattern = LeadingPattern(text)) {
        if (pattern->Error == std::errc::result_out_of_range) throw RunTimeError(errOverflow);
        const std::uint32_t bits = pattern->Bits;
        return bits <= 0xFFFF ? static_cast<std::int16_t>(bits) : static_cast<std::int32_t>(bits);
    }
    const std::size_t length = NumberLength(text);
    return length == 0 ? 0 : Convert(text.substr(0, length));
}

std::string SingleToText(float value) {
    constexpr int digits = 7;
    std::array<char, 40> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), static_cast<double>(value),
                                   std::chars_format::general, digits);
    std::string text = Upper({buffer.data(), end.ptr});
    if (text.compare(0, 2, "0.") == 0) text.erase(0, 1);
    if (text.compare(0, 3, "-0.") == 0) text.erase(1, 1);
    return text.front() == '-' ? text : " " + text;
}

}  // namespace base
