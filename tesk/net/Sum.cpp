#include "net/Sum.h"

#include <algorithm>

#include "logic/Minimize.h"
#include "logic/Variables.h"

namespace net {
namespace {

// Whether every point of b lies in a: a has no literal that b lacks.
bool Contains(const Product& a, const Product& b) {
    return a.size() <= b.size() && std::includes(b.begin(), b.end(), a.begin(), a.end());
}

// False if the term is over the limit.
bool Add(Sum& sum, Product term, std::size_t limit) {
    for (const Product& old : sum)
        if (Contains(old, term)) return true;
    std::erase_if(sum, [&](const Product& old) { return Contains(term, old); });
    sum.push_back(std::move(term));
    return sum.size() <= limit;
}

// Nothing if the two exclude one another.
std::optional<Product> Both(const Product& a, const Product& b) {
    Product both;
    both.reserve(a.size() + b.size());
    std::set_union(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(both));
    for (std::size_t i = 1; i < both.size(); ++i)
        if (both[i].Net == both[i - 1].Net) return std::nullopt;
    return both;
}

}  // namespace

Sum OneLiteral(int net, bool negated) { return {{{net, negated}}}; }
Sum ConstantSum(bool value) { return value ? Sum{{}} : Sum{}; }

std::optional<Sum> Or(const Sum& a, const Sum& b, std::size_t limit) {
    Sum sum = a;
    for (const Product& term : b)
        if (!Add(sum, term, limit)) return std::nullopt;
    return sum;
}

std::optional<Sum> And(const Sum& a, const Sum& b, std::size_t limit) {
    Sum sum;
    for (const Product& left : a) {
        for (const Product& right : b) {
            auto both = Both(left, right);
            if (both && !Add(sum, std::move(*both), limit)) return std::nullopt;
        }
    }
    return sum;
}

Sum Where(const Sum& sum, int net, bool value) {
    Sum fixed;
    for (Product term : sum) {
        if (std::binary_search(term.begin(), term.end(), Literal{net, value})) continue;
        std::erase(term, Literal{net, !value});
        Add(fixed, std::move(term), sum.size());
    }
    return fixed;
}

Sum Reduced(const Sum& sum) {
    if (sum.size() < 2) return sum;
    const auto variables = logic::SortedVariables(sum);
    return variables.SumOf(logic::Minimized(variables.CoverOf(sum), logic::Level::m3, {.Effort = 0.1}));
}

std::optional<std::size_t> Function::Terms() const {
    if (!On && !Off) return std::nullopt;
    return std::min(On ? On->size() : Off->size(), Off ? Off->size() : On->size());
}

std::optional<Literal> Function::Single() const {
    for (const bool isOff : {false, true}) {
        const auto& side = isOff ? Off : On;
        if (side && side->size() == 1 && side->front().size() == 1)
            return Literal{side->front()[0].Net, side->front()[0].Negated != isOff};
    }
    return std::nullopt;
}

std::optional<bool> Function::Constant() const {
    if ((On && On->empty()) || (Off && *Off == ConstantSum(true))) return false;
    if ((Off && Off->empty()) || (On && *On == ConstantSum(true))) return true;
    return std::nullopt;
}

Function Not(Function a) {
    std::swap(a.On, a.Off);
    return a;
}

Function And(const Function& a, const Function& b, std::size_t limit) {
    Function both;
    if (a.On && b.On) both.On = And(*a.On, *b.On, limit);
    if (a.Off && b.Off) both.Off = Or(*a.Off, *b.Off, limit);
    return both;
}

Function Or(const Function& a, const Function& b, std::size_t limit) {
    return Not(And(Not(a), Not(b), limit));
}

}  // namespace net
