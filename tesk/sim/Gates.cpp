#include "sim/Gates.h"

#include <algorithm>

#include "sim/Logic3.h"

namespace sim {

namespace {

// What a literal gives, by its sense and the value that it reads.
constexpr Value readings[2][4] = {{Value::Zero, Value::One, Value::Unknown, Value::Unknown},
                                  {Value::One, Value::Zero, Value::Unknown, Value::Unknown}};

std::uint32_t CodeOf(const AbsDesign& design, const Literal& literal) {
    const Net& net = design.Nets[literal.Net];
    const bool registered = net.Register != RegisterKind::None;
    const bool isPin = net.Kind != NetKind::Node &&
                       (literal.From == Feedback::Pin || (literal.From == Feedback::Default && !registered));
    const std::size_t place = isPin ? literal.Net : design.Nets.size() + literal.Net;
    const bool complement = literal.Negated != (isPin && net.ActiveLow);
    return static_cast<std::uint32_t>(2 * place + (complement ? 1 : 0));
}

}  // namespace

char Letter(Value value) { return "01XZ"[static_cast<std::size_t>(value)]; }

Gates::Gates(const AbsDesign& design) : nets_(design.Nets.size()), of_(design.Nets.size()), terms_{0} {
    for (auto& gates : of_) gates.fill(-1);
    for (const Function& function : design.Functions) {
        of_[function.Net][static_cast<std::size_t>(function.To)] = static_cast<int>(gates_.size());
        const std::size_t begin = terms_.size() - 1;
        for (const Term& term : function.Terms) {
            for (const Literal& literal : term) literals_.push_back(CodeOf(design, literal));
            terms_.push_back(static_cast<std::uint32_t>(literals_.size()));
        }
        gates_.push_back({begin, terms_.size() - 1, function.Negative});
    }
}

std::vector<std::size_t> Gates::Support(std::size_t net, std::initializer_list<Input> inputs) const {
    std::vector<std::size_t> nets;
    for (const Input input : inputs) {
        if (!Has(net, input)) continue;
        const Gate& gate = gates_[static_cast<std::size_t>(IndexOf(net, input))];
        for (std::size_t at = terms_[gate.Begin]; at < terms_[gate.End]; ++at)
            nets.push_back(literals_[at] / 2 % nets_);
    }
    std::sort(nets.begin(), nets.end());
    nets.erase(std::unique(nets.begin(), nets.end()), nets.end());
    return nets;
}

Value Gates::Sum(const Gate& gate, const Snapshot& from) const {
    const Value* const values = from.data();
    const std::uint32_t* const literals = literals_.data();
    Value sum = Value::Zero;
    for (std::size_t term = gate.Begin; term < gate.End && sum != Value::One; ++term) {
        const std::uint32_t start = terms_[term];
        std::uint32_t at = start;
        const std::uint32_t end = terms_[term + 1];
        Value product = Value::One;
        for (; at < end && product != Value::Zero; ++at) {
            const Value value =
                readings[literals[at] & 1][static_cast<std::size_t>(values[literals[at] / 2])];
            if (value != Value::One) product = value;
        }
        work_ += 1 + at - start;
        if (product != Value::Zero) sum = product;
    }
    return gate.Negative ? Not(sum) : sum;
}

}  // namespace sim
