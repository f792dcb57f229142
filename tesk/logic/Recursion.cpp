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
      regions_(static_cast<std::size_t>(layout.Inputs() + 2) * static_cast<std::size_t>(layout.Words())),
      missing_(static_cast<std::size_t>(layout.InputWords())) {}

// Puts what matters in the region from [begin, end) to `to` (to <= begin or to == end of the stack); outputs
// that a cube covers throughout leave the region.
RegionSearch::Filtered RegionSearch::Filter(Word* region, std::size_t begin, std::size_t end,
                                            std::size_t to) {
    budget_.Spend(end - begin + 1);
    stack_.resize(std::max(stack_.size(), to + (end - begin)));
    std::size_t kept = to;
    for (std::size_t i = begin; i < end; ++i) {
        const Word* cube = stack_[i];
        if (!layout_.Meet(cube, region)) continue;
        if (!layout_.InputsContain(cube, region)) {
            stack_[kept++] = cube;
            continue;
        }
        for (int w = layout_.InputWords(); w < words_; ++w) region[w] &= ~cube[w];
        if (!layout_.HasOutputs(region)) {
            stack_.resize(to);
            return Filtered::Covered;
        }
    }
    stack_.resize(kept);
    return kept == to ? Filtered::Open : Filtered::Some;
}

// Where all cubes have the same literal of an input, the half without them decides: narrows the region to it.
bool RegionSearch::DropUnate(Word* region, std::size_t begin) {
    bool narrowed = false;
    for (int w = 0; w < layout_.InputWords(); ++w) {
        Word missing = 0;
        for (std::size_t i = begin; i < stack_.size(); ++i) missing |= ~stack_[i][w];
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

bool RegionSearch::Covered(const Word* region, std::span<const Word* const> list) {
    if (budget_.Exhausted()) return false;
    std::copy_n(region, words_, Slot(0));
    stack_.assign(list.begin(), list.end());
    return CoveredNode(0, 0, stack_.size());
}

bool RegionSearch::CoveredNode(int depth, std::size_t begin, std::size_t end) {
    Word* region = Slot(depth);
    const std::size_t top = stack_.size();
    Filtered state = Filter(region, begin, end, top);
    while (state == Filtered::Some && DropUnate(region, top)) state = Filter(region, top, stack_.size(), top);
    if (state != Filtered::Some || budget_.Exhausted()) {
        stack_.resize(top);
        return state == Filtered::Covered && !budget_.Exhausted();
    }
    const std::size_t listEnd = stack_.size();
    const int input = MostFrequentInput(layout_, region, std::span(stack_).subspan(top, listEnd - top));
    OpenSlot(depth, input, Literal::Zero);
    bool covered = CoveredNode(depth + 1, top, listEnd);
    if (covered) {
        OpenSlot(depth, input, Literal::One);
        covered = CoveredNode(depth + 1, top, listEnd);
    }
    stack_.resize(top);
    return covered;
}

void RegionSearch::UncoveredHull(const Word* region, std::span<const Word* const> list, Word* hull) {
    if (budget_.Exhausted()) layout_.Supercube(hull, hull, region);
    std::copy_n(region, words_, Slot(0));
    stack_.assign(list.begin(), list.end());
    HullNode(0, 0, stack_.size(), hull);
}

void RegionSearch::HullNode(int depth, std::size_t begin, std::size_t end, Word* hull) {
    Word* region = Slot(depth);
    if (layout_.Contains(hull, region)) return;
    const std::size_t top = stack_.size();
    const Filtered state = Filter(region, begin, end, top);
    if (state == Filtered::Covered || layout_.Contains(hull, region)) {
        stack_.resize(top);
        return;
    }
    if (state == Filtered::Open || budget_.Exhausted()) {
        layout_.Supercube(hull, hull, region);
        stack_.resize(top);
        return;
    }
    const std::size_t listEnd = stack_.size();
    const int input = MostFrequentInput(layout_, region, std::span(stack_).subspan(top, listEnd - top));
    for (const Literal half : {Literal::Zero, Literal::One}) {
        OpenSlot(depth, input, half);
        HullNode(depth + 1, top, listEnd, hull);
    }
    stack_.resize(top);
}

}  // namespace logic
