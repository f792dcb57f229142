#include <algorithm>
#include <numeric>
#include <random>
#include <set>

#include "zrx/Search.h"

// Partitions of many items: packed in several orders, then chips are emptied into the others.
namespace zrx {

namespace {

class Packer {
  public:
    Packer(Problem& problem, std::vector<std::size_t> candidates, const GoOn& goOn)
        : problem_(problem), goOn_(goOn), large_(std::move(candidates)) {
        const auto room = [&](std::size_t candidate) {
            std::size_t most = 0;
            for (const fit::Mode& mode : problem_.Candidates()[candidate].Device.Modes)
                most = std::max(most, mode.Cells.size() + mode.Inputs.size());
            return most;
        };
        std::stable_sort(large_.begin(), large_.end(), [&](auto a, auto b) { return room(a) > room(b); });
    }

    // Nothing if an item fits no candidate, or the time is over.
    std::optional<std::vector<Share>> Run(const std::vector<std::size_t>& order, bool firstFit) {
        std::vector<Share> chips;
        for (const std::size_t item : order)
            if (!(firstFit ? PutFirst(chips, item) : PutBest(chips, item)) && !Open(chips, item))
                return std::nullopt;
        return chips;
    }

    // Empties chips into others, the smallest first, until none can be emptied.
    void Empty(std::vector<Share>& chips) {
        for (bool changed = true; changed && goOn_();) {
            std::stable_sort(chips.begin(), chips.end(),
                             [](const Share& a, const Share& b) { return a.Items.size() < b.Items.size(); });
            changed = false;
            for (std::size_t i = 0; i < chips.size() && !changed; ++i) changed = EmptyOne(chips, i);
        }
    }

    // Gives every chip the best device that takes it.
    void Choose(std::vector<Share>& chips, const Options& options) {
        for (Share& chip : chips) {
            const auto key = [&](std::size_t candidate) {
                return Ranked(TotalOf(problem_, {{{}, candidate}}), options);
            };
            for (const std::size_t candidate : large_)
                if (key(candidate) < key(chip.Candidate) && Fits(chip.Items, candidate))
                    chip.Candidate = candidate;
        }
    }

  private:
    bool Fits(const Set& set, std::size_t candidate) { return goOn_() && problem_.Fits(set, candidate); }

    static Set With(Set set, std::size_t item) {
        set.insert(std::lower_bound(set.begin(), set.end(), item), item);
        return set;
    }

    bool Put(Share& chip, std::size_t item) {
        Set more = With(chip.Items, item);
        if (!Fits(more, chip.Candidate)) return false;
        chip.Items = std::move(more);
        return true;
    }

    bool PutFirst(std::vector<Share>& chips, std::size_t item) {
        return std::any_of(chips.begin(), chips.end(), [&](Share& chip) { return Put(chip, item); });
    }

    // Where the fewest pins are added.
    bool PutBest(std::vector<Share>& chips, std::size_t item) {
        std::vector<std::pair<std::size_t, std::size_t>> ranked;
        for (std::size_t i = 0; i < chips.size(); ++i) ranked.emplace_back(NewPins(chips[i].Items, item), i);
        std::sort(ranked.begin(), ranked.end());
        return std::any_of(ranked.begin(), ranked.end(),
                           [&](const auto& at) { return Put(chips[at.second], item); });
    }

    std::size_t NewPins(const Set& set, std::size_t item) const {
        std::set<std::size_t> there;
        for (const std::size_t one : set) {
            for (const std::size_t signal : problem_.ReadsOf(one)) there.insert(signal);
            for (const std::size_t unit : problem_.UnitsOf(one)) there.insert(unit);
        }
        const auto& reads = problem_.ReadsOf(item);
        return static_cast<std::size_t>(
            std::count_if(reads.begin(), reads.end(), [&](auto signal) { return !there.contains(signal); }));
    }

    bool Open(std::vector<Share>& chips, std::size_t item) {
        for (const std::size_t candidate : large_) {
            if (!Fits({item}, candidate)) continue;
            chips.push_back({{item}, candidate});
            return true;
        }
        return false;
    }

    bool EmptyOne(std::vector<Share>& chips, std::size_t which) {
        std::vector<Share> others = chips;
        others.erase(others.begin() + static_cast<std::ptrdiff_t>(which));
        for (const std::size_t item : chips[which].Items)
            if (!PutBest(others, item)) return false;
        chips = std::move(others);
        return true;
    }

    Problem& problem_;
    const GoOn& goOn_;
    std::vector<std::size_t> large_;  // candidates, those with the most room first
};

std::vector<std::size_t> Decreasing(const Problem& problem) {
    std::vector<std::size_t> order(problem.Items());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return problem.TermsOf(a) > problem.TermsOf(b); });
    return order;
}

}  // namespace

std::optional<std::vector<Share>> FirstFitDecreasing(Problem& problem,
                                                     const std::vector<std::size_t>& candidates,
                                                     const GoOn& goOn) {
    return Packer(problem, candidates, goOn).Run(Decreasing(problem), true);
}

std::optional<std::vector<Share>> Pack(Problem& problem, const std::vector<std::size_t>& candidates,
                                       const Options& options, std::size_t rounds, const GoOn& goOn) {
    Packer packer(problem, candidates, goOn);
    std::vector<std::size_t> order = Decreasing(problem);
    std::optional<std::vector<Share>> best;
    std::mt19937 random(1);  // the same partition for the same design
    const std::size_t fewest = problem.FewestChips(candidates);
    for (std::size_t round = 0; round < rounds && goOn(); ++round) {
        auto chips = packer.Run(order, (round % 2 == 0) == options.FirstFit || round == 1);
        if (!chips) break;
        packer.Empty(*chips);
        packer.Choose(*chips, options);
        if (!goOn() && best) break;
        const auto key = [&](const std::vector<Share>& one) {
            return Ranked(TotalOf(problem, one), options);
        };
        if (!best || key(*chips) < key(*best)) best = std::move(chips);
        if (candidates.size() == 1 && best->size() <= fewest) break;
        if (round > 0)
            for (std::size_t i = order.size(); i > 1; --i) std::swap(order[i - 1], order[random() % i]);
    }
    return best;
}

}  // namespace zrx
