#include "logic/Heuristic.h"

#include <algorithm>
#include <numeric>
#include <unordered_set>

#include "logic/CoverTable.h"
#include "logic/Covering.h"
#include "logic/Expand.h"
#include "logic/Quick.h"

namespace logic {

Cover Problem::Function() const {
    Cover function = On;
    function.AddAll(DontCare);
    return function;
}

namespace {

constexpr std::size_t maxPieces = 2000;

class Loop {
  public:
    Loop(const Problem& problem, const HeuristicBounds& bounds)
        : problem_(problem),
          bounds_(bounds),
          layout_(problem.On.Form()),
          work_(bounds.Work + bounds.WorkPerCube * problem.On.Size()),
          function_(problem.Function()),
          expander_(problem.Off ? &*problem.Off : nullptr, function_, work_),
          search_(layout_, work_),
          pool_(layout_),
          fresh_(layout_) {
        frequency_.resize(static_cast<std::size_t>(layout_.Inputs()));
        std::iota(frequency_.begin(), frequency_.end(), 0);
    }

    HeuristicResult Run() {
        best_ = problem_.On;
        // Whole cubes lead to shared terms, small pieces leave the choice of outputs to the expansion.
        const bool many = bounds_.Rounds > 1;
        const Cover split = SplitOutputs(best_);
        if (split.Size() <= maxPieces) Grow(split, many ? 3 : 1);
        if (split.Size() > maxPieces || (many && split.Size() > best_.Size())) Grow(best_, many ? 3 : 1);
        const bool spent = work_.Exhausted();
        ChooseFromPool();
        current_ = best_;
        std::size_t lower = LowerBound();
        for (int idle = 0, round = 1; Going(round, idle) && lower < best_.Size(); ++round) {
            const std::size_t before = best_.Size();
            fresh_.Clear();
            Grow(Reduced(round), 1 + round % 3);
            Move();
            if (round % 2 == 0) ChooseFromPool();
            idle = best_.Size() < before ? 0 : idle + 1;
            if (idle == 0) lower = std::max(lower, LowerBound());
        }
        ChooseFromPool();
        return {best_, lower, spent};
    }

  private:
    bool Going(int round, int idle) const {
        return round < bounds_.Rounds && idle < bounds_.Idle && !work_.Exhausted();
    }

    // Terms that every cover needs: the essential primes, and one more where they leave something open.
    std::size_t LowerBound() {
        if (problem_.Open) return 0;
        std::size_t count = 0;
        CubeList held = CubesOf(problem_.DontCare);
        for (std::size_t i = 0; i < best_.Size() && !work_.Exhausted(); ++i) {
            if (!IsEssential(i)) continue;
            ++count;
            held.push_back(best_[i]);
        }
        for (std::size_t i = 0; i < best_.Size() && count < best_.Size() && !work_.Exhausted(); ++i)
            if (!search_.Covered(best_[i], held)) return work_.Exhausted() ? 0 : count + 1;
        return work_.Exhausted() ? 0 : count;
    }

    std::uint32_t Random() {
        state_ = state_ * 6364136223846793005u + 1442695040888963407u;
        return static_cast<std::uint32_t>(state_ >> 33);
    }

    // Puts primes around each cube into the pool: one that aims at the other cubes, then others by chance.
    void Grow(const Cover& cubes, int variants) {
        std::vector<Word> cube(static_cast<std::size_t>(layout_.Words()));
        std::vector<std::uint8_t> held(cubes.Size());
        for (int variant = 0; variant < variants; ++variant)
            for (std::size_t i = 0; i < cubes.Size() && pool_.Size() < bounds_.PoolLimit; ++i) {
                if (work_.Exhausted() || (variant == 0 && held[i] != 0)) continue;
                std::copy_n(cubes[i], layout_.Words(), cube.begin());
                if (variant == 0) expander_.WidenAround(cube.data(), cubes);
                expander_.Widen(cube.data(), Order(cubes, variant), variant == 1);
                AddToPool(cube.data());
                fresh_.Add(cube.data());
                for (std::size_t k = 0; k < cubes.Size() && variant == 0; ++k)
                    if (held[k] == 0 && layout_.Contains(cube.data(), cubes[k])) held[k] = 1;
            }
    }

    // The order of raising: inputs that few cubes have as a literal first, or by chance.
    const std::vector<int>& Order(const Cover& cubes, int variant) {
        if (variant > 1) {
            for (std::size_t i = frequency_.size(); i > 1; --i)
                std::swap(frequency_[i - 1], frequency_[Random() % i]);
            counted_ = nullptr;
        } else if (counted_ != &cubes) {
            SortByFrequency(cubes);
            counted_ = &cubes;
        }
        return frequency_;
    }

    void SortByFrequency(const Cover& cubes) {
        std::vector<int> count(frequency_.size());
        for (std::size_t i = 0; i < cubes.Size(); ++i)
            for (int v = 0; v < layout_.Inputs(); ++v)
                count[static_cast<std::size_t>(v)] += layout_.Input(cubes[i], v) != Literal::Free ? 1 : 0;
        std::iota(frequency_.begin(), frequency_.end(), 0);
        std::stable_sort(frequency_.begin(), frequency_.end(), [&count](int a, int b) {
            return count[static_cast<std::size_t>(a)] < count[static_cast<std::size_t>(b)];
        });
    }

    void AddToPool(const Word* cube) {
        const std::string key(reinterpret_cast<const char*>(cube),
                              static_cast<std::size_t>(layout_.Words()) * sizeof(Word));
        if (!known_.insert(key).second) return;
        pool_.Add(cube);
    }

    // A least choice of the primes; empty if their table is too large.
    Cover Least(const Cover& primes) const {
        Budget budget(bounds_.Table);
        Lists rows;
        Cover least(layout_);
        if (!BuildTable(primes, problem_.DontCare, 10000000, budget, rows,
                        problem_.Open ? &problem_.On : nullptr))
            return least;
        const CoveringResult result = SolveCovering(std::move(rows), primes.Size(),
                                                    {bounds_.Table, bounds_.Table / 8, bounds_.Table / 8, 0});
        for (const int c : result.Chosen) least.Add(primes[static_cast<std::size_t>(c)]);
        return least;
    }

    // best_ = a least choice of the pool, if that is smaller or the first.
    void ChooseFromPool() {
        // What the best cover holds has to be in the pool, or a budget that ran out could lose points.
        for (std::size_t i = 0; i < best_.Size(); ++i) AddToPool(best_[i]);
        if (pool_.Size() == chosenFrom_) return;
        chosenFrom_ = pool_.Size();
        Cover least = Least(pool_);
        if (least.Empty()) {
            DropRedundant();
        } else if (!chosenOnce_ || least.Size() < best_.Size()) {
            best_ = std::move(least);
            current_ = best_;
        }
        chosenOnce_ = true;
    }

    // Goes on from a cover of the last round's primes alone, even if it is no better: that leads to new ones.
    void Move() {
        if (work_.Exhausted() || pool_.Size() >= bounds_.PoolLimit) return;
        Cover least = Least(fresh_);
        if (least.Empty() || least.Size() > best_.Size() + best_.Size() / 16 + 1) {
            current_ = best_;
            return;
        }
        if (least.Size() < best_.Size()) best_ = least;
        current_ = std::move(least);
    }

    // Where the table is too large: starts from the widest primes and drops what the others cover.
    void DropRedundant() {
        if (chosenOnce_) return;
        if (!work_.Exhausted()) best_ = pool_;
        best_.Absorb();
        for (std::size_t i = best_.Size(); i-- > 0 && work_.Spend(best_.Size() / 8);) {
            CubeList others = CubesOf(problem_.DontCare);
            for (std::size_t k = 0; k < best_.Size(); ++k)
                if (k != i) others.push_back(best_[k]);
            if (!search_.Covered(best_[i], others)) continue;
            std::copy_n(best_[best_.Size() - 1], layout_.Words(), best_[i]);
            best_.Truncate(best_.Size() - 1);
        }
    }

    // The current cover with each cube in turn cut down to what the others leave to it.
    Cover Reduced(int round) {
        Cover reduced = current_;
        std::vector<std::size_t> order(reduced.Size());
        std::iota(order.begin(), order.end(), std::size_t{0});
        for (std::size_t i = order.size(); i > 1; --i) std::swap(order[i - 1], order[Random() % i]);
        if (round == 1)  // the largest first: they leave most to the others
            std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
                return layout_.InputLiterals(reduced[a]) < layout_.InputLiterals(reduced[b]);
            });
        std::vector<Word> hull(static_cast<std::size_t>(layout_.Words()));
        for (const std::size_t i : order) {
            if (!work_.Spend(reduced.Size() / 8 + 1)) break;
            CubeList others = CubesOf(problem_.DontCare);
            for (std::size_t k = 0; k < reduced.Size(); ++k)
                if (k != i) others.push_back(reduced[k]);
            std::fill(hull.begin(), hull.end(), Word{0});
            search_.UncoveredHull(reduced[i], others, hull.data());
            if (!layout_.IsEmpty(hull.data())) std::copy(hull.begin(), hull.end(), reduced[i]);
        }
        return reduced;
    }

    // A prime is essential if the don't cares and what other primes hold of it leave some of it open. The
    // other primes reach into it along the consensus with the other cubes.
    bool IsEssential(std::size_t index) {
        const Word* prime = best_[index];
        Cover reached(layout_);
        for (std::size_t i = 0; i < best_.Size(); ++i)
            if (i != index) AddReach(prime, best_[i], reached);
        for (std::size_t i = 0; i < problem_.DontCare.Size(); ++i)
            AddReach(prime, problem_.DontCare[i], reached);
        work_.Spend(best_.Size() + problem_.DontCare.Size());
        CubeList list = CubesOf(problem_.DontCare);
        for (std::size_t i = 0; i < reached.Size(); ++i) list.push_back(reached[i]);
        return !search_.Covered(prime, list);
    }

    void AddReach(const Word* prime, const Word* other, Cover& reached) const {
        if (layout_.Distance(prime, other) > 1) return;
        const bool outputsApart = !layout_.OutputsMeet(prime, other);
        if (!outputsApart && layout_.Contains(prime, other)) return;
        Word* cube = reached.Append();
        layout_.Intersect(cube, prime, other);
        // New outputs: a prime of both cubes' outputs holds all the outputs of this one there.
        if (outputsApart || !layout_.OutputsContain(prime, other))
            std::copy(prime + layout_.InputWords(), prime + layout_.Words(), cube + layout_.InputWords());
        if (outputsApart) return;
        for (int w = 0; w < layout_.InputWords(); ++w) {  // the one input in which they differ, if any
            const Word empty = Layout::even & ~Layout::FilledPlaces(cube[w]);
            cube[w] |= prime[w] & (empty | (empty << 1));
            if (empty != 0)
                for (int o = layout_.InputWords(); o < layout_.Words(); ++o) cube[o] = prime[o] & other[o];
        }
    }

    const Problem& problem_;
    HeuristicBounds bounds_;
    Layout layout_;
    Budget work_;
    Cover function_;
    Expander expander_;
    RegionSearch search_;
    Cover pool_, fresh_, best_, current_;
    std::unordered_set<std::string> known_;
    std::vector<int> frequency_;
    const Cover* counted_ = nullptr;
    bool chosenOnce_ = false;
    std::size_t chosenFrom_ = 0;  // size of the pool at the last choice
    std::uint64_t state_ = 1442695040888963407u;
};

}  // namespace

HeuristicResult MinimizeByExpansion(const Problem& problem, const HeuristicBounds& bounds) {
    return Loop(problem, bounds).Run();
}

}  // namespace logic
