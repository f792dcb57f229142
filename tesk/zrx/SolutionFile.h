#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "zrx/Search.h"

// What a search leaves for the libraries that come after it, beside the design:
//
//   ZONEREX 1
//   SPLIT 16                     sums were parted at so many product terms; 0: they were not
//   SOLUTION 390 660 G22V10*3    power, cost, devices
//   CHIP G22V10 Q0 Q1 CARRY      a chip and its outputs
namespace zrx {

struct KeptSolution {
    long Power = 0;
    long Cost = 0;
    std::string Devices;
    std::vector<std::pair<std::string, std::vector<std::string>>> Chips;  // device, outputs
};

struct SolutionFile {
    std::size_t SplitAt = 0;
    std::vector<KeptSolution> Solutions;
};

std::string WriteSolutions(const SolutionFile& file);
// Takes any bytes; what is no solution is left out.
SolutionFile ReadSolutions(std::string_view text);

KeptSolution Keep(const Problem& problem, const Solution& solution);
// The solution over the problem's outputs and candidates; nothing if it is not one of this design any more.
std::optional<Solution> Restore(Problem& problem, const KeptSolution& kept);

// An entry of the list: devices, power and cost in columns. Its last character is not shown.
std::string ListLine(const KeptSolution& solution);

}  // namespace zrx
