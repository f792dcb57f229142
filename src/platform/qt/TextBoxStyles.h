#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "platform/RichTextBox.h"

namespace platform::qt {

// The whole look of a character.
struct CharStyle {
    CharFormat Format;
    std::string FontName;
    int FontSize = 1000;  // hundredths of a point
    bool operator==(const CharStyle&) const = default;
};

// Gives each look in use the number that the control keeps with every byte. There are 256 numbers, of which
// 32 to 39 belong to the control itself.
class StyleTable {
  public:
    using Number = std::uint8_t;
    using NumberSet = std::bitset<256>;
    // Called for each number whose look changes.
    using Define = std::function<void(Number, const CharStyle&)>;
    // Numbers that texts or histories still bear; called only if the table is full.
    using InUse = std::function<NumberSet()>;

    StyleTable(Define define, InUse inUse);

    // Forgets all looks; number 0 becomes `first`, and so do the numbers that are free.
    void Reset(const CharStyle& first);
    // The number of a look, a new one if need be. With every number in use it is the likest look's.
    Number NumberOf(const CharStyle& style);
    const CharStyle& StyleOf(Number number) const { return styles_[number]; }
    // Frees what is not in `used`; freed numbers take the look of `plain`, so that a large font that has
    // gone does not keep the lines tall.
    void KeepOnly(const NumberSet& used, const CharStyle& plain);

    // While held, numbers given out stay although no text bears them yet.
    void Hold() { ++holds_; }
    void Unhold() {
        if (--holds_ == 0) held_.reset();
    }

  private:
    std::optional<std::size_t> FreeNumber() const;
    // With every number taken.
    Number Likest(const CharStyle& style) const;

    Define define_;
    InUse inUse_;
    std::array<CharStyle, 256> styles_;
    NumberSet taken_;
    NumberSet held_;
    int holds_ = 0;
};

}  // namespace platform::qt
