#pragma once

#include <cstddef>
#include <optional>
#include <vector>

// Sums of products over nets, for functions of a few product terms.
namespace net {

// A net or its complement.
struct Literal {
    int Net;
    bool Negated;
    auto operator<=>(const Literal&) const = default;
};

using Product = std::vector<Literal>;  // in order, each net once; empty: always true
using Sum = std::vector<Product>;      // empty: never

Sum OneLiteral(int net, bool negated);
Sum ConstantSum(bool value);

// Without terms that lie in another one. Nothing if they would be more than `limit`.
std::optional<Sum> Or(const Sum& a, const Sum& b, std::size_t limit);
std::optional<Sum> And(const Sum& a, const Sum& b, std::size_t limit);

// The sum with a net fixed.
Sum Where(const Sum& sum, int net, bool value);

// Few terms for the same function.
Sum Reduced(const Sum& sum);

// A function and its complement; the one that would have too many terms is left out.
struct Function {
    std::optional<Sum> On, Off;

    // The terms of the smaller one; no number if neither is there.
    std::optional<std::size_t> Terms() const;
    std::optional<Literal> Single() const;  // the net that it only repeats or inverts
    std::optional<bool> Constant() const;
};

Function Not(Function a);
Function Or(const Function& a, const Function& b, std::size_t limit);
Function And(const Function& a, const Function& b, std::size_t limit);

}  // namespace net
