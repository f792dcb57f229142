#include "logic/Minimizer.h"

#include <algorithm>

#include "logic/CoverTable.h"
#include "logic/Covering.h"
#include "logic/Primes.h"
#include "logic/Quick.h"

namespace logic {

namespace {

// How much work a level puts into its steps, in cube operations (about 3 to 10 ns each).
struct Bounds {
    double PrimesBase, PrimesPerCube;  // for the prime implicants, with the cubes of the function
    std::size_t PrimeLimit;
    double Table;
    CoveringBounds Covering;
    HeuristicBounds Expansion;
};

constexpr double million = 1e6;

constexpr double complementBound = 40 * million;
constexpr std::size_t complementCubes = 50000;

constexpr Bounds heuristicBounds{4 * million,
                                 0.12 * million,
                                 120000,
                                 60 * million,
                                 {100'000'000, 8'000'000, 12'000'000, 4'000'000},
                                 {12, 40'000'000, 20'000'000, 20000}};
constexpr Bounds exactBounds{1000 * million,
                             0,
                             250000,
                             600 * million,
                             {1'000'000'000, 200'000'000, 400'000'000, 1'500'000'000},
                             {20, 400'000'000, 200'000'000, 50000}};

std::uint64_t Scaled(double steps, double effort) { return static_cast<std::uint64_t>(steps * effort) + 1; }
std::uint64_t Scaled(std::uint64_t steps, double effort) {
    return Scaled(static_cast<double>(steps), effort);
}

CoveringBounds Scaled(const CoveringBounds& b, double effort) {
    return {b.Reduce, Scaled(b.Relax, effort), Scaled(b.Search, effort), Scaled(b.Branch, effort)};
}

HeuristicBounds Scaled(const HeuristicBounds& b, double effort) {
    return {b.Rounds, Scaled(b.Work, effort), Scaled(b.Table, effort), b.PoolLimit};
}

class Minimizer {
  public:
    Minimizer(const Problem& problem, double effort)
        : problem_(problem), effort_(std::clamp(effort, 0.01, 1000.0)) {}

    MinimizeResult Run(Level level) {
        MinimizeResult result;
        result.Used = level;
        result.Terms = problem_.On;
        if (problem_.On.Empty()) {
            result.Proved = true;
        } else if (level == Level::m2) {
            Exact(result);
        } else if (level == Level::m3) {
            HeuristicBounds bounds = Scaled(heuristicBounds.Expansion, effort_);
            bounds.Rounds = 1;
            result.Terms = MinimizeByExpansion(problem_, bounds).Terms;
        } else {
            Best(result);
        }
        return result;
    }

  private:
    void Exact(MinimizeResult& result) {
        if (ByPrimes(exactBounds, result) && result.Proved) return;
        MinimizeResult best;
        best.Terms = problem_.On;
        Best(best);
        if (best.Proved || best.Terms.Size() <= result.Terms.Size()) {
            best.LowerBound = std::max(best.LowerBound, result.LowerBound);
            result = std::move(best);
        }
        result.Proved = result.Proved || result.LowerBound == result.Terms.Size();
        result.Used = result.Proved ? Level::m2 : Level::m4;
    }

    void Best(MinimizeResult& result) {
        result.Used = Level::m4;
        if (ByPrimes(heuristicBounds, result)) return;
        HeuristicResult found = MinimizeByExpansion(problem_, Scaled(heuristicBounds.Expansion, effort_));
        result.Terms = std::move(found.Terms);
        result.LowerBound = found.Essential;
        result.Proved = result.LowerBound == result.Terms.Size();
    }

    // Chooses from all prime implicants; false if they or their table are too many.
    bool ByPrimes(const Bounds& bounds, MinimizeResult& result) {
        if (problem_.Open) return false;
        Cover function = problem_.Function(), wide;
        Budget budget(
            Scaled(bounds.PrimesBase + bounds.PrimesPerCube * static_cast<double>(function.Size()), effort_));
        if (problem_.Off && PrimeCover(*problem_.Off, function, budget, wide)) function = std::move(wide);
        Cover primes;
        if (!AllPrimes(function, bounds.PrimeLimit, budget, primes)) return false;
        SortBySize(primes);
        Budget tableBudget(Scaled(bounds.Table, effort_));
        CoverTable table;
        if (!BuildTable(primes, problem_.DontCare, 20'000'000, tableBudget, table)) return false;
        const CoveringResult chosen =
            SolveCovering(std::move(table.Rows), primes.Size(), Scaled(bounds.Covering, effort_));
        result.Terms = Cover(primes.Form());
        for (const int c : chosen.Chosen) result.Terms.Add(primes[static_cast<std::size_t>(c)]);
        result.LowerBound = chosen.LowerBound;
        result.Proved = chosen.Proved;
        return true;
    }

    // Primes with few literals first: the choice prefers low numbers.
    static void SortBySize(Cover& primes) {
        const Layout& layout = primes.Form();
        std::vector<std::pair<int, std::size_t>> order;
        for (std::size_t i = 0; i < primes.Size(); ++i)
            order.emplace_back(layout.InputLiterals(primes[i]), i);
        std::sort(order.begin(), order.end());
        Cover sorted(layout);
        sorted.Reserve(primes.Size());
        for (const auto& entry : order) sorted.Add(primes[entry.second]);
        primes = std::move(sorted);
    }

    const Problem& problem_;
    double effort_;
};

MinimizeResult EachOutput(const Problem& problem, Level level, const Options& options) {
    MinimizeResult all;
    all.Used = level;
    all.Proved = true;
    all.Terms = Cover(problem.On.Form());
    for (int o = 0; o < problem.On.Outputs(); ++o) {
        Problem alone{OutputOf(problem.On, o), OutputOf(problem.DontCare, o), std::nullopt, problem.Open};
        if (problem.Off) alone.Off = OutputOf(*problem.Off, o);
        const MinimizeResult one = MinimizeProblem(std::move(alone), level, options);
        for (std::size_t i = 0; i < one.Terms.Size(); ++i) {
            Word* cube = all.Terms.Append();
            std::copy_n(one.Terms[i], all.Terms.Form().InputWords(), cube);
            all.Terms.Form().SetOutput(cube, o, true);
        }
        if (one.Used != level) all.Used = one.Used;
        all.Proved = all.Proved && one.Proved;
        all.LowerBound += one.LowerBound;
    }
    return all;
}

// Finds the off-set, or for an open problem the don't-care set, where that is not too much.
void Complete(Problem& problem, double effort) {
    Budget budget(Scaled(complementBound, std::clamp(effort, 0.01, 1000.0)));
    Cover found;
    if (!problem.Off) {
        if (ComplementWithin(problem.Function(), complementCubes, budget, found))
            problem.Off = std::move(found);
        return;
    }
    if (!problem.Open) return;
    Cover specified = problem.On;
    specified.AddAll(*problem.Off);
    if (!ComplementWithin(specified, complementCubes, budget, found)) return;
    problem.DontCare = std::move(found);
    problem.Open = false;
}

}  // namespace

MinimizeResult MinimizeProblem(Problem problem, Level level, const Options& options) {
    problem.On.RemoveEmpty();
    problem.DontCare.RemoveEmpty();
    MinimizeResult result;
    result.Used = level;
    if (level == Level::m0 || level == Level::m1) {
        result.Terms = options.Shared ? problem.On : SplitOutputs(problem.On);
        if (level == Level::m1) MergeAdjacent(result.Terms, options.Shared);
        return result;
    }
    if (!options.Shared && problem.On.Outputs() > 1) return EachOutput(problem, level, options);
    problem.DontCare.Absorb();
    MergeAdjacent(problem.On, true);
    Complete(problem, options.Effort);
    result = Minimizer(problem, options.Effort).Run(level);
    result.Terms.SortUnique();
    return result;
}

}  // namespace logic
