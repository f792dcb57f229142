#pragma once

#include <vector>

#include "cpld/ReadBack.h"

namespace cpld {

// The longest way from pins and registers to pins and registers. Each exclusive or and each foldback that it
// passes is a level; a cascade is none.
struct WorstPath {
    std::vector<std::size_t> Cells;  // of the chip, from the first to the last: one a level
    proof::Signal From;              // what the first one reads
    bool HasLoop = false;            // logic that reads itself without a register; the way is cut there
};

// Of the macrocells of `used` and what they read.
WorstPath FindWorstPath(const ChipOfParts& chip, const std::vector<std::size_t>& used);

}  // namespace cpld
