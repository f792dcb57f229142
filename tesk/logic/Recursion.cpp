#include "logic/Recursion.h"

#include <algorithm>
#include <array>

namespace logic {

CubeList CubesOf(const Cover& cover) {
    CubeList list(cover.Size());
    for (std::size_t i = 0; i < cover.Size(); ++i) list[i] = cover[i];
    return list;
}

std::pair<std::uint32_t, int> SlicedCount::Highest() const {
    Word best = Layout::even;
    std::uint32_t count = 0;
    for (std::size_t k = used_; k-- > 0;) {
        const Word with = best & slices_[k];
        if (with == 0) continue;
        best = with;
        count |= std::uint32_t{1} << k;
    }
    return {count, std::countr_zero(best) / 2};
}

RegionSearch::RegionSearch(const Layout& layout, Budget& budget)
    : layout_(layout),
      words_(layout.Words()),
      budget_(budget),
      regions_(static_cast<std::size_t>(layout.Inputs() + 2) * static_cast<std::size_t>(layout.Words())) {}

// Puts what matters in the region from [begin, end) to `to`, the new top (to <= begin or to == end); outputs
// that a cube covers throughout leave the region.
RegionSearch::Filtered RegionSearch::Filter(Word* region, std::size_t begin, std::size_t end,
                                            std::size_t to) {
    budget_.Spend(end - begin + 1);
    if (stack_.size() < to + (end - begin)) stack_.resize(2 * (to + (end - begin)));
    top_ = to;
    for (std::size_t i = begin; i < end; ++i) {
        const Word* cube = stack_[i];
        if (!layout_.OutputsMeet(cube, region)) continue;
        const Layout::Overlap overlap = layout_.InputOverlap(cube, region);
        if (overlap == Layout::Overlap::Part) stack_[top_++] = cube;
        if (overlap != Layout::Overlap::Whole) continue;
        for (int w = layout_.InputWords(); w < words_; ++w) region[w] &= ~cube[w];
        if (!layout_.HasOutputs(region)) {
            top_ = to;
            return Filtered::Covered;
        }
    }
    return top_ == to ? Filtered::Open : Filtered::Some;
}

// Where all cubes have the same literal of an input, the half without them decides: narrows the region to it.
bool RegionSearch::DropUnate(Word* region, std::size_t begin) {
    bool narrowed = false;
    for (int w = 0; w < layout_.InputWords(); ++w) {
        Word missing = 0;
        for (const Word* cube : From(begin)) missing |= ~cube[w];
        missing &= region[w];
        const Word ones = missing & Layout::even;
        const Word zeros = (missing >> 1) & Layout::even;
        const Word open = Layout::FreePlaces(region[w]);
        const Word drop = ((ones & ~zeros & open) << 1) | (zeros & ~ones & open);
        region[w] &= ~drop;
        narrowed |= drop != 0;
    }
    return narrowed;
}

void RegionSearch::OpenSlot(int depth, int input, Literal half) {
    std::copy_n(Slot(depth), words_, Slot(depth + 1));
    layout_.SetInput(Slot(depth + 1), input, half);
}

void RegionSearch::Load(std::span<const Word* const> list) {
    if (stack_.size() < list.size()) stack_.resize(2 * list.size());
    std::copy(list.begin(), list.end(), stack_.begin());
    top_ = list.size();
}

bool RegionSearch::Covered(const Word* region, std::span<const Word* const> list) {
    if (budget_.Exhausted()) return false;
    std::copy_n(region, words_, Slot(0));
    Load(list);
    return CoveredNode(0, 0, top_);
}

bool RegionSearch::CoveredNode(int depth, std::size_t begin, std::size_t end) {
    Word* region = Slot(depth);
    const std::size_t top = top_;
    Filtered state = Filter(region, begin, end, top);
    while (state == Filtered::Some && DropUnate(region, top)) state = Filter(region, top, top_, top);
    if (state != Filtered::Some || budget_.Exhausted()) {
        top_ = top;
        return state == Filtered::Covered && !budget_.Exhausted();
    }
    const std::size_t listEnd = top_;
    const int input = MostFrequentInput(layout_, region, From(top));
    OpenSlot(depth, input, Literal::Zero);
    bool covered = CoveredNode(depth + 1, top, listEnd);
    if (covered) {
        OpenSlot(depth, input, Literal::One);
        covered = CoveredNode(depth + 1, top, listEnd);
    }
    top_ = top;
    return covered;
}

void RegionSearch::UncoveredHull(const Word* region, std::span<const Word* const> list, Word* hull) {
    if (budget_.Exhausted()) layout_.Supercube(hull, hull, region);
    std::copy_n(region, words_, Slot(0));
    Load(list);
    HullNode(0, 0, top_, hull);
}

void RegionSearch::HullNode(int depth, std::size_t begin, std::size_t end, Word* hull) {
    Word* region = Slot(depth);
    if (layout_.Contains(hull, region)) return;
    const std::size_t top = top_;
    const Filtered state = Filter(region, begin, end, top);
    if (state == Filtered::Covered || layout_.Contains(hull, region)) {
        top_ = top;
        return;
    }
    if (state == Filtered::Open || budget_.Exhausted()) {
        layout_.Supercube(hull, hull, region);
        top_ = top;
        return;
    }
    const std::size_t listEnd = top_;
    const int input = MostFrequentInput(layout_, region, From(top));
    for (const Literal half : {Literal::Zero, Literal::One}) {
        OpenSlot(depth, input, half);
        HullNode(depth + 1, top, listEnd, hull);
    }
    top_ = top;
}

}  // namespace logic
