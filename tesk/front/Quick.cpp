#include "front/Quick.h"

#include <algorithm>
#include <numeric>
#include <utility>
#include <vector>

namespace front {

namespace {

using logic::Cover;
using logic::Layout;
using logic::Word;

constexpr std::size_t kMostCompared = 40'000'000;  // of terms, in one look for contained ones

// Joins terms that are equal but for the inputs which the mask leaves out. True if there were any.
bool JoinEqual(Cover& cover, const std::vector<Word>& mask) {
    const std::size_t words = mask.size();
    std::vector<Word> keys(cover.Size() * words);
    for (std::size_t i = 0; i < cover.Size(); ++i)
        for (std::size_t w = 0; w < words; ++w) keys[i * words + w] = cover[i][w] & mask[w];
    const auto key = [&](std::size_t i) { return keys.data() + i * words; };
    std::vector<std::size_t> order(cover.Size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        const int side = key(a)[0] != key(b)[0] ? (key(a)[0] < key(b)[0] ? -1 : 1) : 0;
        if (side != 0 || words == 1) return side != 0 ? side < 0 : a < b;
        const auto [left, right] = std::mismatch(key(a), key(a) + words, key(b));
        return left == key(a) + words ? a < b : *left < *right;
    });
    Cover joined(cover.Form());
    joined.Reserve(cover.Size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        if (i > 0 && std::equal(key(order[i]), key(order[i]) + words, key(order[i - 1]))) {
            Word* last = joined[joined.Size() - 1];
            cover.Form().Supercube(last, last, cover[order[i]]);
        } else {
            joined.Add(cover[order[i]]);
        }
    }
    const bool changed = joined.Size() < cover.Size();
    if (changed) cover = std::move(joined);
    return changed;
}

bool JoinNeighbours(Cover& cover) {
    const Layout& layout = cover.Form();
    std::vector<Word> mask(static_cast<std::size_t>(layout.Words()), ~Word{0});
    bool changed = JoinEqual(cover, mask);
    for (int input = 0; input < layout.Inputs(); ++input) {
        layout.SetInput(mask.data(), input, logic::Literal::None);
        changed |= JoinEqual(cover, mask);
        layout.SetInput(mask.data(), input, logic::Literal::Free);
    }
    return changed;
}

// Drops terms that lie in one other. Only terms with fewer literals hold others: a table's rows, which all
// have as many, cost nothing. True if there were any.
bool DropContained(Cover& cover) {
    const Layout& layout = cover.Form();
    std::vector<std::pair<int, std::size_t>> order;
    for (std::size_t i = 0; i < cover.Size(); ++i) order.emplace_back(layout.InputLiterals(cover[i]), i);
    std::sort(order.begin(), order.end());
    Cover kept(layout);
    kept.Reserve(cover.Size());
    std::vector<Word> excluded;  // the first word of each kept term, inverted
    std::size_t shorter = 0;
    std::size_t compared = 0;
    for (std::size_t at = 0; at < order.size(); ++at) {
        if (at > 0 && order[at].first != order[at - 1].first) shorter = kept.Size();
        const Word* term = cover[order[at].second];
        bool held = false;
        for (std::size_t k = 0; k < shorter && !held && compared < kMostCompared; ++k)
            held = (term[0] & excluded[k]) == 0 && layout.Contains(kept[k], term);
        compared += shorter;
        if (held) continue;
        kept.Add(term);
        excluded.push_back(~term[0]);
    }
    const bool changed = kept.Size() < cover.Size();
    if (changed) cover = std::move(kept);
    return changed;
}

}  // namespace

Cover QuickReduce(const Cover& terms) {
    Cover cover = terms;
    cover.RemoveEmpty();
    DropContained(cover);
    do {
        while (JoinNeighbours(cover)) continue;
    } while (DropContained(cover));
    cover.SortUnique();
    return cover;
}

}  // namespace front
