#include <algorithm>
#include <numeric>

#include "front/Elaborator.h"

namespace front {

namespace {

// A value's bits from the most significant on, and the bounds cut down to them.
struct Bounded {
    std::vector<NodeId> Bits;
    std::string Low;
    std::string High;
};

int CompareDigits(const Constant& a, const Constant& b, std::size_t from) {
    for (std::size_t weight = std::max(a.Digits.size(), b.Digits.size()); weight-- > from;)
        if (a.At(weight) != b.At(weight)) return a.At(weight) < b.At(weight) ? -1 : 1;
    return 0;
}

// Whether b = a + 1, looking at the digits from `from` up.
bool IsNext(const Constant& a, const Constant& b, std::size_t from) {
    const std::size_t end = std::max({a.Digits.size(), b.Digits.size(), from}) + 1;
    bool carry = true;
    for (std::size_t weight = from; weight < end; ++weight) {
        const bool digit = a.At(weight) == '1';
        if ((digit != carry) != (b.At(weight) == '1')) return false;
        carry = digit && carry;
    }
    return !carry;
}

// Products of the bits, one after the other.
class Products {
  public:
    Products(Network& gates, const std::vector<NodeId>& bits) : gates_(gates), bits_(bits) {}

    // bits[0..count) equal the bound, bits[count] (if any) is as told.
    void Add(const std::string& bound, std::size_t count, int last = -1) {
        std::vector<NodeId> factors;
        for (std::size_t i = 0; i < count; ++i) factors.push_back(Bit(i, bound[i] == '1'));
        if (last >= 0) factors.push_back(Bit(count, last == 1));
        terms_.push_back(gates_.And(factors));
    }
    // The values above (or below) the bound that agree with it in the first `from` bits.
    void AddBeyond(const std::string& bound, std::size_t from, bool above) {
        for (std::size_t i = from; i < bound.size(); ++i)
            if (bound[i] == (above ? '0' : '1')) Add(bound, i, above ? 1 : 0);
    }
    // As AddBeyond, the bound itself included.
    void AddFrom(const std::string& bound, std::size_t from, bool above) {
        const char edge = above ? '0' : '1';
        std::size_t end = bound.size();
        while (end > from && bound[end - 1] == edge) --end;
        for (std::size_t i = from; i < end; ++i)
            if (bound[i] == edge) Add(bound, i, above ? 1 : 0);
        Add(bound, end);
    }
    NodeId Sum() const { return gates_.Or(terms_); }

  private:
    NodeId Bit(std::size_t i, bool one) { return one ? bits_[i] : gates_.Not(bits_[i]); }

    Network& gates_;
    const std::vector<NodeId>& bits_;
    std::vector<NodeId> terms_;
};

// A sum for low <= value <= high.
NodeId Between(Network& gates, const Bounded& value) {
    Products products(gates, value.Bits);
    std::size_t split = 0;
    while (split < value.Low.size() && value.Low[split] == value.High[split]) ++split;
    if (split == value.Low.size()) {
        products.Add(value.Low, split);
        return products.Sum();
    }
    const bool wholeLow = value.Low.find('1', split) == std::string::npos;
    const bool wholeHigh = value.High.find('0', split) == std::string::npos;
    if (wholeLow && wholeHigh) {
        products.Add(value.Low, split);
    } else {
        products.AddFrom(value.Low, split + 1, true);
        products.AddFrom(value.High, split + 1, false);
    }
    return products.Sum();
}

NodeId Outside(Network& gates, const Bounded& value) {
    Products products(gates, value.Bits);
    products.AddBeyond(value.Low, 0, false);
    products.AddBeyond(value.High, 0, true);
    return products.Sum();
}

}  // namespace

NodeId Elaborator::Equals(const Value& members, std::int32_t constant, Place at) {
    if (members.Constant >= 0) Fail(Code::ScalarConstant, at);
    const Constant& number = ConstantOf(constant);
    CheckOutside(number, members.Weights, at);
    std::vector<NodeId> factors;
    for (std::size_t i = 0; i < members.Bits.size(); ++i) {
        const char digit = number.At(static_cast<std::size_t>(members.Weights[i]));
        if (digit != 'X')
            factors.push_back(digit == '1' ? members.Bits[i] : analysis_.Gates.Not(members.Bits[i]));
    }
    return analysis_.Gates.And(factors);
}

NodeId Elaborator::InRange(const Value& members, std::int32_t low, std::int32_t high, Place at) {
    const Constant& lowest = ConstantOf(low);
    const Constant& highest = ConstantOf(high);
    if (members.Constant >= 0) Fail(Code::ScalarConstant, at);
    if (lowest.HasDontCare() || highest.HasDontCare()) Fail(Code::DontCareMisplaced, at);
    if (CompareDigits(lowest, highest, 0) > 0) Fail(Code::RangeOrder, at);
    std::vector<std::size_t> order(members.Bits.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return members.Weights[a] > members.Weights[b]; });
    Bounded value;
    for (std::size_t i : order) {
        const auto weight = static_cast<std::size_t>(members.Weights[i]);
        value.Bits.push_back(members.Bits[i]);
        value.Low += lowest.At(weight);
        value.High += highest.At(weight);
    }
    // Bits that the list lacks are ignored. Where the bounds differ in those above the list the values run
    // over its end and go on from 0.
    const auto above = static_cast<std::size_t>(members.Weights[order.front()]) + 1;
    const bool over = CompareDigits(lowest, highest, above) != 0;
    if (over && (!IsNext(lowest, highest, above) || value.Low <= value.High)) return Network::one;
    Network& gates = analysis_.Gates;
    if (value.Low <= value.High) return gates.Pair(Between(gates, value), Outside(gates, value));
    // Two ranges, from low to the end and from 0 to high: what lies between the two is their complement.
    Products inside(gates, value.Bits);
    inside.AddFrom(value.Low, 0, true);
    inside.AddFrom(value.High, 0, false);
    return inside.Sum();
}

}  // namespace front
