#include "cpld/Search.h"

#include <algorithm>
#include <bit>

#include "cpld/Placement.h"

namespace cpld {
namespace {

// Augmenting paths over sets of switches.
class Matcher {
  public:
    Matcher(const std::vector<std::uint64_t>& masks, std::array<std::int16_t, BlockSwitches>& owners)
        : masks_(masks), owners_(owners) {}

    bool Add(std::size_t source) {
        visited_ = 0;
        return Augment(source);
    }

  private:
    void Give(int to, std::size_t source) {
        owners_[static_cast<std::size_t>(to)] = static_cast<std::int16_t>(source);
        used_ |= std::uint64_t{1} << to;
    }

    bool Augment(std::size_t source) {
        if (const auto free = masks_[source] & ~used_; free != 0) {
            Give(std::countr_zero(free), source);
            return true;
        }
        for (;;) {
            const auto next = masks_[source] & ~visited_;
            if (next == 0) return false;
            const int at = std::countr_zero(next);
            visited_ |= std::uint64_t{1} << at;
            if (!Augment(static_cast<std::size_t>(owners_[static_cast<std::size_t>(at)]))) continue;
            Give(at, source);
            return true;
        }
    }

    const std::vector<std::uint64_t>& masks_;
    std::array<std::int16_t, BlockSwitches>& owners_;
    std::uint64_t used_ = 0, visited_ = 0;
};

// Changes that cost more are taken too, ever less of them.
void Improve(Placement& placement, std::mt19937& random, std::size_t steps, std::size_t& used) {
    constexpr std::size_t polish = 1500;  // once nothing is missing
    std::size_t after = 0;
    for (std::size_t step = 0; step < steps && after < polish && placement.Cost() > 0; ++step, ++used) {
        const auto heat = static_cast<unsigned>(60 * (steps - step) / steps);
        const bool complete = placement.Complete();
        after += complete ? 1 : 0;
        const auto change = placement.Propose(random);
        if (!placement.Allowed(change)) continue;
        const int before = placement.Cost();
        placement.Apply(change);
        const int worse = placement.Cost() - before;
        if (worse <= 0) continue;
        const auto bound = complete ? 0u : random() % (heat + 1);
        if (static_cast<unsigned>(worse) > bound) placement.Apply(change);
    }
}

}  // namespace

std::size_t Match(const std::vector<std::uint64_t>& masks, std::array<std::int16_t, BlockSwitches>& owners) {
    owners.fill(-1);
    Matcher matcher(masks, owners);
    std::size_t missing = 0;
    for (std::size_t source = 0; source < masks.size(); ++source) missing += matcher.Add(source) ? 0 : 1;
    return missing;
}

SearchResult Search(const Device& device, const Package& package, const Problem& problem, bool jtagPads,
                    std::size_t steps) {
    constexpr std::size_t rounds = 4;
    std::mt19937 random(1);
    SearchResult result;
    result.Missing.Total = static_cast<std::size_t>(-1);
    for (std::size_t round = 0; round < rounds && !result.Found; ++round) {
        Placement placement(device, package, problem, jtagPads);
        if (const auto unit = placement.Construct(random)) {
            if (result.Missing.Total == static_cast<std::size_t>(-1)) result.Missing.Unit = unit;
            continue;
        }
        Improve(placement, random, steps / rounds, result.Steps);
        if (placement.Complete()) result.Found = placement.Result();
        if (auto missing = placement.Missing(); missing.Total < result.Missing.Total)
            result.Missing = std::move(missing);
    }
    return result;
}

}  // namespace cpld
