#include "fit/Sums.h"

#include <algorithm>
#include <map>

namespace fit {
namespace {

constexpr std::size_t workOfCopy = 32;  // of a term, measured in comparisons

using Variable = std::pair<std::size_t, bool>;  // signal, .IO

Variable VariableOf(const Literal& literal) { return {literal.Signal, literal.Pin}; }

// Terms that hold all literals of another one are dropped.
void Absorb(Sum& sum) {
    Sort(sum);
    std::stable_sort(sum.begin(), sum.end(),
                     [](const Term& a, const Term& b) { return a.size() < b.size(); });
    Sum kept;
    for (auto& term : sum) {
        const auto covers = [&](const Term& by) {
            return std::includes(term.begin(), term.end(), by.begin(), by.end());
        };
        if (std::none_of(kept.begin(), kept.end(), covers)) kept.push_back(std::move(term));
    }
    sum = std::move(kept);
}

class Complementer {
  public:
    explicit Complementer(std::size_t& budget) : budget_(budget) {}

    // False once the budget is used up.
    bool Good = true;

    Sum Of(const Sum& sum) {
        Spend(workOfCopy * (1 + sum.size()));
        if (!Good || IsTrue(sum)) return {};
        if (sum.empty()) return {Term{}};
        if (sum.size() == 1) return OfTerm(sum.front());
        const auto variable = MostUsed(sum);
        return Joined(variable, Of(Cofactor(sum, variable, false)), Of(Cofactor(sum, variable, true)));
    }

  private:
    void Spend(std::size_t work) {
        Good = Good && work <= budget_;
        budget_ -= Good ? work : 0;
    }

    static Sum OfTerm(const Term& term) {
        Sum result;
        for (auto literal : term) {
            literal.Negated = !literal.Negated;
            result.push_back({literal});
        }
        Absorb(result);
        return result;
    }

    static Variable MostUsed(const Sum& sum) {
        std::map<Variable, std::size_t> uses;
        for (const auto& term : sum) {
            for (const auto& literal : term) ++uses[VariableOf(literal)];
        }
        const auto fewer = [](const auto& a, const auto& b) { return a.second < b.second; };
        return std::max_element(uses.begin(), uses.end(), fewer)->first;
    }

    static Sum Cofactor(const Sum& sum, const Variable& variable, bool value) {
        Sum result;
        for (const auto& term : sum) {
            Term kept;
            bool holds = true;
            for (const auto& literal : term) {
                if (VariableOf(literal) != variable) kept.push_back(literal);
                if (VariableOf(literal) == variable && literal.Negated == value) holds = false;
            }
            if (holds) result.push_back(std::move(kept));
        }
        return result;
    }

    Sum Joined(const Variable& variable, Sum zero, Sum one) {
        Sum result;
        Sort(zero);
        Sort(one);
        const auto add = [&](Sum& from, const Sum& other, bool negated) {
            for (auto& term : from) {
                const bool shared = std::find(other.begin(), other.end(), term) != other.end();
                if (!shared) term.push_back({variable.first, negated, variable.second});
                result.push_back(term);
            }
        };
        const auto size = zero.size() + one.size();
        Spend(size * size);  // what the search for shared terms and the absorption may take
        if (!Good) return {};
        const auto plainZero = zero;
        add(zero, one, true);
        add(one, plainZero, false);
        Absorb(result);
        return result;
    }

    std::size_t& budget_;
};

// Whether no point is in a term of each.
bool AreApart(const Sum& a, const Sum& b) {
    const auto apart = [](const Term& x, const Term& y) {
        return std::any_of(x.begin(), x.end(), [&](const Literal& l) {
            return std::find(y.begin(), y.end(), Literal{l.Signal, !l.Negated, l.Pin}) != y.end();
        });
    };
    return std::all_of(a.begin(), a.end(), [&](const Term& x) {
        return std::all_of(b.begin(), b.end(), [&](const Term& y) { return apart(x, y); });
    });
}

}  // namespace

void Sort(Sum& sum) {
    for (auto& term : sum) {
        std::sort(term.begin(), term.end());
        term.erase(std::unique(term.begin(), term.end()), term.end());
    }
    std::sort(sum.begin(), sum.end());
    sum.erase(std::unique(sum.begin(), sum.end()), sum.end());
}

std::optional<Sum> ComplementOf(const Sum& sum, std::size_t& budget) {
    Complementer complementer(budget);
    auto result = complementer.Of(sum);
    return complementer.Good ? std::optional(std::move(result)) : std::nullopt;
}

bool IsTrue(const Sum& sum) {
    return std::any_of(sum.begin(), sum.end(), [](const Term& term) { return term.empty(); });
}

bool IsSame(Sum a, Sum b) {
    Sort(a);
    Sort(b);
    return a == b;
}

bool IsSameFunction(const Sum& a, const Sum& b, std::size_t& budget) {
    if (IsSame(a, b)) return true;
    const auto notA = ComplementOf(a, budget);
    const auto notB = ComplementOf(b, budget);
    return notA && notB && AreApart(a, *notB) && AreApart(b, *notA);
}

}  // namespace fit
