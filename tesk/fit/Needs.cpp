#include "fit/Needs.h"

#include <algorithm>

namespace fit {

Needs::Needs(const Design& design)
    : design_(design),
      functions_(design.Signals.size()),
      made_(design.Signals.size()),
      readers_(design.Signals.size()) {
    for (const auto& function : design.Functions) {
        functions_[function.Signal][Index(function.To)] = &function;
        if (function.True) AddReaders(function, *function.True);
        if (function.False) AddReaders(function, *function.False);
        if (!function.Xor) continue;
        AddReaders(function, function.Xor->Left);
        AddReaders(function, function.Xor->Right);
    }
}

void Needs::AddReaders(const Function& function, const Sum& sum) {
    const bool registered = Registered(function.Signal);
    for (const auto& term : sum) {
        for (const auto& literal : term) {
            auto& readers = readers_[literal.Signal][literal.Pin ? 1 : 0];
            auto& enable = registered ? readers.RegisterEnable : readers.OutputEnable;
            (function.To == Input::Ck   ? readers.Clock
             : function.To == Input::Oe ? enable
                                        : readers.Array) = true;
        }
    }
}

const Sides* Needs::SidesOf(std::size_t signal, Input input) const {
    const auto* function = functions_[signal][Index(input)];
    return function == nullptr || !function->Xor ? nullptr : &*function->Xor;
}

const Sum* Needs::SumOf(std::size_t signal, Input input, bool complement) const {
    const auto* function = functions_[signal][Index(input)];
    if (function == nullptr) return nullptr;
    const auto& own = complement ? function->False : function->True;
    if (own) return &*own;
    const auto& other = complement ? function->True : function->False;
    auto& sums = made_[signal][Index(input)];
    auto& made = sums.Made[complement ? 1 : 0];
    if (!sums.Tried && other) made = ComplementOf(*other, budget_);
    sums.Tried = true;
    return made ? &*made : nullptr;
}

bool Needs::Driven(std::size_t signal) const {
    return Registered(signal) || Has(signal, Input::Out) || Has(signal, Input::Oe);
}

bool Needs::WrittenInverted(std::size_t signal, Input input) const {
    const auto* function = functions_[signal][Index(input)];
    return function != nullptr && (function->Inverted || !function->True);
}

bool Needs::AnyRegister() const {
    return std::any_of(design_.Signals.begin(), design_.Signals.end(),
                       [](const Signal& s) { return s.Register != RegisterKind::None; });
}

std::string Needs::Name(std::size_t signal, Input input) const {
    return input == Input::Out ? At(signal).Name
                               : At(signal).Name + "." + std::string(model::InputWords.Of(input));
}

std::optional<Literal> Needs::SingleLiteral(std::size_t signal, Input input) const {
    const auto* function = functions_[signal][Index(input)];
    if (function == nullptr) return std::nullopt;
    const auto isLiteral = [](const std::optional<Sum>& sum) {
        return sum && sum->size() == 1 && sum->front().size() == 1;
    };
    if (isLiteral(function->True)) return function->True->front().front();
    if (!isLiteral(function->False)) return std::nullopt;
    auto literal = function->False->front().front();
    literal.Negated = !literal.Negated;
    return literal;
}

bool Needs::Read(std::size_t signal, bool pin, const Common& common) const {
    const auto& readers = readers_[signal][pin ? 1 : 0];
    return readers.Array || (readers.Clock && !common.Clock) ||
           (readers.RegisterEnable && !common.RegisterEnable) ||
           (readers.OutputEnable && !common.OutputEnable);
}

bool Needs::ReadAtAll(std::size_t signal) const { return Read(signal, false, {}) || Read(signal, true, {}); }

}  // namespace fit
