#include <algorithm>
#include <set>

#include "fit/Needs.h"
#include "zrx/Document.h"

// What makes a design of a .DOC whole before it is partitioned.
namespace zrx {

namespace {

constexpr std::size_t moreThanAny = 1000;  // product terms; no macrocell has as many
constexpr std::size_t longestName = 31;

bool IsData(const fit::Function& function) {
    return function.To == model::Input::Out || function.To == model::Input::D;
}

// The undriven signal at a pin; none: the number of signals.
std::size_t InputAt(const fit::Design& design, const fit::Needs& needs, int pin) {
    std::size_t signal = 0;
    while (signal < design.Signals.size() &&
           (pin == 0 || design.Signals[signal].Pin != pin || needs.Driven(signal)))
        ++signal;
    return signal;
}

fit::Sum Unusable(const fit::Sum& other) {
    fit::Term term;
    if (!other.empty() && !other.front().empty()) term.push_back(other.front().front());
    return fit::Sum(moreThanAny, term);
}

std::string FreeName(const std::set<std::string>& taken, const std::string& name, std::size_t part) {
    for (;; ++part) {
        const std::string tail = "_X" + std::to_string(part);
        const std::string candidate = name.substr(0, longestName - tail.size()) + tail;
        if (!taken.contains(candidate)) return candidate;
    }
}

}  // namespace

std::string AddImplied(fit::Design& design, const fit::Device* device) {
    const fit::Needs needs(design);
    const fit::Mode* mode = nullptr;
    if (device != nullptr)
        for (const fit::Mode& one : device->Modes)
            if (one.ClockPin != 0 || one.EnablePin != 0) mode = &one;
    const std::size_t none = design.Signals.size();
    const std::size_t clock = mode == nullptr ? none : InputAt(design, needs, mode->ClockPin);
    const std::size_t enable = mode == nullptr ? none : InputAt(design, needs, mode->EnablePin);
    std::vector<fit::Function> added;
    const auto add = [&](std::size_t signal, model::Input to, std::size_t from, bool level) {
        const fit::Literal literal{from, design.Signals[from].ActiveLow == level, false};
        added.push_back({signal, to, fit::Sum{{literal}}, {}, false});
    };
    std::string missing;
    for (std::size_t signal = 0; signal < none; ++signal) {
        if (!needs.Driven(signal)) continue;
        const bool registered = needs.Registered(signal);
        const auto kind = registered ? fit::UseKind::Register : fit::UseKind::Output;
        const bool enabled = needs.Has(signal, model::Input::Oe) || design.Signals[signal].Node;
        const bool byPin = enable != none && !enabled && mode->PinEnables(kind);
        const bool clocked = !registered || needs.Has(signal, model::Input::Ck) ||
                             design.Signals[signal].Register == model::RegisterKind::Latch;
        if (!clocked && clock != none) add(signal, model::Input::Ck, clock, true);
        if (!clocked && clock == none) missing = design.Signals[signal].Name;
        if (byPin) add(signal, model::Input::Oe, enable, false);
    }
    design.Functions.insert(design.Functions.end(), added.begin(), added.end());
    return missing;
}

void CompleteSums(fit::Design& design) {
    const fit::Needs needs(design);
    std::vector<fit::Function> whole = design.Functions;
    for (fit::Function& function : whole) {
        for (const bool complement : {false, true}) {
            auto& sum = complement ? function.False : function.True;
            if (sum || (complement && !IsData(function))) continue;
            const fit::Sum* made = needs.SumOf(function.Signal, function.To, complement);
            sum = made != nullptr ? *made : Unusable(complement ? *function.True : *function.False);
        }
        if (!IsData(function)) function.False.reset();
    }
    design.Functions = std::move(whole);
}

std::size_t Split(fit::Design& design, std::size_t most) {
    if (most < 2) return 0;
    std::set<std::string> taken;
    for (const fit::Signal& signal : design.Signals) taken.insert(signal.Name);
    const std::size_t before = design.Signals.size();
    for (std::size_t i = 0; i < design.Functions.size(); ++i) {
        if (!IsData(design.Functions[i]) || !design.Functions[i].True) continue;
        // A part that is still too long is parted again when its turn comes.
        while (design.Functions[i].True->size() > most && design.Signals.size() < DocumentLimits::Signals) {
            fit::Sum& sum = *design.Functions[i].True;
            design.Functions[i].False.reset();
            const auto cut = sum.end() - static_cast<std::ptrdiff_t>(std::min(most, sum.size() - most + 1));
            fit::Function part{design.Signals.size(), model::Input::Out, fit::Sum(cut, sum.end()), {}, false};
            sum.erase(cut, sum.end());
            sum.insert(sum.begin(), fit::Term{{part.Signal, false, false}});
            const std::string name =
                FreeName(taken, design.Signals[design.Functions[i].Signal].Name, design.Signals.size());
            taken.insert(name);
            design.Signals.push_back({name, 0, false, true, model::RegisterKind::None});
            design.Functions.push_back(std::move(part));
        }
    }
    return design.Signals.size() - before;
}

}  // namespace zrx
