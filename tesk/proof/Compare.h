#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

// Inside the room: two functions told over columns that are found as they come.
namespace proof {

// A column: what it is called, and which one it is.
struct Key {
    std::size_t What = 0;
    std::size_t At = 0;
    auto operator<=>(const Key&) const = default;  // NOLINT(modernize-use-nullptr)
};

struct KeyLiteral {
    Key Of;
    bool Negated = false;
    auto operator<=>(const KeyLiteral&) const = default;  // NOLINT(modernize-use-nullptr)
};
using Product = std::vector<KeyLiteral>;
using Products = std::vector<Product>;

struct Point {
    std::map<Key, bool> Values;
    bool Found = false;  // what the first function gives there
};

struct Comparison {
    enum class Result { Same, Different, Open };
    Result Is = Result::Same;
    Point At;  // of Different
};

// Whether (rows XOR rows2) XOR inverted is 1 where `on` is and 0 where neither `on` nor `dontCare` is.
// `rows2` may be null.
Comparison Compare(const Products& rows, const Products* rows2, bool inverted, const Products& on,
                   const Products& dontCare, std::uint64_t bound);

}  // namespace proof
