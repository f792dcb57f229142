#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace front {

// Values of the names that an expression may use.
using Bindings = std::vector<std::pair<std::string, std::int64_t>>;

enum class ArithmeticResult {
    Ok,
    NotOne,      // the text is no expression over numbers and bound names
    OutOfRange,  // a division by zero or a value beyond 64 bits
};

// Decimal numbers, + - * / % and parentheses over whole numbers; "/" and "%" cut towards zero.
ArithmeticResult Evaluate(std::string_view text, const Bindings& names, std::int64_t& value);

}  // namespace front
