#include <algorithm>
#include <unordered_map>

#include "logic/Quick.h"
#include "logic/Recursion.h"

namespace logic {

namespace {

// The complement, split at the most frequent input. Cubes of the two halves that differ in that input only
// are merged, cubes whose other half is also in the complement are widened.
class Complementer {
  public:
    Complementer(const Layout& layout, std::size_t cubeLimit, Budget& budget)
        : layout_(layout), cubeLimit_(cubeLimit), budget_(budget), made_(layout) {}

    bool Run(const Cover& cover, Cover& result) {
        stack_ = CubesOf(cover);
        Node(Everything(layout_), 0, stack_.size());
        if (failed_) return false;
        result = std::move(made_);
        return true;
    }

  private:
    void Node(const Cover& parent, std::size_t begin, std::size_t end) {
        if (failed_ || !budget_.Spend(end - begin + 1) || made_.Size() > cubeLimit_) {
            failed_ = true;
            return;
        }
        Cover region = parent;
        const std::size_t top = stack_.size();
        if (!Filter(region[0], begin, end)) {
            stack_.resize(top);
            return;
        }
        if (stack_.size() == top) {
            made_.Add(region[0]);
            return;
        }
        Split(region, top);
        stack_.resize(top);
    }

    // Lists what matters in the region on top of the stack; false if all of it is covered.
    bool Filter(Word* region, std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end; ++i) {
            const Word* cube = stack_[i];
            if (!layout_.OutputsMeet(cube, region)) continue;
            const Layout::Overlap overlap = layout_.InputOverlap(cube, region);
            if (overlap == Layout::Overlap::Part) stack_.push_back(cube);
            if (overlap != Layout::Overlap::Whole) continue;
            for (int w = layout_.InputWords(); w < layout_.Words(); ++w) region[w] &= ~cube[w];
            if (!layout_.HasOutputs(region)) return false;
        }
        return true;
    }

    void Split(Cover& region, std::size_t top) {
        const std::size_t listEnd = stack_.size();
        const int input =
            MostFrequentInput(layout_, region[0], std::span(stack_).subspan(top, listEnd - top));
        const std::size_t first = made_.Size();
        layout_.SetInput(region[0], input, Literal::Zero);
        Node(region, top, listEnd);
        const std::size_t second = made_.Size();
        layout_.SetInput(region[0], input, Literal::One);
        Node(region, top, listEnd);
        if (!failed_) Merge(first, second, input);
    }

    void Merge(std::size_t first, std::size_t second, int input) {
        const std::size_t end = made_.Size();
        if (first == second || second == end) return;
        const bool pairs = (second - first) * (end - second) <= 40000;
        if (!budget_.Spend((end - first) * 4 + (pairs ? (second - first) * (end - second) / 4 : 0))) return;
        for (std::size_t i = first; i < end; ++i) layout_.SetInput(made_[i], input, Literal::Free);
        // keep[i]: bit 0 the cube holds in the Zero half, bit 1 in the One half, 0 it is gone
        std::vector<std::uint8_t> keep(end - first);
        for (std::size_t i = first; i < end; ++i) keep[i - first] = i < second ? 1 : 2;
        if (pairs)
            WidenPairs(first, second, end, keep);
        else
            WidenEqual(first, second, end, keep);
        Compact(first, input, keep);
    }

    void WidenPairs(std::size_t first, std::size_t second, std::size_t end, std::vector<std::uint8_t>& keep) {
        for (std::size_t i = first; i < second; ++i)
            for (std::size_t k = second; k < end; ++k) {
                std::uint8_t& low = keep[i - first];
                std::uint8_t& high = keep[k - first];
                if (low == 0) break;
                if (high == 0) continue;
                if (layout_.Contains(made_[k], made_[i])) {
                    low = high == 3 ? 0 : 3;  // in the One half too; gone if the other already holds in both
                    if (low == 3 && layout_.Same(made_[k], made_[i])) high = 0;
                } else if (layout_.Contains(made_[i], made_[k])) {
                    high = low == 3 ? 0 : 3;
                }
            }
    }

    void WidenEqual(std::size_t first, std::size_t second, std::size_t end, std::vector<std::uint8_t>& keep) {
        std::unordered_multimap<Word, std::size_t> byHash;
        for (std::size_t i = first; i < second; ++i) byHash.emplace(Hash(made_[i]), i);
        for (std::size_t k = second; k < end; ++k) {
            const auto range = byHash.equal_range(Hash(made_[k]));
            for (auto it = range.first; it != range.second; ++it) {
                if (!layout_.Same(made_[it->second], made_[k]) || keep[it->second - first] == 3) continue;
                keep[it->second - first] = 3;
                keep[k - first] = 0;
                break;
            }
        }
    }

    Word Hash(const Word* cube) const { return HashWords(cube, static_cast<std::size_t>(layout_.Words())); }

    void Compact(std::size_t first, int input, const std::vector<std::uint8_t>& keep) {
        std::size_t to = first;
        for (std::size_t i = 0; i < keep.size(); ++i) {
            if (keep[i] == 0) continue;
            if (to != first + i) std::copy_n(made_[first + i], layout_.Words(), made_[to]);
            layout_.SetInput(made_[to++], input, static_cast<Literal>(keep[i]));
        }
        made_.Truncate(to);
    }

    Layout layout_;
    std::size_t cubeLimit_;
    Budget& budget_;
    Cover made_;
    CubeList stack_;
    bool failed_ = false;
};

// Each output alone: what one output is split at does not cut up the others.
bool ComplementOutputs(const Cover& cover, std::size_t cubeLimit, Budget& budget, Cover& result) {
    const Layout& layout = cover.Form();
    result = Cover(layout);
    for (int o = 0; o < layout.Outputs(); ++o) {
        Cover alone = OutputOf(cover, o);
        if (!budget.Spend(alone.Size() * (alone.Size() / 8 + 1))) return false;
        alone.Absorb();
        Cover off(alone.Form());
        if (!Complementer(alone.Form(), cubeLimit - result.Size(), budget).Run(alone, off)) return false;
        for (std::size_t i = 0; i < off.Size(); ++i) {
            Word* cube = result.Append();
            std::copy_n(off[i], layout.InputWords(), cube);
            layout.SetOutput(cube, o, true);
        }
    }
    MergeOutputs(result);
    return true;
}

}  // namespace

bool ComplementWithin(const Cover& cover, std::size_t cubeLimit, Budget& budget, Cover& result) {
    const std::uint64_t before = budget.Left();
    if (!ComplementOutputs(cover, cubeLimit, budget, result)) return false;
    if (cover.Outputs() == 1 || result.Size() < 1000) return true;
    Budget second(
        std::min(budget.Left(), before - budget.Left() + 1000));  // outputs that have much in common
    Cover joint(cover.Form());
    if (Complementer(cover.Form(), result.Size(), second).Run(cover, joint) && joint.Size() < result.Size())
        result = std::move(joint);
    return true;
}

}  // namespace logic
