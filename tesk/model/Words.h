#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

namespace model {

// A word for each of the `count` values of an enumeration. A table with a value left out or out of place does
// not compile.
template <typename Enum, std::size_t count>
class Words {
  public:
    using Row = std::pair<Enum, std::string_view>;

    consteval explicit Words(const Row (&rows)[count]) {
        for (std::size_t i = 0; i < count; ++i) {
            if (static_cast<std::size_t>(rows[i].first) != i) throw "a value out of place";
            words_[i] = rows[i].second;
        }
    }

    constexpr std::string_view Of(Enum value) const { return words_[static_cast<std::size_t>(value)]; }
    constexpr std::optional<Enum> Find(std::string_view word) const {
        for (std::size_t i = 0; i < count; ++i)
            if (words_[i] == word) return static_cast<Enum>(i);
        return std::nullopt;
    }

  private:
    std::array<std::string_view, count> words_;
};

}  // namespace model
