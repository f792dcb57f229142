#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "logic/Cover.h"

// Inside the room: two functions told over columns that are found as they come.
namespace proof {

// A column: what it is called, and which one it is.
struct Key {
    std::size_t What = 0;
    std::size_t At = 0;
    auto operator<=>(const Key&) const = default;
};

// A product as columns and the values that they must have; nothing if it asks for both values of one.
class Cube {
  public:
    void Add(const Key& key, bool value);
    bool IsEmpty() const { return isEmpty_; }
    const std::map<Key, bool>& Values() const { return values_; }

  private:
    std::map<Key, bool> values_;
    bool isEmpty_ = false;
};
using Products = std::vector<Cube>;

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
