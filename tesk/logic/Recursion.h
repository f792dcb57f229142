#pragma once

#include <algorithm>
#include <array>
#include <span>
#include <utility>
#include <vector>

#include "logic/Cover.h"

// Inside the library: recursion over regions of the input space, with bounded work.
namespace logic {

// Work left, in cube operations. Work done with nothing left has no meaning: ask Exhausted before using a
// result.
class Budget {
  public:
    explicit Budget(std::uint64_t steps) : left_(steps) {}
    bool Spend(std::uint64_t steps) {
        left_ = steps < left_ ? left_ - steps : 0;
        return left_ != 0;
    }
    bool Exhausted() const { return left_ == 0; }
    std::uint64_t Left() const { return left_; }

  private:
    std::uint64_t left_;
};

using CubeList = std::vector<const Word*>;

CubeList CubesOf(const Cover& cover);

inline Word HashWords(const Word* words, std::size_t count) {
    Word hash = 0;
    for (std::size_t w = 0; w < count; ++w)
        hash = (hash ^ words[w]) * 0x9E3779B97F4A7C15u, hash ^= hash >> 29;
    return hash;
}

// Counts for 32 inputs at once, marked by the even bits: slice k holds bit k of every count.
class SlicedCount {
  public:
    void Add(Word marks, std::size_t slice = 0) {
        for (; marks != 0; ++slice) {
            const Word carry = slices_[slice] & marks;
            slices_[slice] ^= marks;
            marks = carry;
            used_ = std::max(used_, slice + 1);
        }
    }
    // Seven at once, by full adders: less than half the work.
    void AddSeven(const std::array<Word, 7>& marks) {
        const auto [ones1, twos1] = FullAdder(marks[0], marks[1], marks[2]);
        const auto [ones2, twos2] = FullAdder(marks[3], marks[4], marks[5]);
        const auto [ones, twos3] = FullAdder(ones1, ones2, marks[6]);
        const auto [twos, fours] = FullAdder(twos1, twos2, twos3);
        Add(ones);
        Add(twos, 1);
        Add(fours, 2);
    }
    std::uint32_t At(int place) const {
        std::uint32_t count = 0;
        for (std::size_t k = 0; k < used_; ++k)
            count |= static_cast<std::uint32_t>((slices_[k] >> place) & 1) << k;
        return count;
    }
    // The highest count and the first place that has it.
    std::pair<std::uint32_t, int> Highest() const;

  private:
    static std::pair<Word, Word> FullAdder(Word a, Word b, Word c) {
        return {a ^ b ^ c, (a & b) | ((a ^ b) & c)};
    }

    std::array<Word, 32> slices_{};
    std::size_t used_ = 0;
};

// The input that most cubes have a literal of where the region is free; -1 if none has any. `cubeOf` gives
// the cube of an entry of the list.
template <typename Entry, typename CubeOf>
int MostFrequentInput(const Layout& layout, const Word* region, std::span<const Entry> list, CubeOf cubeOf) {
    const std::size_t step = list.size() / 64 + 1;  // of a long list a sample is enough
    std::uint32_t bestCount = 0;
    int best = -1;
    for (int w = 0; w < layout.InputWords(); ++w) {
        const Word open = Layout::FreePlaces(region[w]);
        if (open == 0) continue;
        SlicedCount count;
        const auto marks = [&](std::size_t i) { return open & ~Layout::FreePlaces(cubeOf(list[i])[w]); };
        std::size_t i = 0;
        for (; i + 6 * step < list.size(); i += 7 * step)
            count.AddSeven({marks(i), marks(i + step), marks(i + 2 * step), marks(i + 3 * step),
                            marks(i + 4 * step), marks(i + 5 * step), marks(i + 6 * step)});
        for (; i < list.size(); i += step) count.Add(marks(i));
        const auto [most, place] = count.Highest();
        if (most <= bestCount) continue;
        bestCount = most;
        best = w * 32 + place;
    }
    return best;
}

inline int MostFrequentInput(const Layout& layout, const Word* region, std::span<const Word* const> list) {
    return MostFrequentInput(layout, region, list, [](const Word* cube) { return cube; });
}

// Walks a region by splitting it at inputs. The depth is at most the number of inputs; regions and lists lie
// on stacks of this object, so that one object serves many questions.
class RegionSearch {
  public:
    RegionSearch(const Layout& layout, Budget& budget);

    // Whether the region is covered by the cubes. False when the budget ran out.
    bool Covered(const Word* region, std::span<const Word* const> list);

    // hull |= the supercube of what the cubes leave uncovered in the region. When the budget ran out: more.
    void UncoveredHull(const Word* region, std::span<const Word* const> list, Word* hull);

  private:
    enum class Filtered { Covered, Open, Some };

    Word* Slot(int depth) {
        return regions_.data() + static_cast<std::size_t>(depth) * static_cast<std::size_t>(words_);
    }
    void Load(std::span<const Word* const> list);
    Filtered Filter(Word* region, std::size_t begin, std::size_t end, std::size_t to);
    bool DropUnate(Word* region, std::size_t begin);
    std::span<const Word* const> From(std::size_t begin) const {
        return {stack_.data() + begin, stack_.data() + top_};
    }
    void OpenSlot(int depth, int input, Literal half);
    bool CoveredNode(int depth, std::size_t begin, std::size_t end);
    void HullNode(int depth, std::size_t begin, std::size_t end, Word* hull);

    Layout layout_;
    int words_;
    Budget& budget_;
    std::vector<Word> regions_;
    CubeList stack_;
    std::size_t top_ = 0;
};

// The complement by recursion and merging; false if cubes or work exceed their bounds.
bool ComplementWithin(const Cover& cover, std::size_t cubeLimit, Budget& budget, Cover& result);

}  // namespace logic
