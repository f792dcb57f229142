#include <algorithm>
#include <cstdint>
#include <limits>

#include "zrx/Search.h"

// The best partition of a few items: for each set of them the best chip, then the best way to part the whole.
namespace zrx {

namespace {

// The ranked figures as one number: each takes 20 bits, more than the chips of `exactItems` add up to.
using Weight = std::int64_t;
constexpr Weight worst = std::numeric_limits<Weight>::max();

Weight WeightOf(const Total& ranked) {
    Weight weight = 0;
    for (const long figure : ranked) weight = weight * (1 << 20) + figure;
    return weight;
}

class Subsets {
  public:
    Subsets(Problem& problem, const std::vector<std::size_t>& candidates, const Options& options,
            const GoOn& goOn)
        : problem_(problem), goOn_(goOn), count_(std::size_t{1} << problem.Items()), order_(candidates) {
        const auto key = [&](std::size_t candidate) {
            return Ranked(TotalOf(problem_, {{{}, candidate}}), options);
        };
        std::stable_sort(order_.begin(), order_.end(), [&](auto a, auto b) { return key(a) < key(b); });
        for (const std::size_t candidate : order_) keys_.push_back(WeightOf(key(candidate)));
        next_.assign(count_, 0);
        chip_.assign(count_, worst);
        total_.resize(count_);
        last_.resize(count_);
    }

    std::optional<std::vector<Share>> Solve() {
        for (std::size_t set = 1; set < count_; ++set) {
            if (set % 64 == 0 && !goOn_()) return std::nullopt;
            NextChip(set);
        }
        while (goOn_() && Plan()) {
            std::vector<Share> chips;
            bool sound = true;
            for (std::size_t rest = count_ - 1; rest != 0; rest &= ~last_[rest]) {
                const std::size_t set = last_[rest];
                chips.push_back({ItemsOf(set), order_[next_[set]]});
                if (goOn_() && problem_.Fits(chips.back().Items, chips.back().Candidate)) continue;
                sound = false;
                ++next_[set];  // counting had promised too much
                NextChip(set);
            }
            if (sound) return chips;
        }
        return std::nullopt;
    }

  private:
    static Set ItemsOf(std::size_t bits) {
        Set items;
        for (std::size_t item = 0; bits >> item != 0; ++item)
            if ((bits >> item & 1) != 0) items.push_back(item);
        return items;
    }

    // Goes on to the best chip of a set that is not yet known not to fit.
    void NextChip(std::size_t set) {
        const Set items = ItemsOf(set);
        while (next_[set] < order_.size() && !problem_.MayFit(items, order_[next_[set]])) ++next_[set];
        chip_[set] = next_[set] < order_.size() ? keys_[next_[set]] : worst;
    }
    bool Plan() {
        for (std::size_t whole = 1; whole < count_; ++whole) {
            const std::size_t lowest = whole & (~whole + 1);
            const std::size_t others = whole & ~lowest;
            Weight best = worst;
            for (std::size_t some = others;; some = (some - 1) & others) {
                const Weight rest = total_[others & ~some];
                const Weight own = chip_[some | lowest];
                if (rest != worst && own != worst && rest + own < best) {
                    best = rest + own;
                    last_[whole] = some | lowest;
                }
                if (some == 0) break;
            }
            total_[whole] = best;
        }
        return total_[count_ - 1] != worst;
    }

    Problem& problem_;
    const GoOn& goOn_;
    const std::size_t count_;
    std::vector<std::size_t> order_;  // candidates, the best first
    std::vector<Weight> keys_;        // of `order_`
    std::vector<std::size_t> next_;   // of each set, the place in `order_` that may take it
    std::vector<Weight> total_;       // of the best partition of each set
    std::vector<Weight> chip_;        // of the chip of each set, `worst` if it has none
    std::vector<std::size_t> last_;   // one chip of it
};

}  // namespace

std::optional<std::vector<Share>> SolveExactly(Problem& problem, const std::vector<std::size_t>& candidates,
                                               const Options& options, const GoOn& goOn) {
    return Subsets(problem, candidates, options, goOn).Solve();
}

}  // namespace zrx
