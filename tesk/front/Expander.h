#pragma once

#include <array>
#include <optional>
#include <set>
#include <vector>

#include "front/Analysis.h"
#include "front/Terms.h"
#include "logic/Cover.h"

namespace front {

// Turns gates into sums of product terms, intermediate variables replaced by what they stand for.
class Expander {
  public:
    Expander(const Analysis& analysis, Report& report);

    // The sum for a gate. Throws TermsExceeded or BudgetExceeded; an intermediate variable that is defined by
    // itself is reported and counts as 0.
    TermList Expand(NodeId node);

    // The terms as a cover over the signals that they use.
    static logic::Cover ToCover(const TermList& terms, const std::vector<int>& signals);
    static std::vector<int> SignalsOf(const TermList& a, const TermList& b);
    static TermList FromCover(const logic::Cover& cover, const std::vector<int>& signals);

  private:
    static constexpr unsigned kPositive = 1;  // the function
    static constexpr unsigned kNegative = 2;  // its complement
    static unsigned Swapped(unsigned phases) { return ((phases & 1) << 1) | (phases >> 1); }

    struct Phases {
        TermList Positive;
        TermList Negative;
    };
    struct Known {
        std::array<TermList, 2> Terms;
        std::array<int, 2> State{};  // 0: not yet, 1: being expanded, 2: done
    };
    struct Need {
        int Variable;
        unsigned Phase;  // 0: the function, 1: its complement
        bool operator<(const Need& other) const {
            return Variable != other.Variable ? Variable < other.Variable : Phase < other.Phase;
        }
    };

    void Prepare(NodeId node, unsigned phases);
    void PrepareAll(NodeId node, unsigned phases, std::vector<Need>& begun);
    void Collect(NodeId node, unsigned phases, std::set<Need>& needs) const;
    void ExpandKnown(const Need& need);
    Phases Walk(NodeId node, unsigned phases);
    Phases WalkSum(NodeId node, unsigned phases);  // And and Or
    Phases WalkXor(NodeId node);
    TermList Product(const std::vector<const TermList*>& factors, const TermList* sum);
    std::optional<TermList> SumOf(std::span<const NodeId> kids, const std::vector<Phases>& parts,
                                  unsigned phase, bool wanted);

    const Analysis& analysis_;
    Report& report_;
    TermBudget budget_;
    std::vector<Known> known_;
    int detours_ = 0;
};

}  // namespace front
