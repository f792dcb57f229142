#include "logic/Covering.h"

#include <algorithm>
#include <numeric>

#include "logic/Lagrange.h"
#include "logic/LocalSearch.h"

namespace logic {

namespace {

std::size_t At(int i) { return static_cast<std::size_t>(i); }

// Branch and bound below one component. Looks only for covers smaller than a given one.
class Brancher {
  public:
    explicit Brancher(Budget& budget) : budget_(budget) {}

    // A cover of the core with fewer than `target` columns, the smallest there is; false if there is none.
    // Without meaning when the budget ran out.
    bool Solve(Core core, std::size_t target, std::vector<int>& best, int depth = 0) {
        std::vector<int> chosen;
        while (true) {
            Reduce(core, chosen, budget_);
            if (budget_.Exhausted() || depth > maxDepth || chosen.size() >= target) return false;
            if (core.Matrix.Rows.Size() == 0) {
                best = std::move(chosen);
                return true;
            }
            std::vector<Core> parts = Components(core);
            if (parts.size() > 1) return SolveParts(parts, target, std::move(chosen), best, depth);
            Lagrange bound(core.Matrix);
            bound.Improve(depth == 0 ? 400 : 60, target - chosen.size(), budget_);
            const bool found = Accept(core, bound, chosen, target, best);
            std::vector<Fate> fates;
            if (chosen.size() + bound.LowerBound() >= target) return found;
            if (!bound.Penalties(target - chosen.size(), fates))
                return Branch(core, bound, target, chosen, best, depth) || found;
            if (!Possible(core, fates)) return found;
            Decide(core, fates, chosen);
            if (!found) continue;
            std::vector<int> rest;
            if (SolveRest(std::move(core), target, chosen, rest, depth)) best = std::move(rest);
            return true;
        }
    }

  private:
    static constexpr int maxDepth = 3000;

    // Takes the cover that the bound found if it is good enough, and narrows the target to it.
    static bool Accept(const Core& core, const Lagrange& bound, const std::vector<int>& chosen,
                       std::size_t& target, std::vector<int>& best) {
        if (chosen.size() + bound.Best().size() >= target) return false;
        best = chosen;
        for (const int c : bound.Best()) best.push_back(core.Original[At(c)]);
        target = best.size();
        return true;
    }

    // False where a row has lost all its columns.
    static bool Possible(const Core& core, const std::vector<Fate>& fates) {
        const Lists& rows = core.Matrix.Rows;
        for (std::size_t r = 0; r < rows.Size(); ++r)
            if (std::all_of(rows[r].begin(), rows[r].end(),
                            [&](int c) { return fates[At(c)] == Fate::Dropped; }))
                return false;
        return true;
    }

    bool SolveRest(Core core, std::size_t target, const std::vector<int>& chosen, std::vector<int>& best,
                   int depth) {
        if (chosen.size() >= target) return false;
        std::vector<int> rest;
        if (!Solve(std::move(core), target - chosen.size(), rest, depth + 1)) return false;
        best = chosen;
        best.insert(best.end(), rest.begin(), rest.end());
        return true;
    }

    bool SolveParts(std::vector<Core>& parts, std::size_t target, std::vector<int> chosen,
                    std::vector<int>& best, int depth) {
        std::vector<std::size_t> lower;
        for (const Core& part : parts) {
            Lagrange bound(part.Matrix);
            bound.Improve(60, part.Original.size() + 1, budget_);
            lower.push_back(bound.LowerBound());
        }
        std::size_t rest = std::accumulate(lower.begin(), lower.end(), std::size_t{0});
        for (std::size_t p = 0; p < parts.size(); ++p) {
            rest -= lower[p];
            if (chosen.size() + rest >= target) return false;
            std::vector<int> mine;
            if (!Solve(std::move(parts[p]), target - chosen.size() - rest, mine, depth + 1)) return false;
            chosen.insert(chosen.end(), mine.begin(), mine.end());
        }
        if (chosen.size() >= target) return false;
        best = std::move(chosen);
        return true;
    }

    // Takes the columns of the shortest row in turn, each without those before it.
    bool Branch(const Core& core, const Lagrange& bound, std::size_t target, const std::vector<int>& chosen,
                std::vector<int>& best, int depth) {
        const Lists& rows = core.Matrix.Rows;
        std::span<const int> shortest = rows[0];
        for (std::size_t r = 1; r < rows.Size(); ++r)
            if (rows[r].size() < shortest.size()) shortest = rows[r];
        std::vector<int> row(shortest.begin(), shortest.end());
        std::stable_sort(row.begin(), row.end(),
                         [&](int a, int b) { return bound.ReducedCost(a) < bound.ReducedCost(b); });
        std::vector<Fate> fates(core.Original.size(), Fate::Open);
        bool found = false;
        for (const int c : row) {
            fates[At(c)] = Fate::Taken;
            Core below = core;
            std::vector<int> taken = chosen;
            if (Possible(core, fates)) {
                Decide(below, fates, taken);
                if (SolveRest(std::move(below), target, taken, best, depth))
                    target = best.size(), found = true;
            }
            if (budget_.Exhausted()) return found;
            fates[At(c)] = Fate::Dropped;
        }
        return found;
    }

    Budget& budget_;
};

class Solver {
  public:
    explicit Solver(const CoveringBounds& bounds) : bounds_(bounds) {}

    void Solve(Core& core, CoveringResult& result) {
        Budget reduce(bounds_.Reduce);
        Reduce(core, result.Chosen, reduce);
        result.LowerBound = result.Chosen.size();
        result.Proved = true;
        std::vector<Core> parts = Components(core);
        std::size_t entries = 1;
        for (const Core& part : parts) entries += part.Matrix.Rows.Entries();
        for (Core& part : parts) SolvePart(part, Share(part, entries), result);
    }

  private:
    struct Portion {
        std::uint64_t Relax, Search, Branch;
    };

    Portion Share(const Core& part, std::size_t entries) const {
        const double share = static_cast<double>(part.Matrix.Rows.Entries()) / static_cast<double>(entries);
        const auto of = [share](std::uint64_t all) {
            return static_cast<std::uint64_t>(share * static_cast<double>(all)) + 1000;
        };
        return {of(bounds_.Relax), of(bounds_.Search), of(bounds_.Branch)};
    }

    static void SolvePart(const Core& part, const Portion& portion, CoveringResult& result) {
        Budget relax(portion.Relax), search(portion.Search);
        Lagrange bound(part.Matrix);
        bound.Improve(2000, part.Original.size() + 1, relax);
        std::size_t lower = bound.LowerBound();
        if (bound.Best().size() > lower && portion.Search > 1000)
            bound.Offer(SearchCover(part.Matrix, bound.Best(), lower, search));
        std::vector<int> best;
        for (const int c : bound.Best()) best.push_back(part.Original[At(c)]);
        if (best.size() > lower && portion.Branch > 1000) {
            Budget branch(portion.Branch);
            std::vector<int> better;
            if (Brancher(branch).Solve(part, best.size(), better)) best = std::move(better);
            if (!branch.Exhausted()) lower = best.size();
        }
        result.LowerBound += lower;
        result.Proved = result.Proved && lower == best.size();
        result.Chosen.insert(result.Chosen.end(), best.begin(), best.end());
    }

    CoveringBounds bounds_;
};

}  // namespace

CoveringResult SolveCovering(Lists rows, std::size_t columns, const CoveringBounds& bounds) {
    Core core;
    core.Original.resize(columns);
    std::iota(core.Original.begin(), core.Original.end(), 0);
    core.Matrix = SparseMatrix::Of(std::move(rows), columns);
    CoveringResult result;
    Solver(bounds).Solve(core, result);
    std::sort(result.Chosen.begin(), result.Chosen.end());
    return result;
}

}  // namespace logic
