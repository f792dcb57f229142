#include "Designs.h"

#include <algorithm>

#include "Chip.h"

namespace test {
namespace {

using model::Input;
using model::RegisterKind;

class Generator {
  public:
    Generator(std::mt19937& random, const Shape& shape) : random_(random), shape_(shape) {}

    fit::Design Run() {
        for (std::size_t i = 0; i < shape_.Inputs; ++i)
            design_.Signals.push_back({"I" + std::to_string(i), 0, Chance(4), false, RegisterKind::None});
        for (std::size_t i = 0; i < shape_.Functions; ++i) AddSignal(i);
        for (std::size_t i = shape_.Inputs; i < design_.Signals.size(); ++i) AddFunctions(i);
        return std::move(design_);
    }

  private:
    bool Chance(unsigned of) { return random_() % of == 0; }

    void AddSignal(std::size_t i) {
        fit::Signal signal;
        signal.Name = "F" + std::to_string(i);
        signal.ActiveLow = Chance(4);
        signal.Node = !shape_.Plain && Chance(4);
        constexpr RegisterKind kinds[] = {RegisterKind::D,  RegisterKind::D,  RegisterKind::T,
                                          RegisterKind::Jk, RegisterKind::Rs, RegisterKind::Latch};
        if (Chance(2)) signal.Register = shape_.Plain ? RegisterKind::D : kinds[random_() % 6];
        design_.Signals.push_back(signal);
    }

    // What may be read without a loop: inputs, registers, and functions before this one.
    fit::Term AnyTerm(std::size_t before, std::size_t most) {
        fit::Term term;
        const auto sources = shape_.Sources == 0 ? design_.Signals.size() : shape_.Sources;
        for (std::size_t tries = 0; tries < 4 * most && term.size() < most; ++tries) {
            const auto signal = random_() % sources;
            const bool registered = design_.Signals[signal].Register != RegisterKind::None;
            if (signal >= before && !registered) continue;
            const bool known = std::any_of(term.begin(), term.end(),
                                           [&](const fit::Literal& l) { return l.Signal == signal; });
            const bool pin =
                !shape_.Plain && registered && signal < before && Chance(4) && !design_.Signals[signal].Node;
            if (!known) term.push_back({signal, Chance(2), pin});
        }
        return term;
    }
    fit::Sum AnySum(std::size_t before, std::size_t terms, std::size_t literals) {
        fit::Sum sum;
        for (; terms > 0; --terms) sum.push_back(AnyTerm(before, literals));
        return sum;
    }

    void Add(std::size_t signal, Input to, fit::Sum sum) {
        design_.Functions.push_back({signal, to, std::move(sum), {}, false});
    }
    void AddSome(std::size_t signal, Input to, unsigned of) {
        if (shape_.Plain || !Chance(of)) return;
        Add(signal, to, AnySum(shape_.Inputs, 1 + (Chance(4) ? 1 : 0), 1 + random_() % 2));
    }

    void AddFunctions(std::size_t i) {
        const auto kind = design_.Signals[i].Register;
        const auto data = [&](Input to) {
            const auto terms = shape_.Plain ? shape_.Terms
                               : Chance(5)  ? shape_.Terms * 4
                                            : 1 + random_() % shape_.Terms;
            Add(i, to,
                AnySum(kind == RegisterKind::None ? i : design_.Signals.size(), terms, shape_.Literals));
        };
        AddSome(i, Input::Oe, 3);
        switch (kind) {
            case RegisterKind::None:
                return data(Input::Out);
            case RegisterKind::D:
                data(Input::D);
                break;
            case RegisterKind::T:
                data(Input::T);
                break;
            case RegisterKind::Jk:
                data(Input::J), data(Input::K);
                break;
            case RegisterKind::Rs:
                data(Input::S), data(Input::R);
                break;
            case RegisterKind::Latch:
                data(Input::L);
                break;
        }
        const bool latch = kind == RegisterKind::Latch;
        const bool common = shape_.Plain || !Chance(4);
        Add(i, latch ? Input::Le : Input::Ck,
            common ? fit::Sum{{{0, latch, false}}} : AnySum(shape_.Inputs, 1 + random_() % 2, 2));
        if (!latch) AddSome(i, Input::Ce, 4);
        for (const auto input : {Input::Ar, Input::Ap, Input::Sr, Input::Sp}) AddSome(i, input, 5);
    }

    std::mt19937& random_;
    const Shape& shape_;
    fit::Design design_;
};

// The design itself, in asserted states.
class Model {
  public:
    Model(const fit::Design& design, std::mt19937& random) : design_(design) {
        for (std::size_t i = 0; i < design.Signals.size(); ++i) {
            Outside.push_back(random() % 2);
            States.push_back(random() % 2);
        }
        pins_ = Outside;
        for (std::size_t round = 0; round < design.Signals.size(); ++round)
            for (std::size_t i = 0; i < pins_.size(); ++i) pins_[i] = PinOf(i);
    }

    std::vector<bool> Outside, States;

    const fit::Sum* Find(std::size_t signal, Input to) const {
        for (const auto& function : design_.Functions)
            if (function.Signal == signal && function.To == to) return &*function.True;
        return nullptr;
    }
    bool Value(std::size_t signal, Input to, bool otherwise = false) const {
        const auto* sum = Find(signal, to);
        if (sum == nullptr) return otherwise;
        return std::any_of(sum->begin(), sum->end(), [&](const fit::Term& term) {
            return std::all_of(term.begin(), term.end(), [&](const fit::Literal& l) {
                const bool state = Registered(l.Signal) && !l.Pin;
                return (state ? States[l.Signal] : pins_[l.Signal]) != l.Negated;
            });
        });
    }
    bool Registered(std::size_t i) const { return design_.Signals[i].Register != RegisterKind::None; }
    bool Enabled(std::size_t i) const {
        const bool driven = Registered(i) || Find(i, Input::Out) != nullptr;
        return driven && (design_.Signals[i].Node || Value(i, Input::Oe, true));
    }
    bool Pin(std::size_t i) const { return pins_[i]; }

    // The state after the rising edge of a clock that is 1, and of what acts without it.
    bool Next(std::size_t i) const {
        if (Value(i, Input::Ar)) return false;
        if (Value(i, Input::Ap)) return true;
        const bool latch = design_.Signals[i].Register == RegisterKind::Latch;
        if (!Value(i, latch ? Input::Le : Input::Ck) || !Value(i, Input::Ce, true)) return States[i];
        if (Value(i, Input::Sp)) return true;
        return !Value(i, Input::Sr) && Data(i);
    }

  private:
    bool PinOf(std::size_t i) const {
        if (!Enabled(i)) return Outside[i];
        return Registered(i) ? States[i] : Value(i, Input::Out);
    }
    bool Data(std::size_t i) const {
        switch (design_.Signals[i].Register) {
            case RegisterKind::T:
                return States[i] != Value(i, Input::T);
            case RegisterKind::Jk:
                return States[i] ? !Value(i, Input::K) : Value(i, Input::J);
            case RegisterKind::Rs:
                return Value(i, Input::S) || (States[i] && !Value(i, Input::R));
            case RegisterKind::Latch:
                return Value(i, Input::L);
            default:
                return Value(i, Input::D);
        }
    }

    const fit::Design& design_;
    std::vector<bool> pins_;
};

// A register that has a macrocell beside that of its pin.
const cpld::Occupied* StateOf(const cpld::Fit& fit, const std::string& name) {
    const cpld::Occupied* found = nullptr;
    for (const auto& cell : fit.Cells) {
        const bool registered = fit.Result.Cells[cell.Cell].Feedback == cpld::Path::Sync;
        if (registered && (cell.Name == name || (found == nullptr && cell.Name.starts_with(name + "."))))
            found = &cell;
    }
    return found;
}

}  // namespace

fit::Design RandomDesign(std::mt19937& random, const Shape& shape) { return Generator(random, shape).Run(); }

std::string Compare(const cpld::Device& device, const fit::Design& design, const cpld::Fit& fit,
                    std::mt19937& random) {
    const auto& package = *device.FindPackage(fit.Names.Package);
    for (int sample = 0; sample < 20; ++sample) {
        const Model model(design, random);
        Chip chip(device, fit.Result);
        for (std::size_t i = 0; i < design.Signals.size(); ++i) {
            const bool low = design.Signals[i].ActiveLow && !design.Signals[i].Node;
            if (fit.Places[i].Pin != 0)
                chip.Given[static_cast<std::size_t>(package.PadAt(fit.Places[i].Pin))] =
                    model.Outside[i] != low;
            if (!model.Registered(i)) continue;
            if (const auto* state = StateOf(fit, design.Signals[i].Name))
                chip.States[state->Cell] = model.States[i] != state->Low;
        }
        if (!chip.Settle()) return "does not come to rest";
        for (std::size_t i = 0; i < design.Signals.size(); ++i) {
            const auto& signal = design.Signals[i];
            const bool low = signal.ActiveLow && !signal.Node;
            if (fit.Places[i].Pin != 0) {
                const auto pad = static_cast<std::size_t>(package.PadAt(fit.Places[i].Pin));
                if (chip.Level(pad) != (model.Pin(i) != low)) return "pin of " + signal.Name;
                if (pad < device.CellCount() && chip.Of(pad).OutputEnabled != model.Enabled(i))
                    return "enable of " + signal.Name;
            }
            const auto* state = StateOf(fit, signal.Name);
            const bool both = model.Value(i, Input::Ar) && model.Value(i, Input::Ap);
            if (!model.Registered(i) || state == nullptr || both) continue;
            if (chip.Of(state->Cell).Next != (model.Next(i) != state->Low)) return "state of " + signal.Name;
        }
    }
    return {};
}

}  // namespace test
