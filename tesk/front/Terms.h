#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace front {

// A literal: twice the index of the signal, plus one where it is complemented.
using TermLiteral = std::uint32_t;

struct TermsExceeded {
    std::size_t Limit;  // what one sum needs more than
};
struct BudgetExceeded {};  // the design's work or room is used up

// Work and room that are left for product terms, counted for a whole design.
struct TermBudget {
    std::uint64_t Work;
    std::uint64_t Literals;
    void Spend(std::uint64_t work) {
        if (work > Work) throw BudgetExceeded{};
        Work -= work;
    }
};

// A sum of product terms, each a sorted list of literals. No term holds a literal and its complement. The
// operations throw TermsExceeded or BudgetExceeded.
class TermList {
  public:
    static TermList One();
    static TermList Of(TermLiteral literal);

    std::size_t Size() const { return ends_.size(); }
    std::size_t Literals() const { return literals_.size(); }
    bool Empty() const { return ends_.empty(); }
    std::span<const TermLiteral> operator[](std::size_t i) const {
        const std::size_t first = i == 0 ? 0 : ends_[i - 1];
        return std::span(literals_).subspan(first, ends_[i] - first);
    }

    void Add(std::span<const TermLiteral> term);
    void Or(const TermList& other, TermBudget& budget);
    static TermList And(const TermList& a, const TermList& b, TermBudget& budget);
    // Drops each term that another one holds in itself.
    void Absorb(TermBudget& budget);

  private:
    std::vector<TermLiteral> literals_;
    std::vector<std::size_t> ends_;
};

}  // namespace front
