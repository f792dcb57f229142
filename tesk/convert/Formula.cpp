#include "convert/Formula.h"

#include <algorithm>

#include "convert/Failure.h"
#include "front/Limits.h"

namespace convert {

Formula Formula::Constant(bool value) {
    Formula result(value ? "'b'1" : "'b'0", Binding::Unit);
    result.value_ = value;
    return result;
}

// "#" and "$" side by side read wrongly to whoever knows other precedences.
bool Formula::IsBareWithin(Binding binding) const {
    return binding_ == Binding::Unit || binding_ == binding ||
           (binding_ == Binding::And && binding == Binding::Or);
}

std::string Formula::Within(Binding binding) const {
    return IsBareWithin(binding) ? text_ : "(" + text_ + ")";
}

Formula Formula::Not(Formula a) {
    if (a.value_) return Constant(!*a.value_);
    const bool isNot = a.binding_ == Binding::Unit && a.text_[0] == '!';
    Formula result(isNot ? a.text_.substr(1) : "!" + a.Within(Binding::Unit), Binding::Unit);
    result.depth_ = isNot ? a.depth_ - 1 : a.DepthWithin(Binding::Unit) + 1;
    return result;
}

Formula Formula::Combine(Operator op, Formula a, const Formula& b) {
    switch (op) {
        case Operator::Nand:
            return Not(Combine(Operator::And, std::move(a), b));
        case Operator::Nor:
            return Not(Combine(Operator::Or, std::move(a), b));
        case Operator::Xnor:
        case Operator::Equal:
            return Not(Combine(Operator::Xor, std::move(a), b));
        default:
            break;
    }
    const bool isAnd = op == Operator::And;
    const bool isOr = op == Operator::Or;
    if (a.value_ || b.value_) {
        const bool constant = a.value_ ? *a.value_ : *b.value_;
        const Formula& other = a.value_ ? b : a;
        if (isAnd || isOr) return constant == isAnd ? other : Constant(constant);
        return constant ? Not(other) : other;
    }
    const Binding binding = isAnd ? Binding::And : isOr ? Binding::Or : Binding::Xor;
    const int depth = std::max(a.DepthWithin(binding), b.DepthWithin(binding));
    if (a.binding_ != binding) a = {a.Within(binding), binding};
    a.depth_ = depth;
    a.text_ += isAnd ? " & " : isOr ? " # " : " $ ";
    a.text_ += b.Within(binding);
    return a;
}

// What the compiler takes; a negation may still come around it.
void CheckSize(const Group& group, int line) {
    constexpr int maxDepth = 100;
    std::size_t size = 0;
    for (const Formula& bit : group.Bits) {
        if (bit.Depth() > maxDepth) Fail(line, "the formula nests too deep");
        size += bit.Text().size();
    }
    if (size > front::Limits::FileBytes) Fail(line, "the formula is too long");
}

Group Widened(Group a, std::size_t width, int line) {
    if (a.Bits.size() == width) return a;
    if (a.IsNumber) {
        if (a.Bits.size() > width)
            Fail(line, "a number does not fit into " + std::to_string(width) + " bits");
        a.Bits.insert(a.Bits.begin(), width - a.Bits.size(), Formula::Constant(false));
        return a;
    }
    if (a.Bits.size() == 1) {
        if (a.Bits.front().Text().size() > front::Limits::FileBytes / width)
            Fail(line, "the formula is too long");
        a.Bits.resize(width, Formula(a.Bits.front()));
        return a;
    }
    Fail(line, "a group of " + std::to_string(a.Bits.size()) + " meets one of " + std::to_string(width));
}

Group Not(Group a) {
    for (Formula& bit : a.Bits) bit = Formula::Not(std::move(bit));
    a.IsNumber = false;
    return a;
}

Group Combine(Operator op, Group a, Group b, int line) {
    const std::size_t width = a.IsNumber == b.IsNumber ? std::max(a.Bits.size(), b.Bits.size())
                              : a.IsNumber             ? b.Bits.size()
                                                       : a.Bits.size();
    const bool isComparison = op == Operator::Equal || op == Operator::Unequal;
    a = Widened(std::move(a), width, line);
    b = Widened(std::move(b), width, line);
    for (std::size_t i = 0; i < width; ++i)
        a.Bits[i] = Formula::Combine(isComparison ? Operator::Xnor : op, std::move(a.Bits[i]), b.Bits[i]);
    CheckSize(a, line);
    a.IsNumber = false;
    if (!isComparison) return a;
    Formula all = Formula::Constant(true);
    for (const Formula& bit : a.Bits) all = Formula::Combine(Operator::And, std::move(all), bit);
    return {{op == Operator::Equal ? all : Formula::Not(all)}};
}

}  // namespace convert
