#include "logic/Primes.h"

#include <algorithm>
#include <memory>
#include <unordered_map>

#include "logic/TernaryTable.h"

namespace logic {

namespace {

constexpr int maxTableInputs = 13;
// A table pays up to about this cost; above it splitting finds the structure of the cover.
constexpr std::uint64_t tableFactor = 30;
constexpr std::uint64_t tableBase = 300;
constexpr double maxExcess = 6;
constexpr std::size_t maxKnownWords = std::size_t{1} << 23;

// The primes of functions met before.
class Known {
  public:
    explicit Known(const Layout& layout) : layout_(layout) {}

    // Appends the primes of the function if they are known.
    bool Take(Word hash, const Cover& function, Cover& primes) const {
        const auto [first, last] = entries_.equal_range(hash);
        for (auto it = first; it != last; ++it) {
            const Entry& entry = it->second;
            const Word* words = words_.data() + entry.Start;
            const std::size_t count = function.Size() * Stride();
            if (entry.FunctionWords != count || !std::equal(words, words + count, function[0])) continue;
            for (std::size_t at = count; at < entry.Words; at += Stride()) primes.Add(words + at);
            return true;
        }
        return false;
    }

    // Remembers the primes from number `first` on, if there is room.
    void Keep(Word hash, const Cover& function, const Cover& primes, std::size_t first) {
        const std::size_t count = function.Size() * Stride(), more = (primes.Size() - first) * Stride();
        if (words_.size() + count + more > maxKnownWords) return;
        entries_.emplace(hash, Entry{words_.size(), count, count + more});
        words_.insert(words_.end(), function[0], function[0] + count);
        words_.insert(words_.end(), primes[first], primes[first] + more);
    }

  private:
    struct Entry {
        std::size_t Start, FunctionWords, Words;
    };
    std::size_t Stride() const { return static_cast<std::size_t>(layout_.Words()); }

    Layout layout_;
    std::unordered_multimap<Word, Entry> entries_;
    std::vector<Word> words_;
};

// Splits at an input x into f0, f1 and their common part g: the primes of f are those of g and, with the
// literal, those of f0 and f1 that are none of g. Functions are kept absorbed and in the order of Absorb.
class PrimeFinder {
  public:
    PrimeFinder(const Layout& layout, std::size_t limit, Budget& budget)
        : layout_(layout),
          limit_(limit),
          budget_(budget),
          given_(budget.Left()),
          table_(layout),
          known_(layout) {}

    bool Run(Cover function, Cover& primes) {
        primes = Cover(layout_);
        function.Absorb();
        Count(function);
        const std::uint64_t cost = TableCost(ActiveCount());
        if (ActiveCount() > maxTopInputs || !budget_.Spend(cost)) return Find(function, 0, 1.0, primes);
        const std::vector<int> inputs = Active();
        if (!TakesTable(function, cost)) {  // few cubes may be split for less
            Budget trial(cost / 4);
            if (PrimeFinder(layout_, limit_, trial).Find(function, 0, 1.0, primes)) {
                primes.SortUnique();  // the order of the table
                return true;
            }
            primes.Clear();
        }
        table_.Primes(function, inputs, primes);
        return primes.Size() <= limit_;
    }

  private:
    // The covers of one depth, kept for their memory.
    struct Frame {
        explicit Frame(const Layout& layout)
            : Zero(layout),
              One(layout),
              Common(layout),
              Half(layout),
              ZeroPrimes(layout),
              OnePrimes(layout),
              CommonPrimes(layout) {}
        void Clear() {
            for (Cover* cover : {&Zero, &One, &Common, &ZeroPrimes, &OnePrimes, &CommonPrimes})
                cover->Clear();
        }
        Cover Zero, One, Common, Half, ZeroPrimes, OnePrimes, CommonPrimes;
    };

    // `share` is the part of the whole work that this is thought to be.
    bool Find(const Cover& function, std::size_t depth, double share, Cover& primes) {
        const double before = done_;
        if (!FindBy(function, depth, share, primes)) return false;
        done_ = before + share;
        return !Hopeless();
    }

    // Whether the work that is left will exceed the budget many times, going by what has been done.
    bool Hopeless() const {
        const double given = static_cast<double>(given_), spent = given - static_cast<double>(budget_.Left());
        return spent * 8 > given && spent > done_ * given * maxExcess;
    }

    bool FindBy(const Cover& function, std::size_t depth, double share, Cover& primes) {
        if (!budget_.Spend(function.Size() * 3 + 100)) return false;
        if (function.Size() <= 1) {
            primes.AddAll(function);
            return true;
        }
        const int input = Count(function);
        const std::uint64_t cost = TableCost(ActiveCount());
        if (ActiveCount() > maxTableInputs || !TakesTable(function, cost))
            return FindOnce(function, input, depth, share, primes);
        table_.Primes(function, Active(), primes);
        return budget_.Spend(cost) && primes.Size() <= limit_;
    }

    static bool TakesTable(const Cover& function, std::uint64_t cost) {
        return cost <= tableFactor * function.Size() + tableBase;
    }

    // The same part comes up again and again behind different literals.
    bool FindOnce(const Cover& function, int input, std::size_t depth, double share, Cover& primes) {
        const Word hash = HashWords(function[0], function.Size() * static_cast<std::size_t>(layout_.Words()));
        const std::size_t first = primes.Size();
        if (known_.Take(hash, function, primes)) return SpendCopies(primes.Size() - first);
        if (!Split(function, input, depth, share, primes)) return false;
        known_.Keep(hash, function, primes, first);
        return true;
    }

    std::uint64_t TableCost(int inputs) const {
        std::uint64_t cost = static_cast<std::uint64_t>(inputs * layout_.OutputWords());
        for (int k = 0; k < inputs; ++k) cost *= 3;
        return cost / 8;  // an entry is cheaper than a cube operation
    }

    // Counts literals: marks the inputs that have any in active_, returns the one to split at: most of both
    // kinds.
    int Count(const Cover& function) {
        active_.assign(static_cast<std::size_t>(layout_.InputWords()), 0);
        int best = 0;
        std::pair<std::uint32_t, std::uint32_t> bestKey{0, 0};
        for (int w = 0; w < layout_.InputWords(); ++w) {
            SlicedCount zeros, ones;
            Word any = 0;
            for (std::size_t i = 0; i < function.Size(); ++i) {
                const Word lacks = ~function[i][w];
                any |= lacks;
                zeros.Add((lacks >> 1) & Layout::even);
                ones.Add(lacks & Layout::even);
            }
            any = (any | (any >> 1)) & Layout::even;
            active_[static_cast<std::size_t>(w)] = any;
            for (; any != 0; any &= any - 1) {
                const int place = std::countr_zero(any);
                const std::uint32_t zero = zeros.At(place), one = ones.At(place);
                const std::pair key{std::min(zero, one), zero + one};
                if (key > bestKey) bestKey = key, best = w * 32 + place / 2;
            }
        }
        return best;
    }

    int ActiveCount() const {
        int count = 0;
        for (const Word word : active_) count += CountBits(word);
        return count;
    }

    std::vector<int> Active() const {
        std::vector<int> inputs;
        for (std::size_t w = 0; w < active_.size(); ++w)
            for (Word rest = active_[w]; rest != 0; rest &= rest - 1)
                inputs.push_back(static_cast<int>(w) * 32 + std::countr_zero(rest) / 2);
        return inputs;
    }

    bool Split(const Cover& function, int input, std::size_t depth, double share, Cover& primes) {
        while (frames_.size() <= depth) frames_.push_back(std::make_unique<Frame>(layout_));
        Frame& f = *frames_[depth];
        f.Clear();
        for (std::size_t i = 0; i < function.Size(); ++i) {
            const Literal literal = layout_.Input(function[i], input);
            Cover& part = literal == Literal::Zero ? f.Zero : literal == Literal::One ? f.One : f.Common;
            part.Add(function[i]);
            layout_.SetInput(part[part.Size() - 1], input, Literal::Free);
        }
        share /= 1 + (f.Zero.Empty() ? 0 : 1) + (f.One.Empty() ? 0 : 1);
        if (!OfHalf(f.Zero, f, depth, share, f.ZeroPrimes) || !OfHalf(f.One, f, depth, share, f.OnePrimes) ||
            !AddMeets(f.Zero, f.One, f.Common) || !Find(f.Common, depth + 1, share, f.CommonPrimes))
            return false;
        Enter(f.CommonPrimes);
        AddOthers(f.ZeroPrimes, f.CommonPrimes, input, Literal::Zero, primes);
        AddOthers(f.OnePrimes, f.CommonPrimes, input, Literal::One, primes);
        primes.AddAll(f.CommonPrimes);
        return primes.Size() <= limit_ &&
               SpendCopies(f.ZeroPrimes.Size() + f.OnePrimes.Size() + f.CommonPrimes.Size());
    }

    // What many primes cost is memory.
    bool SpendCopies(std::size_t cubes) {
        return budget_.Spend(2 * cubes * static_cast<std::size_t>(layout_.Words()));
    }

    // The primes of a half; none where the half has no cubes of its own, as the common part then has them
    // all.
    bool OfHalf(const Cover& own, Frame& f, std::size_t depth, double share, Cover& primes) {
        if (own.Empty()) return true;
        if (!budget_.Spend(own.Size() * f.Common.Size() / 4)) return false;
        Merge(own, f.Common, f.Half);
        return Find(f.Half, depth + 1, share, primes);
    }

    // half = both in one order, less the common cubes that one of its own holds; it can't be the other way
    // round.
    void Merge(const Cover& own, const Cover& common, Cover& half) {
        half.Clear();
        half.Reserve(own.Size() + common.Size());
        bits_.clear();
        for (std::size_t i = 0; i < own.Size(); ++i) bits_.push_back(layout_.Bits(own[i]));
        std::size_t at = 0, larger = 0;
        for (std::size_t i = 0; i < common.Size(); ++i) {
            const Word* cube = common[i];
            const int bits = layout_.Bits(cube);
            while (larger < own.Size() && bits_[larger] > bits) ++larger;
            bool held = false;
            for (std::size_t k = 0; k < larger && !held; ++k) held = layout_.Contains(own[k], cube);
            if (held) continue;
            while (at < larger || (at < own.Size() && bits_[at] == bits && Before(own[at], cube)))
                half.Add(own[at++]);
            half.Add(cube);
        }
        while (at < own.Size()) half.Add(own[at++]);
    }

    bool Before(const Word* a, const Word* b) const {
        return std::lexicographical_compare(a, a + layout_.Words(), b, b + layout_.Words());
    }

    // common += the meets of the halves' own cubes.
    bool AddMeets(const Cover& zero, const Cover& one, Cover& common) {
        if (!budget_.Spend(zero.Size() * one.Size())) return false;
        if (zero.Empty() || one.Empty()) return true;
        scratch_.resize(static_cast<std::size_t>(layout_.Words()));
        for (std::size_t i = 0; i < zero.Size() && common.Size() <= limit_ * 4; ++i)
            for (std::size_t k = 0; k < one.Size(); ++k) {
                if (!layout_.Meet(zero[i], one[k])) continue;
                layout_.Intersect(scratch_.data(), zero[i], one[k]);
                common.Add(scratch_.data());
            }
        if (common.Size() > limit_ * 4) return false;
        common.SortUnique();
        if (!budget_.Spend(common.Size() * common.Size() / 4)) return false;
        common.Absorb();
        return true;
    }

    // Puts the cubes into slots_ by their hash.
    void Enter(const Cover& cubes) {
        slots_.assign(std::bit_ceil(2 * cubes.Size() + 1), 0);
        for (std::size_t i = 0; i < cubes.Size(); ++i)
            slots_[SlotOf(cubes[i], cubes)] = static_cast<std::uint32_t>(i + 1);
    }

    // Where the cube lies or can be put.
    std::size_t SlotOf(const Word* cube, const Cover& cubes) const {
        std::size_t slot = HashWords(cube, static_cast<std::size_t>(layout_.Words())) & (slots_.size() - 1);
        while (slots_[slot] != 0 && !layout_.Same(cubes[slots_[slot] - 1], cube))
            slot = (slot + 1) & (slots_.size() - 1);
        return slot;
    }

    // The primes of a half that are none of the common part (entered before). A prime of the half that lies
    // in a prime of the common part is the same cube, as that one is an implicant of the half, too.
    void AddOthers(const Cover& half, const Cover& common, int input, Literal literal, Cover& primes) {
        for (std::size_t i = 0; i < half.Size(); ++i) {
            if (slots_[SlotOf(half[i], common)] != 0) continue;
            primes.Add(half[i]);
            layout_.SetInput(primes[primes.Size() - 1], input, literal);
        }
    }

    Layout layout_;
    std::size_t limit_;
    Budget& budget_;
    std::uint64_t given_;
    double done_ = 0;
    TernaryTable table_;
    Known known_;
    std::vector<std::unique_ptr<Frame>> frames_;
    std::vector<Word> active_, scratch_;
    std::vector<int> bits_;
    std::vector<std::uint32_t> slots_;
};

}  // namespace

bool AllPrimes(const Cover& function, std::size_t limit, Budget& budget, Cover& primes) {
    return PrimeFinder(function.Form(), limit, budget).Run(function, primes);
}

}  // namespace logic
