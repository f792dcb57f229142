#include "front/Terms.h"

#include <algorithm>
#include <numeric>

#include "front/Limits.h"

namespace front {

namespace {

constexpr std::size_t kAbsorbFrom = 64;  // shorter sums are not worth the look

// One bit a literal: a term that lies in another one has all its bits.
std::uint64_t Signature(std::span<const TermLiteral> term) {
    std::uint64_t bits = 0;
    for (TermLiteral literal : term) bits |= std::uint64_t{1} << (literal & 63);
    return bits;
}

// The product of two terms into `out`; false if they contradict each other.
bool Merge(std::span<const TermLiteral> a, std::span<const TermLiteral> b, std::vector<TermLiteral>& out) {
    out.clear();
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < a.size() || j < b.size()) {
        TermLiteral next;
        if (j == b.size() || (i < a.size() && a[i] <= b[j])) {
            next = a[i];
            if (j < b.size() && b[j] == next) ++j;
            ++i;
        } else {
            next = b[j++];
        }
        if (!out.empty() && out.back() == (next ^ 1)) return false;
        out.push_back(next);
    }
    return true;
}

}  // namespace

TermList TermList::One() {
    TermList list;
    list.ends_.push_back(0);
    return list;
}

TermList TermList::Of(TermLiteral literal) {
    TermList list;
    list.Add(std::span(&literal, 1));
    return list;
}

void TermList::Add(std::span<const TermLiteral> term) {
    literals_.insert(literals_.end(), term.begin(), term.end());
    ends_.push_back(literals_.size());
}

void TermList::Or(const TermList& other, TermBudget& budget) {
    budget.Spend(other.Size());
    for (std::size_t i = 0; i < other.Size(); ++i) Add(other[i]);
    if (Size() > Limits::Terms) throw TermsExceeded{Limits::Terms};
}

TermList TermList::And(const TermList& a, const TermList& b, TermBudget& budget) {
    TermList result;
    std::vector<TermLiteral> product;
    std::size_t next = kAbsorbFrom;
    for (std::size_t i = 0; i < a.Size(); ++i) {
        budget.Spend(b.Size());
        for (std::size_t j = 0; j < b.Size(); ++j)
            if (Merge(a[i], b[j], product)) result.Add(product);
        if (result.Size() <= next || a.Size() == 1 || b.Size() == 1) continue;
        result.Absorb(budget);
        if (result.Size() > Limits::Product) throw TermsExceeded{Limits::Product};
        next = std::max(kAbsorbFrom, result.Size() * 2);
    }
    const std::size_t limit = a.Size() == 1 || b.Size() == 1 ? Limits::Terms : Limits::Product;
    if (result.Size() > limit) throw TermsExceeded{limit};
    return result;
}

void TermList::Absorb(TermBudget& budget) {
    std::vector<std::size_t> order(Size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return (*this)[a].size() < (*this)[b].size(); });
    std::vector<std::uint64_t> signatures;
    std::vector<std::size_t> kept;
    for (std::size_t at : order) {
        const auto term = (*this)[at];
        const std::uint64_t signature = Signature(term);
        bool held = false;
        for (std::size_t k = 0; k < kept.size() && !held; ++k) {
            if ((signatures[k] & ~signature) != 0) continue;
            const auto shorter = (*this)[kept[k]];
            held = std::includes(term.begin(), term.end(), shorter.begin(), shorter.end());
        }
        budget.Spend(kept.size());
        if (held) continue;
        kept.push_back(at);
        signatures.push_back(signature);
    }
    std::sort(kept.begin(), kept.end());
    TermList result;
    for (std::size_t at : kept) result.Add((*this)[at]);
    *this = std::move(result);
}

}  // namespace front
