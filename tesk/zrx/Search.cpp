#include "zrx/Search.h"

#include <algorithm>
#include <bit>
#include <map>

namespace zrx {

namespace {

constexpr std::size_t roundsOfAll = 24;
constexpr std::size_t roundsOfSome = 4;

// All candidates, then each alone, then the pairs and so on.
std::vector<std::vector<std::size_t>> Choices(std::size_t candidates) {
    const std::size_t used = std::min<std::size_t>(candidates, 10);
    std::vector<std::size_t> masks;
    for (std::size_t mask = 1; mask < std::size_t{1} << used; ++mask) masks.push_back(mask);
    std::stable_sort(masks.begin(), masks.end(),
                     [](std::size_t a, std::size_t b) { return std::popcount(a) < std::popcount(b); });
    std::vector<std::vector<std::size_t>> choices(1);
    for (std::size_t i = 0; i < candidates; ++i) choices[0].push_back(i);
    for (const std::size_t mask : masks) {
        std::vector<std::size_t> choice;
        for (std::size_t i = 0; i < used; ++i)
            if ((mask >> i & 1) != 0) choice.push_back(i);
        if (choice.size() < candidates) choices.push_back(std::move(choice));
    }
    return choices;
}

// The options' own order, and each figure once in front.
std::vector<Options> Orders(const Options& options) {
    std::vector<Options> orders{options};
    for (std::size_t i = 1; i < options.Order.size(); ++i) {
        Options other = options;
        std::swap(other.Order[0], other.Order[i]);
        orders.push_back(other);
    }
    return orders;
}

class Collector {
  public:
    Collector(Problem& problem, const Options& options, const GoOn& goOn)
        : problem_(problem), options_(options), goOn_(goOn) {}

    Found Run() {
        const auto choices = Choices(problem_.Candidates().size());
        const auto orders = Orders(options_);
        for (std::size_t i = 0; i < choices.size(); ++i)
            for (std::size_t k = 0; k < orders.size() && (choices[i].size() > 1 || k == 0); ++k) {
                if (!goOn_()) return End(Ending::Time);
                if (found_.Solutions.size() >= options_.MostSolutions) return End(Ending::Solutions);
                Add(Solve(choices[i], orders[k], i == 0 && k == 0));
            }
        return End(goOn_() ? Ending::Done : Ending::Time);
    }

  private:
    std::optional<std::vector<Share>> Solve(const std::vector<std::size_t>& choice, const Options& order,
                                            bool first) {
        if (problem_.Items() > exactItems)
            return Pack(problem_, choice, order, first ? roundsOfAll : roundsOfSome, goOn_);
        return SolveExactly(problem_, choice, order, goOn_);
    }

    void Add(std::optional<std::vector<Share>> chips) {
        if (!chips) return;
        if (found_.FewestChips == 0 || chips->size() < found_.FewestChips) found_.FewestChips = chips->size();
        if (chips->size() > options_.MostChips) return;
        Solution solution{std::move(*chips), {}, {}};
        solution.Sum = TotalOf(problem_, solution.Chips);
        solution.Devices = DevicesOf(problem_, solution.Chips);
        const auto same = [&](const Solution& other) { return other.Devices == solution.Devices; };
        if (solution.Devices.size() > listWidth) return;
        if (std::none_of(found_.Solutions.begin(), found_.Solutions.end(), same))
            found_.Solutions.push_back(std::move(solution));
    }

    Found End(Ending why) {
        found_.Why = why;
        std::stable_sort(found_.Solutions.begin(), found_.Solutions.end(),
                         [&](const Solution& a, const Solution& b) {
                             return Ranked(a.Sum, options_) < Ranked(b.Sum, options_);
                         });
        return std::move(found_);
    }

    Problem& problem_;
    const Options& options_;
    const GoOn& goOn_;
    Found found_;
};

}  // namespace

Total TotalOf(const Problem& problem, const std::vector<Share>& chips) {
    Total total{};
    for (const Share& chip : chips) {
        const Candidate& candidate = problem.Candidates()[chip.Candidate];
        total[static_cast<std::size_t>(Figure::Devices)] += 1;
        total[static_cast<std::size_t>(Figure::Cost)] += candidate.Cost;
        total[static_cast<std::size_t>(Figure::Power)] += candidate.Power;
    }
    return total;
}

Total Ranked(const Total& total, const Options& options) {
    Total ranked{};
    for (std::size_t i = 0; i < ranked.size(); ++i)
        ranked[i] = total[static_cast<std::size_t>(options.Order[i])];
    return ranked;
}

std::string DevicesOf(const Problem& problem, const std::vector<Share>& chips) {
    std::map<std::string, std::size_t> counts;
    for (const Share& chip : chips) ++counts[problem.Candidates()[chip.Candidate].Device.Mnemonic];
    std::string devices;
    for (const auto& [name, count] : counts)
        devices += (devices.empty() ? "" : " ") + name + (count > 1 ? "*" + std::to_string(count) : "");
    return devices;
}

Found Search(Problem& problem, const Options& options, const GoOn& goOn) {
    return Collector(problem, options, goOn).Run();
}

}  // namespace zrx
