#include "front/Expander.h"

#include <algorithm>

#include "front/Limits.h"
#include "logic/Minimize.h"

namespace front {

namespace {
constexpr std::size_t kManyTerms = 256;  // beyond, products of sums are not multiplied out at once
constexpr std::uint64_t kWalkWork = 16;
constexpr int kMostDetours = 8;  // such products inside one another, over variables too
}  // namespace

Expander::Expander(const Analysis& analysis, Report& report)
    : analysis_(analysis),
      report_(report),
      budget_{Limits::TermWork, Limits::Literals},
      known_(analysis.Result.Variables.size()) {}

TermList Expander::Expand(NodeId node) {
    Prepare(node, kPositive);
    return Walk(node, kPositive).Positive;
}

// Which intermediate variables the gate reaches, and in which phase.
void Expander::Collect(NodeId node, unsigned phases, std::set<Need>& needs) const {
    const Network& gates = analysis_.Gates;
    switch (gates.What(node)) {
        case Gate::Intermediate: {
            const int variable = static_cast<int>(gates.Operand(node));
            if ((phases & kPositive) != 0) needs.insert({variable, 0});
            if ((phases & kNegative) != 0) needs.insert({variable, 1});
            return;
        }
        case Gate::Not:
            return Collect(gates.Kids(node)[0], Swapped(phases), needs);
        case Gate::Pair:
            if ((phases & kPositive) != 0) Collect(gates.Kids(node)[0], kPositive, needs);
            if ((phases & kNegative) != 0) Collect(gates.Kids(node)[1], kPositive, needs);
            return;
        case Gate::And:
        case Gate::Or:
        case Gate::Xor: {
            const unsigned wanted = gates.What(node) == Gate::Xor ? kPositive | kNegative : phases;
            for (NodeId kid : gates.Kids(node)) Collect(kid, wanted, needs);
            return;
        }
        default:
            return;
    }
}

// Expands what the gate needs. What an exception leaves half done is as if it had not been begun.
void Expander::Prepare(NodeId node, unsigned phases) {
    std::vector<Need> begun;
    try {
        PrepareAll(node, phases, begun);
    } catch (...) {
        for (const Need& need : begun) {
            int& state = known_[static_cast<std::size_t>(need.Variable)].State[need.Phase];
            if (state == 1) state = 0;
        }
        throw;
    }
}

// Deepest first, without recursion: chains of variables may be long.
void Expander::PrepareAll(NodeId node, unsigned phases, std::vector<Need>& begun) {
    std::set<Need> needs;
    Collect(node, phases, needs);
    std::vector<Need> stack(needs.begin(), needs.end());
    while (!stack.empty()) {
        const Need need = stack.back();
        int& state = known_[static_cast<std::size_t>(need.Variable)].State[need.Phase];
        if (state != 0) {
            stack.pop_back();
            if (state == 1) ExpandKnown(need);
            state = 2;
            continue;
        }
        state = 1;
        begun.push_back(need);
        needs.clear();
        Collect(analysis_.Intermediates[static_cast<std::size_t>(need.Variable)],
                need.Phase == 0 ? kPositive : kNegative, needs);
        for (const Need& next : needs) {
            const int known = known_[static_cast<std::size_t>(next.Variable)].State[next.Phase];
            const Variable& variable = analysis_.Result.Variables[static_cast<std::size_t>(next.Variable)];
            if (known == 1) report_.Add(Code::IntermediateLoop, variable.At, variable.Name);
            if (known == 0) stack.push_back(next);
        }
    }
}

void Expander::ExpandKnown(const Need& need) {
    const NodeId node = analysis_.Intermediates[static_cast<std::size_t>(need.Variable)];
    Phases phases = Walk(node, need.Phase == 0 ? kPositive : kNegative);
    TermList& terms = need.Phase == 0 ? phases.Positive : phases.Negative;
    if (terms.Literals() > budget_.Literals) throw BudgetExceeded{};
    budget_.Literals -= terms.Literals();
    known_[static_cast<std::size_t>(need.Variable)].Terms[need.Phase] = std::move(terms);
}

Expander::Phases Expander::Walk(NodeId node, unsigned phases) {
    const Network& gates = analysis_.Gates;
    budget_.Spend(kWalkWork);
    Phases result;
    switch (gates.What(node)) {
        case Gate::Zero:
            result.Negative = TermList::One();
            break;
        case Gate::One:
            result.Positive = TermList::One();
            break;
        case Gate::NoConnect:
            break;
        case Gate::Signal:
            result.Positive = TermList::Of(gates.Operand(node) * 2);
            result.Negative = TermList::Of(gates.Operand(node) * 2 + 1);
            break;
        case Gate::Intermediate:
            if ((phases & kPositive) != 0) result.Positive = known_[gates.Operand(node)].Terms[0];
            if ((phases & kNegative) != 0) result.Negative = known_[gates.Operand(node)].Terms[1];
            break;
        case Gate::Not:
            result = Walk(gates.Kids(node)[0], Swapped(phases));
            std::swap(result.Positive, result.Negative);
            break;
        case Gate::Pair:
            if ((phases & kPositive) != 0) result.Positive = Walk(gates.Kids(node)[0], kPositive).Positive;
            if ((phases & kNegative) != 0) result.Negative = Walk(gates.Kids(node)[1], kPositive).Positive;
            break;
        case Gate::Xor:
            return WalkXor(node);
        default:
            return WalkSum(node, phases);
    }
    return result;
}

// The product of the factors. Where multiplying out would grow it is the complement of `sum`, the sum of the
// complemented factors, taken by recursion over the inputs.
TermList Expander::Product(const std::vector<const TermList*>& factors, const TermList* sum) {
    if (sum != nullptr) {
        const std::vector<int> signals = SignalsOf(*sum, {});
        const auto complement = logic::Complement(ToCover(*sum, signals), Limits::Product);
        if (complement) return FromCover(*complement, signals);
    }
    TermList product = TermList::One();
    for (const TermList* factor : factors) product = TermList::And(product, *factor, budget_);
    return product;
}

// And and Or are each other's dual: one phase is a sum over the kids, the other a product.
Expander::Phases Expander::WalkSum(NodeId node, unsigned phases) {
    const std::span<const NodeId> kids = analysis_.Gates.Kids(node);
    const unsigned sumPhase = analysis_.Gates.What(node) == Gate::Or ? kPositive : kNegative;
    std::vector<Phases> parts;
    std::vector<const TermList*> factors;
    std::size_t estimate = 1;
    for (NodeId kid : kids) parts.push_back(Walk(kid, phases));
    for (const Phases& part : parts) {
        factors.push_back(sumPhase == kPositive ? &part.Negative : &part.Positive);
        estimate = std::min(estimate * factors.back()->Size(), 2 * kManyTerms);
    }
    const bool wantsSum = (phases & sumPhase) != 0;
    const bool wantsProduct = (phases & Swapped(sumPhase)) != 0;
    const bool large = wantsProduct && estimate > kManyTerms;
    std::optional<TermList> sum;
    if (wantsSum || large) sum = SumOf(kids, parts, sumPhase, wantsSum);
    TermList product = wantsProduct ? Product(factors, large && sum ? &*sum : nullptr) : TermList{};
    Phases result{wantsSum ? std::move(*sum) : TermList{}, std::move(product)};
    if (sumPhase == kNegative) std::swap(result.Positive, result.Negative);
    return result;
}

// The sum of one phase of the kids. If it is not asked for otherwise, the kids are walked anew with the
// variables that they need in that phase; nothing then if it would be too long or lies too deep.
std::optional<TermList> Expander::SumOf(std::span<const NodeId> kids, const std::vector<Phases>& parts,
                                        unsigned phase, bool wanted) {
    if (!wanted && detours_ >= kMostDetours) return std::nullopt;
    detours_ += wanted ? 0 : 1;
    std::optional<TermList> result;
    try {
        TermList sum;
        for (std::size_t i = 0; i < kids.size(); ++i) {
            if (!wanted) Prepare(kids[i], phase);
            const Phases again = wanted ? Phases{} : Walk(kids[i], phase);
            const Phases& part = wanted ? parts[i] : again;
            sum.Or(phase == kPositive ? part.Positive : part.Negative, budget_);
        }
        result = std::move(sum);
    } catch (const TermsExceeded&) {
        if (wanted) throw;
    }
    detours_ -= wanted ? 0 : 1;
    return result;
}

Expander::Phases Expander::WalkXor(NodeId node) {
    Phases result;
    result.Negative = TermList::One();
    for (NodeId kid : analysis_.Gates.Kids(node)) {
        const Phases part = Walk(kid, kPositive | kNegative);
        Phases next;
        next.Positive = TermList::And(result.Positive, part.Negative, budget_);
        next.Positive.Or(TermList::And(result.Negative, part.Positive, budget_), budget_);
        next.Negative = TermList::And(result.Positive, part.Positive, budget_);
        next.Negative.Or(TermList::And(result.Negative, part.Negative, budget_), budget_);
        result = std::move(next);
        if (std::max(result.Positive.Size(), result.Negative.Size()) > Limits::Product)
            throw TermsExceeded{Limits::Product};
    }
    return result;
}

std::vector<int> Expander::SignalsOf(const TermList& a, const TermList& b) {
    std::vector<int> signals;
    for (const TermList* list : {&a, &b})
        for (std::size_t i = 0; i < list->Size(); ++i)
            for (TermLiteral literal : (*list)[i]) signals.push_back(static_cast<int>(literal / 2));
    std::sort(signals.begin(), signals.end());
    signals.erase(std::unique(signals.begin(), signals.end()), signals.end());
    return signals;
}

logic::Cover Expander::ToCover(const TermList& terms, const std::vector<int>& signals) {
    logic::Cover cover(static_cast<int>(signals.size()), 1);
    cover.Reserve(terms.Size());
    for (std::size_t i = 0; i < terms.Size(); ++i) {
        logic::Word* cube = cover.Append();
        cover.Form().SetOutput(cube, 0, true);
        for (TermLiteral literal : terms[i]) {
            const auto place =
                std::lower_bound(signals.begin(), signals.end(), static_cast<int>(literal / 2));
            cover.Form().Restrict(cube, static_cast<int>(place - signals.begin()), (literal & 1) == 0);
        }
    }
    return cover;
}

TermList Expander::FromCover(const logic::Cover& cover, const std::vector<int>& signals) {
    TermList terms;
    std::vector<TermLiteral> term;
    for (std::size_t i = 0; i < cover.Size(); ++i) {
        term.clear();
        for (const auto& [input, negated] : cover.Form().LiteralsOf(cover[i]))
            term.push_back(static_cast<TermLiteral>(signals[input]) * 2 + (negated ? 1 : 0));
        terms.Add(term);
    }
    return terms;
}

}  // namespace front
