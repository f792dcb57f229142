#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace sim {

// A set of small numbers that is worked off in their order.
class Marks {
  public:
    static constexpr std::size_t None = ~std::size_t{0};

    explicit Marks(std::size_t count = 0) : words_((count + 63) / 64), count_(count) {}

    void Set(std::size_t number) { words_[number / 64] |= Bit(number); }
    void SetAll() {
        for (std::size_t number = 0; number < count_; ++number) Set(number);
    }
    // Takes out the first number that is not below `from`; None if there is none.
    std::size_t Take(std::size_t from) {
        std::uint64_t mask = ~(Bit(from) - 1);
        for (std::size_t word = from / 64; word < words_.size(); ++word, mask = ~std::uint64_t{0}) {
            const std::uint64_t found = words_[word] & mask;
            if (found == 0) continue;
            const auto number = 64 * word + static_cast<std::size_t>(std::countr_zero(found));
            words_[word] &= ~Bit(number);
            return number;
        }
        return None;
    }

  private:
    static std::uint64_t Bit(std::size_t number) { return std::uint64_t{1} << number % 64; }

    std::vector<std::uint64_t> words_;
    std::size_t count_;
};

}  // namespace sim
