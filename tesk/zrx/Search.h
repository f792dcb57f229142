#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "zrx/Options.h"
#include "zrx/Problem.h"

namespace zrx {

struct Share {
    Set Items;
    std::size_t Candidate = 0;
};

using Total = std::array<long, 3>;  // by Figure

// The list of solutions has this room for the devices of one; the reader of an entry takes no more.
inline constexpr std::size_t listWidth = 60;

struct Solution {
    std::vector<Share> Chips;
    Total Sum{};
    std::string Devices;  // "G22V10*3 P16L8"
};

Total TotalOf(const Problem& problem, const std::vector<Share>& chips);
// The figures in the order in which they decide.
Total Ranked(const Total& total, const Options& options);
std::string DevicesOf(const Problem& problem, const std::vector<Share>& chips);

// Called often; false ends the search.
using GoOn = std::function<bool()>;

enum class Ending { Done, Time, Solutions };

struct Found {
    std::vector<Solution> Solutions;  // the best first; each with devices of its own
    Ending Why = Ending::Done;
    std::size_t FewestChips = 0;  // of what was found, be it more than the options allow; 0: nothing
};

// Partitions over all candidates and over each choice of them, as long as the options allow. The first is the
// best one for the options' order; with up to `exactItems` items it has the fewest chips, or cost, or power,
// that there can be.
inline constexpr std::size_t exactItems = 12;
Found Search(Problem& problem, const Options& options, const GoOn& goOn);

// One partition over the candidates; nothing if there is none or the time is over.
std::optional<std::vector<Share>> SolveExactly(Problem& problem, const std::vector<std::size_t>& candidates,
                                               const Options& options, const GoOn& goOn);
std::optional<std::vector<Share>> Pack(Problem& problem, const std::vector<std::size_t>& candidates,
                                       const Options& options, std::size_t rounds, const GoOn& goOn);

// The largest items first, each into the first chip that takes it: what the search never falls behind.
std::optional<std::vector<Share>> FirstFitDecreasing(Problem& problem,
                                                     const std::vector<std::size_t>& candidates,
                                                     const GoOn& goOn);

}  // namespace zrx
