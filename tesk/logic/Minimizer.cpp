#include "logic/Minimizer.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "logic/CoverTable.h"
#include "logic/Covering.h"
#include "logic/Polish.h"
#include "logic/Primes.h"
#include "logic/Quick.h"

namespace logic {

namespace {

// How much work a level puts into its steps, in cube operations (about 3 to 10 ns each).
struct Bounds {
    // For the prime implicants, with the cubes of the function. Few inputs bound the number of primes.
    double PrimesBase, PrimesPerCube, PrimesPerCubeOfFewInputs;
    std::size_t PrimeLimit;
    double Table;
    CoveringBounds Covering;
    HeuristicBounds Expansion;
};

constexpr double million = 1e6;
constexpr int fewInputs = 16;

constexpr double complementBound = 40 * million;
constexpr double polishBound = 4 * million;
constexpr std::size_t complementCubes = 50000;

constexpr Bounds heuristicBounds{
    .PrimesBase = 5 * million,
    .PrimesPerCube = 0.0075 * million,
    .PrimesPerCubeOfFewInputs = 0.045 * million,
    .PrimeLimit = 200000,
    .Table = 60 * million,
    .Covering = {.Reduce = 100'000'000, .Relax = 8'000'000, .Search = 12'000'000, .Branch = 1'000'000},
    .Expansion = {.Rounds = 40,
                  .Idle = 4,
                  .Work = 30'000'000,
                  .WorkPerCube = 10'000,
                  .Table = 20'000'000,
                  .PoolLimit = 20000}};
constexpr Bounds exactBounds{
    .PrimesBase = 1000 * million,
    .PrimesPerCube = 0,
    .PrimesPerCubeOfFewInputs = 0,
    .PrimeLimit = 250000,
    .Table = 600 * million,
    .Covering = {.Reduce = 1'000'000'000, .Relax = 100'000'000, .Search = 200'000'000, .Branch = 400'000'000},
    .Expansion = {.Rounds = 100,
                  .Idle = 20,
                  .Work = 400'000'000,
                  .WorkPerCube = 100'000,
                  .Table = 200'000'000,
                  .PoolLimit = 50000}};

std::uint64_t Scaled(double steps, double effort) { return static_cast<std::uint64_t>(steps * effort) + 1; }
std::uint64_t Scaled(std::uint64_t steps, double effort) {
    return Scaled(static_cast<double>(steps), effort);
}

CoveringBounds Scaled(const CoveringBounds& b, double effort) {
    return {b.Reduce, Scaled(b.Relax, effort), Scaled(b.Search, effort), Scaled(b.Branch, effort)};
}

HeuristicBounds Scaled(const HeuristicBounds& b, double effort) {
    return {
        b.Rounds,   b.Idle, Scaled(b.Work, effort), Scaled(b.WorkPerCube, effort), Scaled(b.Table, effort),
        b.PoolLimit};
}

class Minimizer {
  public:
    Minimizer(const Problem& problem, double effort)
        : problem_(problem), effort_(std::clamp(effort, 0.01, 1000.0)) {}

    MinimizeResult Run(Level level) {
        MinimizeResult result;
        result.Used = level;
        if (problem_.On.Empty()) {
            result.Terms = problem_.On;
            result.Proved = true;
        } else if (level == Level::m2) {
            Exact(result);
        } else if (level == Level::m3) {
            HeuristicBounds bounds = heuristicBounds.Expansion;
            bounds.Rounds = 1;
            ByExpansion(bounds, result);
        } else {
            Best(result);
        }
        return result;
    }

  private:
    void Exact(MinimizeResult& result) {
        MinimizeResult best;
        if (Start(best) || (ByPrimes(exactBounds, result) && result.Proved)) {
            if (best.Proved) result = std::move(best);
            result.Used = Level::m2;
            return;
        }
        Best(best);
        if (result.Terms.Empty() || best.Proved || best.Terms.Size() <= result.Terms.Size()) {
            best.LowerBound = std::max(best.LowerBound, result.LowerBound);
            result = std::move(best);
        }
        result.Proved = result.Proved || result.LowerBound == result.Terms.Size();
        result.Used = result.Proved ? Level::m2 : Level::m4;
    }

    void Best(MinimizeResult& result) {
        if (!Start(result) && !ByPrimes(heuristicBounds, result) && !spent_)
            ByExpansion(heuristicBounds.Expansion, result);
        result.Used = Level::m4;
    }

    // One round of expansion; true if that proves to be the least cover. With few inputs the primes are had
    // for less.
    bool Start(MinimizeResult& result) {
        if (!start_) {
            start_ = problem_.On;
            if (problem_.On.Inputs() <= maxTopInputs) return false;
            HeuristicBounds bounds = heuristicBounds.Expansion;
            bounds.Rounds = 1;
            ByExpansion(bounds, result);
            start_ = result.Terms;
        }
        return result.Proved;
    }

    void ByExpansion(const HeuristicBounds& bounds, MinimizeResult& result) {
        HeuristicResult found = MinimizeByExpansion(problem_, Scaled(bounds, effort_));
        spent_ = found.Spent;
        result.Terms = std::move(found.Terms);
        result.LowerBound = std::max(result.LowerBound, found.LowerBound);
        result.Proved = result.LowerBound == result.Terms.Size();
    }

    // Chooses from all prime implicants; false if they or their table are too many.
    bool ByPrimes(const Bounds& bounds, MinimizeResult& result) {
        if (problem_.Open) return false;
        Cover function = start_.value_or(problem_.On);
        function.AddAll(problem_.DontCare);
        const double cubes = static_cast<double>(problem_.On.Size() + problem_.DontCare.Size());
        const double perCube =
            problem_.On.Inputs() <= fewInputs ? bounds.PrimesPerCubeOfFewInputs : bounds.PrimesPerCube;
        Budget budget(Scaled(bounds.PrimesBase + perCube * cubes, effort_));
        Cover primes(problem_.On.Form());
        if (!AllPrimes(function, bounds.PrimeLimit, budget, primes)) return false;
        SortBySize(primes);
        Budget tableBudget(Scaled(bounds.Table, effort_));
        Lists rows;
        if (!BuildTable(primes, problem_.DontCare, 10'000'000, tableBudget, rows)) return false;
        const CoveringResult chosen =
            SolveCovering(std::move(rows), primes.Size(), Scaled(bounds.Covering, effort_));
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
    std::optional<Cover> start_;  // a cover by primes, if one is known
    bool spent_ = false;          // the expansion has done all that its bounds allow
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

#ifdef LOGIC_CHECK_RESULTS
void CheckResult(const Cover& terms, const Problem& problem) {
    Cover lower = terms;
    lower.AddAll(problem.DontCare);
    const bool missing = CoversWithin(lower, problem.On, 1000000) == false;
    if (missing || (!problem.Open && CoversWithin(problem.Function(), terms, 1000000) == false))
        throw std::logic_error("A minimized cover is not the function");
}
#endif

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
    Budget polish(Scaled(polishBound, std::clamp(options.Effort, 0.01, 1000.0)));
    Polish(result.Terms, problem, polish);
    result.Terms.SortUnique();
#ifdef LOGIC_CHECK_RESULTS
    CheckResult(result.Terms, problem);
#endif
    return result;
}

}  // namespace logic
