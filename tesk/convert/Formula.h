#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace convert {

enum class Operator { And, Or, Xor, Nand, Nor, Xnor, Equal, Unequal };

// A formula in the design language. Constants fold, parentheses stand only where they are needed.
class Formula {
  public:
    static Formula Name(std::string name) { return {std::move(name), Binding::Unit}; }
    static Formula Constant(bool value);

    const std::string& Text() const { return text_; }
    std::optional<bool> Value() const { return value_; }  // of a constant
    int Depth() const { return depth_; }                  // parentheses and "!" within one another

    // And, Or and Xor with their complements; the text of `a` grows in place, so that a long sum is one copy.
    static Formula Combine(Operator op, Formula a, const Formula& b);
    static Formula Not(Formula a);

  private:
    enum class Binding { Xor, Or, And, Unit };

    Formula(std::string text, Binding binding) : text_(std::move(text)), binding_(binding) {}
    bool IsBareWithin(Binding binding) const;
    std::string Within(Binding binding) const;
    int DepthWithin(Binding binding) const { return depth_ + (IsBareWithin(binding) ? 0 : 1); }

    std::string text_;
    Binding binding_;
    std::optional<bool> value_;
    int depth_ = 0;
};

// A sum of products, which are lists of literals; `of` makes a formula of a literal.
template <typename Sum, typename OfLiteral>
Formula SumOfProducts(const Sum& sum, const OfLiteral& of) {
    Formula result = Formula::Constant(false);
    for (const auto& product : sum) {
        Formula term = Formula::Constant(true);
        for (const auto& literal : product)
            term = Formula::Combine(Operator::And, std::move(term), of(literal));
        result = Formula::Combine(Operator::Or, std::move(result), term);
    }
    return result;
}

// The bits of a group, most significant first; a single name is a group of one.
struct Group {
    std::vector<Formula> Bits;
    bool IsNumber = false;  // takes the width of what it meets
};

// Bit by bit; a single bit meets every bit of the other side, comparisons give one bit. Throws Failure where
// the widths differ, or if the result is more than the compiler takes.
Group Combine(Operator op, Group a, Group b, int line);
Group Not(Group a);
// The group in so many bits; throws Failure if it has not as many.
Group Widened(Group a, std::size_t width, int line);

}  // namespace convert
