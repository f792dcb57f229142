#pragma once

#include <charconv>
#include <optional>
#include <string_view>

namespace model {

// The number that is the whole text, in digits of the radix, a "-" before them where the type has signs;
// nothing if it is anything else, or more than the type holds.
template <typename T>
std::optional<T> WholeNumber(std::string_view text, int radix = 10) {
    T value{};
    const char* end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), end, value, radix);
    return parsed.ec == std::errc() && parsed.ptr == end ? std::optional(value) : std::nullopt;
}

}  // namespace model
