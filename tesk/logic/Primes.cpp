#include "logic/Primes.h"

#include <algorithm>
#include <string>
#include <unordered_map>

namespace logic {

namespace {

constexpr int maxTableInputs = 13;
// A table pays up to about this cost; above it splitting finds the structure of the cover.
constexpr std::uint64_t tableFactor = 30;
constexpr std::uint64_t tableBase = 300;
constexpr std::size_t searchFactor = 8;  // a search in so many cubes takes as long as comparing with one each
constexpr std::size_t maxKnownWords = std::size_t{1} << 23;

// Finds the primes over a few inputs from the table of all 3^n cubes: each entry holds the outputs that are 1
// throughout the cube, and a cube is prime where no wider cube has the same outputs.
class TernaryTable {
  public:
    TernaryTable(const Layout& layout, const std::vector<int>& inputs) : layout_(layout), inputs_(inputs) {
        powers_.push_back(1);
        for (std::size_t k = 0; k < inputs.size(); ++k) powers_.push_back(powers_.back() * 3);
    }

    void Primes(const Cover& function, Cover& primes) {
        outputWords_ = static_cast<std::size_t>(layout_.OutputWords());
        table_.assign(powers_.back() * outputWords_, 0);
        for (std::size_t i = 0; i < function.Size(); ++i) Enter(function[i]);
        for (std::size_t k = 0; k < inputs_.size(); ++k)
            EachTriple(k, [](Word& zero, Word& one, Word& free) { zero |= free, one |= free; });
        for (std::size_t k = 0; k < inputs_.size(); ++k)
            EachTriple(k, [](Word& zero, Word& one, Word& free) { free |= zero & one; });
        Collect(primes);
    }

  private:
    void Enter(const Word* cube) {
        std::size_t index = 0;
        for (std::size_t k = 0; k < inputs_.size(); ++k)
            index += powers_[k] * Digit(layout_.Input(cube, inputs_[k]));
        for (std::size_t w = 0; w < outputWords_; ++w)
            table_[index * outputWords_ + w] |= cube[static_cast<std::size_t>(layout_.InputWords()) + w];
    }

    static std::size_t Digit(Literal literal) {
        return static_cast<std::size_t>(literal) - 1;
    }  // 0, 1, 2 free

    template <typename Combine>
    void EachTriple(std::size_t k, Combine combine) {
        const std::size_t step = powers_[k] * outputWords_;
        for (std::size_t block = 0; block < table_.size(); block += 3 * step)
            for (std::size_t i = block; i < block + step; ++i)
                combine(table_[i], table_[i + step], table_[i + 2 * step]);
    }

    void Collect(Cover& primes) {
        std::vector<std::size_t> digits(inputs_.size(), 0);
        for (std::size_t index = 0; index < powers_.back(); ++index) {
            if (IsPrime(index, digits)) Emit(index, digits, primes);
            for (std::size_t k = 0; k < digits.size() && ++digits[k] == 3; ++k) digits[k] = 0;
        }
    }

    bool IsPrime(std::size_t index, const std::vector<std::size_t>& digits) const {
        const Word* entry = &table_[index * outputWords_];
        if (std::all_of(entry, entry + outputWords_, [](Word w) { return w == 0; })) return false;
        for (std::size_t k = 0; k < digits.size(); ++k) {
            const std::size_t wider = index + (2 - digits[k]) * powers_[k];
            if (wider != index && std::equal(entry, entry + outputWords_, &table_[wider * outputWords_]))
                return false;
        }
        return true;
    }

    void Emit(std::size_t index, const std::vector<std::size_t>& digits, Cover& primes) const {
        Word* cube = primes.Append();
        for (std::size_t k = 0; k < digits.size(); ++k)
            layout_.SetInput(cube, inputs_[k], static_cast<Literal>(digits[k] + 1));
        std::copy_n(&table_[index * outputWords_], outputWords_, cube + layout_.InputWords());
    }

    Layout layout_;
    const std::vector<int>& inputs_;
    std::vector<std::size_t> powers_;
    std::size_t outputWords_ = 1;
    std::vector<Word> table_;
};

// Splits at an input x into f0, f1 and their common part g: the primes of f are those of g and, with the
// literal, those of f0 and f1 that lie in no prime of g.
class PrimeFinder {
  public:
    PrimeFinder(const Layout& layout, std::size_t limit, Budget& budget)
        : layout_(layout), limit_(limit), budget_(budget), search_(layout, budget) {}

    bool Run(const Cover& function, Cover& primes) {
        primes = Cover(layout_);
        const std::vector<int> active = Count(function);
        if (active.size() > maxTopInputs || !budget_.Spend(TableCost(active.size())))
            return Find(function, primes);
        TernaryTable(layout_, active).Primes(function, primes);
        return primes.Size() <= limit_;
    }

  private:
    bool Find(const Cover& function, Cover& primes) {
        if (!budget_.Spend(function.Size() * 6 + 300)) return false;
        if (function.Size() <= 1) {
            primes.AddAll(function);
            return true;
        }
        const std::vector<int> active = Count(function);
        const std::uint64_t cost = TableCost(active.size());
        if (active.size() > maxTableInputs || cost > tableFactor * function.Size() + tableBase)
            return FindOnce(function, active, primes);
        TernaryTable(layout_, active).Primes(function, primes);
        return budget_.Spend(cost) && primes.Size() <= limit_;
    }

    // The same part comes up again and again behind different literals.
    bool FindOnce(const Cover& function, const std::vector<int>& active, Cover& primes) {
        std::string key(reinterpret_cast<const char*>(function[0]),
                        function.Size() * static_cast<std::size_t>(layout_.Words()) * sizeof(Word));
        const auto known = known_.find(key);
        if (known != known_.end()) {
            primes.AddAll(known->second);
            return true;
        }
        const std::size_t start = primes.Size();
        if (!Split(function, Choose(active), primes)) return false;
        Cover found(layout_);
        for (std::size_t i = start; i < primes.Size(); ++i) found.Add(primes[i]);
        knownCubes_ += function.Size() + found.Size();
        if (knownCubes_ * static_cast<std::size_t>(layout_.Words()) <= maxKnownWords)
            known_.emplace(std::move(key), std::move(found));
        return true;
    }

    std::uint64_t TableCost(std::size_t inputs) const {
        std::uint64_t cost = inputs * static_cast<std::uint64_t>(layout_.OutputWords());
        for (std::size_t k = 0; k < inputs; ++k) cost *= 3;
        return cost / 8;  // an entry is cheaper than a cube operation
    }

    // Counts the literals of each input; returns the inputs that have any.
    std::vector<int> Count(const Cover& function) {
        zeros_.assign(static_cast<std::size_t>(layout_.Inputs()), 0);
        ones_ = zeros_;
        for (std::size_t i = 0; i < function.Size(); ++i)
            for (int w = 0; w < layout_.InputWords(); ++w)
                for (Word m = Layout::even & ~Layout::FreePlaces(function[i][w]); m != 0; m &= m - 1) {
                    const int place = std::countr_zero(m);
                    auto& counts = (function[i][w] >> place & 1) != 0 ? zeros_ : ones_;
                    ++counts[static_cast<std::size_t>(w * 32 + place / 2)];
                }
        std::vector<int> active;
        for (std::size_t v = 0; v < zeros_.size(); ++v)
            if (zeros_[v] + ones_[v] != 0) active.push_back(static_cast<int>(v));
        return active;
    }

    int Choose(const std::vector<int>& active) const {
        int best = active[0];
        std::pair<int, int> bestKey{-1, -1};
        for (const int v : active) {
            const int zeros = zeros_[static_cast<std::size_t>(v)], ones = ones_[static_cast<std::size_t>(v)];
            const std::pair<int, int> key{std::min(zeros, ones), zeros + ones};
            if (key > bestKey) bestKey = key, best = v;
        }
        return best;
    }

    bool Split(const Cover& function, int input, Cover& primes) {
        Cover zero(layout_), one(layout_), common(layout_);
        for (std::size_t i = 0; i < function.Size(); ++i) {
            const Literal literal = layout_.Input(function[i], input);
            Cover& part = literal == Literal::Zero ? zero : literal == Literal::One ? one : common;
            part.Add(function[i]);
            layout_.SetInput(part[part.Size() - 1], input, Literal::Free);
        }
        Cover zeroPrimes(layout_), onePrimes(layout_), commonPrimes(layout_);
        if (!Half(zero, common, zeroPrimes) || !Half(one, common, onePrimes)) return false;
        zero.AddAll(common);  // from here on the halves with the part that they share
        const std::size_t own = one.Size();
        one.AddAll(common);
        if (!MeetOf(zero, zero.Size() - common.Size(), one, own, common) || !Find(common, commonPrimes))
            return false;
        return AddOutside(zeroPrimes, one, commonPrimes, input, Literal::Zero, primes) &&
               AddOutside(onePrimes, zero, commonPrimes, input, Literal::One, primes) &&
               AddCommon(commonPrimes, primes);
    }

    // The primes of one half; none where the half has no cubes of its own, as the common part then has them
    // all.
    bool Half(const Cover& own, const Cover& common, Cover& primes) {
        if (own.Empty()) return true;
        Cover half = own;
        half.AddAll(common);
        return budget_.Spend(half.Size() * half.Size() / 4) && (half.Absorb(), Find(half, primes));
    }

    // common += the meets of the first cubes of both halves.
    bool MeetOf(const Cover& zero, std::size_t zeros, const Cover& one, std::size_t ones, Cover& common) {
        if (!budget_.Spend(zeros * ones)) return false;
        if (zeros == 0 || ones == 0) return true;
        std::vector<Word> meet(static_cast<std::size_t>(layout_.Words()));
        for (std::size_t i = 0; i < zeros && common.Size() <= limit_ * 4; ++i)
            for (std::size_t k = 0; k < ones; ++k) {
                if (!layout_.Meet(zero[i], one[k])) continue;
                layout_.Intersect(meet.data(), zero[i], one[k]);
                common.Add(meet.data());
            }
        if (common.Size() > limit_ * 4) return false;
        common.SortUnique();
        if (!budget_.Spend(common.Size() * common.Size() / 4)) return false;
        common.Absorb();
        return true;
    }

    // The primes of a half that lie in no prime of the common part, which is: not in the other half either.
    bool AddOutside(const Cover& half, const Cover& other, const Cover& common, int input, Literal literal,
                    Cover& primes) {
        const bool search = common.Size() > searchFactor * other.Size();
        if (!search && !budget_.Spend(half.Size() * common.Size() / 2)) return false;
        const CubeList list = search ? CubesOf(other) : CubeList();
        for (std::size_t i = 0; i < half.Size(); ++i) {
            bool inside = search && search_.Covered(half[i], list);
            for (std::size_t k = 0; k < common.Size() && !inside && !search; ++k)
                inside = layout_.Contains(common[k], half[i]);
            if (inside) continue;
            primes.Add(half[i]);
            layout_.SetInput(primes[primes.Size() - 1], input, literal);
        }
        return primes.Size() <= limit_ && !budget_.Exhausted();
    }

    bool AddCommon(const Cover& common, Cover& primes) {
        primes.AddAll(common);
        return primes.Size() <= limit_;
    }

    Layout layout_;
    std::size_t limit_;
    Budget& budget_;
    RegionSearch search_;
    std::vector<int> zeros_, ones_;
    std::unordered_map<std::string, Cover> known_;
    std::size_t knownCubes_ = 0;
};

}  // namespace

bool AllPrimes(const Cover& function, std::size_t limit, Budget& budget, Cover& primes) {
    return PrimeFinder(function.Form(), limit, budget).Run(function, primes);
}

}  // namespace logic
