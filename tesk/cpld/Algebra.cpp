#include "cpld/Algebra.h"

#include <algorithm>
#include <tuple>

#include "fit/Sums.h"
#include "logic/Minimize.h"

namespace cpld {
namespace {

constexpr std::size_t mostTerms = 200;  // a device of 64 macrocells has 320
constexpr std::uint64_t mostSteps = 300'000;

using Variable = std::pair<std::size_t, bool>;
Variable VariableOf(const Literal& literal) { return {literal.Signal, literal.Pin}; }

bool Less(const Literal& a, const Literal& b) {
    return std::tuple(a.Signal, a.Pin, a.Negated) < std::tuple(b.Signal, b.Pin, b.Negated);
}

// The product of both; nothing if it is never true.
std::optional<Product> Joined(Product a, const Product& b) {
    a.insert(a.end(), b.begin(), b.end());
    std::sort(a.begin(), a.end(), Less);
    a.erase(std::unique(a.begin(), a.end()), a.end());
    const auto opposite = [](const Literal& x, const Literal& y) { return VariableOf(x) == VariableOf(y); };
    if (std::adjacent_find(a.begin(), a.end(), opposite) != a.end()) return std::nullopt;
    return a;
}

std::vector<Variable> VariablesOf(const Sum& sum) {
    std::vector<Variable> variables;
    for (const auto& term : sum)
        for (const auto& literal : term) variables.push_back(VariableOf(literal));
    std::sort(variables.begin(), variables.end());
    variables.erase(std::unique(variables.begin(), variables.end()), variables.end());
    return variables;
}

logic::Cover CoverOf(const Sum& sum, const std::vector<Variable>& variables) {
    logic::Cover cover(static_cast<int>(variables.size()), 1);
    for (const auto& written : sum) {
        const auto term = Joined(written, {});
        if (!term) continue;
        logic::Word* cube = cover.Append();
        cover.Form().SetOutput(cube, 0, true);
        for (const auto& literal : *term) {
            const auto at = std::lower_bound(variables.begin(), variables.end(), VariableOf(literal));
            cover.Form().SetInput(cube, static_cast<int>(at - variables.begin()),
                                  literal.Negated ? logic::Literal::Zero : logic::Literal::One);
        }
    }
    return cover;
}

Sum SumOf(const logic::Cover& cover, const std::vector<Variable>& variables) {
    Sum sum;
    for (std::size_t i = 0; i < cover.Size(); ++i) {
        auto& term = sum.emplace_back();
        for (std::size_t v = 0; v < variables.size(); ++v) {
            const auto literal = cover.Form().Input(cover[i], static_cast<int>(v));
            if (literal == logic::Literal::Free) continue;
            term.push_back({variables[v].first, literal == logic::Literal::Zero, variables[v].second});
        }
    }
    return sum;
}

logic::Cover Minimised(const logic::Cover& cover) {
    constexpr logic::Options quick{false, 0.05};
    const auto level = cover.Size() > 40 ? logic::Level::m3 : logic::Level::m4;
    return logic::Minimize(cover, logic::Cover(cover.Form()), level, quick).Terms;
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
    const auto variables = VariablesOf(sum);
    return SumOf(Minimised(CoverOf(sum, variables)), variables);
}

std::optional<Sum> Not(const Sum& sum) {
    const auto variables = VariablesOf(sum);
    auto steps = mostSteps;
    const auto complement = logic::Complement(CoverOf(sum, variables), mostTerms, steps);
    if (!complement) return std::nullopt;
    return SumOf(Minimised(*complement), variables);
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
