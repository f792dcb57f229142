#pragma once

#include <random>

#include "cpld/Problem.h"

namespace cpld {

// Where everything is.
struct Layout {
    std::vector<std::size_t> Cells;  // of each unit: its last macrocell
    std::vector<std::size_t> Pads;   // of each input
    // Of each block and switch: the source that it brings.
    std::vector<std::vector<std::optional<std::size_t>>> Switches;
};

// What is missing where the search ended.
struct Shortage {
    std::vector<std::size_t> Unswitched;  // sources that a block reads and no switch is left for, by block
    std::vector<std::size_t> Foldbacks;   // more than it has terms for, by block
    std::optional<std::size_t> Unit;      // a unit for which no place was left
    std::size_t Total = 0;
};

struct SearchResult {
    std::optional<Layout> Found;
    Shortage Missing;
    std::size_t Steps = 0;
};

// The most sources that switches can bring in: `masks` tell for each source the switches that can. `owners`
// are the sources by switch. Gives how many are left over.
std::size_t Match(const std::vector<std::uint64_t>& masks, std::array<std::int16_t, BlockSwitches>& owners);

// Looks for places, bounded by steps: the result is the same on every run.
SearchResult Search(const Device& device, const Package& package, const Problem& problem, bool jtagPads,
                    std::size_t steps);

}  // namespace cpld
