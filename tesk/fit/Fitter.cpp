#include "fit/Fitter.h"

#include <algorithm>
#include <memory>
#include <tuple>

#include "fit/FuseMap.h"
#include "fit/ModeFit.h"

namespace fit {
namespace {

// No limits: pins as declared, sums as written.
Fit FitVirtual(const Device& device, const Needs& needs) {
    Fit fit;
    fit.Mnemonic = device.Mnemonic;
    for (std::size_t signal = 0; signal < needs.Count(); ++signal) {
        Placement placement;
        placement.Pin = needs.At(signal).Pin;
        placement.PolarityHigh = !needs.At(signal).ActiveLow;
        if (needs.Driven(signal))
            placement.Use = needs.Registered(signal) ? UseKind::Register : UseKind::Output;
        for (const auto input :
             {Input::Out, Input::D, Input::T, Input::J, Input::K, Input::S, Input::R, Input::L}) {
            const auto* sum = needs.SumOf(signal, input, false);
            placement.Used += sum == nullptr ? 0 : sum->size();
        }
        fit.Placements.push_back(placement);
    }
    return fit;
}

bool HasRegisters(const Mode& mode) {
    return mode.AnyUse([](const CellUse& use) { return use.Kind == UseKind::Register; });
}

Placement PlacementOf(const ModeFit& modeFit, std::size_t signal) {
    Placement placement;
    placement.Pin = modeFit.Pins[signal];
    placement.PolarityHigh = !modeFit.LowAt(signal);
    const auto& choice = modeFit.Choices[signal];
    if (!choice) return placement;
    placement.Use = choice->Use->Kind;
    placement.Complemented = choice->Complemented;
    placement.PolarityHigh = choice->Low == choice->Complemented;
    placement.Used = choice->Size();
    placement.Exclusive = choice->Kind;
    placement.LeftComplemented = choice->LeftComplemented;
    placement.Available = choice->Use->Terms + choice->Use->XorTerms;
    if (choice->Use->Kind != UseKind::Register) return placement;
    const bool asserted = choice->Use->StoresSum ? choice->Complemented : !choice->Low;
    placement.PowerUp = asserted ? '1' : '0';
    return placement;
}

void AddImplied(Fit& fit, std::size_t signal, Input to, Sum sum) {
    Function function;
    function.Signal = signal;
    function.To = to;
    function.True = std::move(sum);
    fit.Implied.push_back(std::move(function));
}

void AddImpliedReset(Fit& fit, const Needs& needs, const ModeFit& modeFit, std::size_t signal,
                     const ModeFit::Shared& shared, Input positive, Input negative) {
    if (!shared.Signal || needs.Has(signal, positive) || needs.Has(signal, negative)) return;
    const bool complemented = modeFit.Choices[signal]->Complemented;
    AddImplied(fit, signal, complemented ? negative : positive,
               *needs.SumOf(*shared.Signal, shared.From, false));
}

void FillImplied(Fit& fit, const Mode& mode, const Needs& needs, const ModeFit& modeFit) {
    const auto clock = modeFit.SignalAt(mode.ClockPin);
    const auto enable = modeFit.SignalAt(mode.EnablePin);
    for (std::size_t signal = 0; signal < needs.Count(); ++signal) {
        const auto& choice = modeFit.Choices[signal];
        if (!choice) continue;
        const bool registered = choice->Use->Kind == UseKind::Register;
        if (registered && clock && !needs.Has(signal, Input::Ck))
            AddImplied(fit, signal, Input::Ck,
                       {{ModeFit::LevelLiteral(*clock, modeFit.LowAt(*clock), true)}});
        const bool byPin = (choice->Use->Enable == EnableKind::Pin || choice->Use->EnableAndPin) && enable;
        if (byPin && !needs.Has(signal, Input::Oe) && !needs.At(signal).Node)
            AddImplied(fit, signal, Input::Oe,
                       {{ModeFit::LevelLiteral(*enable, modeFit.LowAt(*enable), false)}});
        if (!registered) continue;
        AddImpliedReset(fit, needs, modeFit, signal, modeFit.Reset, Input::Ar, Input::Ap);
        AddImpliedReset(fit, needs, modeFit, signal, modeFit.Preset, Input::Sp, Input::Sr);
    }
}

Fit FitInto(const Device& device, const Mode& mode, const Needs& needs, const ModeFit& modeFit) {
    Fit fit;
    fit.Mnemonic = device.Mnemonic;
    fit.Mode = mode.Name;
    fit.Messages = modeFit.Messages;
    for (std::size_t signal = 0; signal < needs.Count(); ++signal)
        fit.Placements.push_back(PlacementOf(modeFit, signal));
    if (!fit.Ok()) return fit;
    fit.Fuses = MakeFuseMap(device, mode, needs, modeFit, fit.Messages);
    if (!fit.Ok()) fit.Fuses.clear();
    FillImplied(fit, mode, needs, modeFit);
    return fit;
}

// With both sums of each function, so that a trial need not look for them; nothing if that takes too long.
std::optional<Design> Completed(const Design& design) {
    const Needs needs(design);
    Design result = design;
    for (auto& function : result.Functions) {
        const auto* sum = needs.SumOf(function.Signal, function.To, false);
        const auto* complement = needs.SumOf(function.Signal, function.To, true);
        if (sum == nullptr || complement == nullptr) return std::nullopt;
        function.Inverted = needs.WrittenInverted(function.Signal, function.To);
        function.True = *sum;
        function.False = *complement;
    }
    return result;
}

}  // namespace

const Device* FindOther(const Library& library, const Device& instead, const Design& design,
                        const Options& options) {
    if (!design.Fuses.empty()) return nullptr;  // they are those of one device
    const auto complete = Completed(design);
    if (!complete) return nullptr;
    std::vector<const Device*> others;
    for (const auto& device : library.Devices) {
        if (!device.IsVirtual() && device.Mnemonic != instead.Mnemonic) others.push_back(&device);
    }
    const auto rank = [&](const Device* device) {
        return std::tuple(device->Mnemonic[0] != instead.Mnemonic[0], device->Pins != instead.Pins,
                          device->Fuses);
    };
    std::stable_sort(others.begin(), others.end(),
                     [&](const Device* a, const Device* b) { return rank(a) < rank(b); });
    const auto fits = [&](const Device* device) { return FitDesign(*device, *complete, options).Ok(); };
    const auto found = std::find_if(others.begin(), others.end(), fits);
    return found == others.end() ? nullptr : *found;
}

Fit FitDesign(const Device& device, const Design& design, const Options& options) {
    const Needs needs(design);
    if (device.IsVirtual()) return FitVirtual(device, needs);
    // Modes without registers are left aside for a design that has some, unless there is no other.
    const bool registers =
        needs.AnyRegister() && std::any_of(device.Modes.begin(), device.Modes.end(), HasRegisters);
    std::unique_ptr<ModeFit> best;
    const Mode* bestMode = nullptr;
    for (const auto& mode : device.Modes) {
        if (registers && !HasRegisters(mode)) continue;
        auto attempt = std::make_unique<ModeFit>(device, mode, needs, options);
        attempt->Run();
        if (best && best->Distance() <= attempt->Distance()) continue;
        best = std::move(attempt);
        bestMode = &mode;
        if (best->Distance() == 0) break;
    }
    return FitInto(device, *bestMode, needs, *best);
}

}  // namespace fit
