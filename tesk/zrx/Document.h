#pragma once

#include <array>
#include <string>
#include <string_view>

#include "fit/Fitter.h"
#include "model/Header.h"

namespace zrx {

// A compiled design as its .DOC tells it: header, names, and the expanded product terms.
struct Document {
    std::array<std::string, model::headerWords.size()> Header;
    std::string Device;  // that it was compiled for
    fit::Design Design;  // pins as in the .DOC; each function has its true sum or that of its complement
    std::string Error;   // empty: sound

    const std::string& Name() const { return Header[0]; }
    std::size_t Terms() const;
};

// What the reader takes; more is an error.
struct DocumentLimits {
    static constexpr std::size_t FileBytes = 16u << 20;
    static constexpr std::size_t Signals = 4096;
    static constexpr std::size_t Literals = 1'000'000;
};

// Takes any bytes. A document without an error holds together: names are unique, literals name a signal.
Document ReadDocument(std::string_view text);

// Writes out what the device adds that a design was compiled for: the clock of registers without one, and the
// pin that enables them. Empty if every register has a clock then, else the name of one that has none.
std::string AddImplied(fit::Design& design, const fit::Device* device);

// Gives every data input both sums. A complement that takes too much work gets one with more terms than any
// macrocell has, so that it is never chosen.
void CompleteSums(fit::Design& design);

// Parts sums that have more terms than `most` into several, the further ones in macrocells of their own.
// Returns how many were added.
std::size_t Split(fit::Design& design, std::size_t most);

}  // namespace zrx
