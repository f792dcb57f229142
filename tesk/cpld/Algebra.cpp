#include "cpld/Algebra.h"

#include <algorithm>

#include "logic/Minimize.h"
#include "logic/Variables.h"

namespace cpld {
namespace {

constexpr std::size_t mostTerms = 200;  // a device of 64 macrocells has 320
constexpr std::uint64_t mostSteps = 300'000;

// The product of both; nothing if it is never true.
std::optional<Product> Joined(Product a, const Product& b) {
    a.insert(a.end(), b.begin(), b.end());
    std::sort(a.begin(), a.end());
    a.erase(std::unique(a.begin(), a.end()), a.end());
    const auto opposite = [](const Literal& x, const Literal& y) { return x == Negated(y); };
    if (std::adjacent_find(a.begin(), a.end(), opposite) != a.end()) return std::nullopt;
    return a;
}

logic::Cover Minimised(const logic::Cover& cover) {
    constexpr logic::Options quick{false, 0.05};
    const auto level = cover.Size() > 40 ? logic::Level::m3 : logic::Level::m4;
    return logic::Minimized(cover, level, quick);
}

}  // namespace

Literal Negated(Literal literal) {
    literal.Negated = !literal.Negated;
    return literal;
}

Sum And(const Sum& a, const Sum& b) {
    Sum result;
    for (const auto& one : a)
        for (const auto& other : b)
            if (auto term = Joined(one, other)) result.push_back(std::move(*term));
    return result;
}

Sum Or(Sum a, const Sum& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

Sum Minimised(const Sum& sum) {
    const auto variables = logic::SortedVariables(sum);
    return variables.SumOf(Minimised(variables.CoverOf(sum)));
}

std::optional<Sum> Not(const Sum& sum) {
    const auto variables = logic::SortedVariables(sum);
    auto steps = mostSteps;
    const auto complement = logic::Complement(variables.CoverOf(sum), mostTerms, steps);
    if (!complement) return std::nullopt;
    return variables.SumOf(Minimised(*complement));
}

std::optional<Sum> ExclusiveOr(const Sum& a, const Sum& b) {
    const auto notA = Not(a);
    const auto notB = Not(b);
    if (!notA || !notB) return std::nullopt;
    auto both = Or(And(a, *notB), And(*notA, b));
    if (both.size() > mostTerms) return std::nullopt;
    return Minimised(both);
}

}  // namespace cpld
