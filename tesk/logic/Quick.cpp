#include "logic/Quick.h"

#include <algorithm>

namespace logic {

namespace {

// Sorts so that cubes equal under the mask stand together, and calls merge(kept, other) for neighbours that
// are equal under it; the other is dropped. True if anything was merged.
template <typename Merge>
bool MergeEqual(Cover& cover, const std::vector<Word>& mask, Merge merge) {
    const auto words = mask.size();
    std::vector<std::size_t> order(cover.Size());
    for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
    const auto compare = [&](std::size_t a, std::size_t b) {
        for (std::size_t w = 0; w < words; ++w)
            if (((cover[a][w] ^ cover[b][w]) & mask[w]) != 0)
                return (cover[a][w] & mask[w]) < (cover[b][w] & mask[w]) ? -1 : 1;
        return 0;
    };
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return compare(a, b) < 0; });
    Cover merged(cover.Form());
    merged.Reserve(cover.Size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        if (i > 0 && compare(order[i - 1], order[i]) == 0)
            merge(merged[merged.Size() - 1], cover[order[i]]);
        else
            merged.Add(cover[order[i]]);
    }
    const bool changed = merged.Size() < cover.Size();
    cover = std::move(merged);
    return changed;
}

bool MergePass(Cover& cover, bool shared) {
    const Layout& layout = cover.Form();
    const auto unite = [&layout](Word* kept, const Word* other) { layout.Supercube(kept, kept, other); };
    std::vector<Word> mask(static_cast<std::size_t>(layout.Words()), ~Word{0});
    bool changed = false;
    for (int v = 0; v < layout.Inputs(); ++v) {
        layout.SetInput(mask.data(), v, Literal::None);
        changed |= MergeEqual(cover, mask, unite);
        layout.SetInput(mask.data(), v, Literal::Free);
    }
    return (shared && MergeOutputs(cover)) || changed;
}

}  // namespace

bool MergeOutputs(Cover& cover) {
    const Layout& layout = cover.Form();
    std::vector<Word> mask(static_cast<std::size_t>(layout.Words()), ~Word{0});
    std::fill(mask.begin() + layout.InputWords(), mask.end(), Word{0});
    return MergeEqual(cover, mask,
                      [&layout](Word* kept, const Word* other) { layout.Supercube(kept, kept, other); });
}

void MergeAdjacent(Cover& cover, bool shared) {
    cover.Absorb();
    while (MergePass(cover, shared)) cover.Absorb();
}

Cover SplitOutputs(const Cover& cover) {
    const Layout& layout = cover.Form();
    Cover split(layout);
    for (std::size_t i = 0; i < cover.Size(); ++i)
        for (int o = 0; o < layout.Outputs(); ++o) {
            if (!layout.Output(cover[i], o)) continue;
            Word* cube = split.Append();
            std::copy_n(cover[i], layout.InputWords(), cube);
            layout.SetOutput(cube, o, true);
        }
    return split;
}

}  // namespace logic
