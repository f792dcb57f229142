#include "fit/ModeFit.h"

#include <algorithm>
#include <tuple>

#include "fit/Sums.h"

namespace fit {
namespace {

constexpr std::string_view sharedSum = MessageCode("7216tc").Entry().Number;

}  // namespace

ModeFit::ModeFit(const Device& device, const Mode& mode, const Needs& needs, const Options& options)
    : Pins(needs.Count(), 0),
      Choices(needs.Count()),
      device_(device),
      mode_(mode),
      needs_(needs),
      options_(options),
      places_(device.Pins) {
    for (const auto& cell : mode.Cells) places_ = std::max(places_, cell.Pin);
    owners_.assign(static_cast<std::size_t>(places_) + 1, 0);
    const auto enabledByPin = [&](UseKind kind) {
        return mode.AnyUse([&](const CellUse& u) { return u.Kind == kind && u.Enable == EnableKind::Pin; });
    };
    common_ = {mode.ClockPin != 0, enabledByPin(UseKind::Register), enabledByPin(UseKind::Output)};
}

void ModeFit::Run() {
    for (std::size_t signal = 0; signal < needs_.Count(); ++signal) CheckFeatures(signal);
    FindClock();
    FindEnable();
    FindShared(Reset, Input::Ar, Input::Ap, mode_.ResetRow);
    FindShared(Preset, Input::Sp, Input::Sr, mode_.PresetRow);
    if (model::HasErrors(Messages)) return;
    PlaceNumbered();
    if (!model::HasErrors(Messages)) PlaceOthers();
    for (std::size_t signal = 0; signal < needs_.Count(); ++signal) CheckOwnRows(signal);
    if (!model::HasErrors(Messages)) ShareTerms();
}

// A missing feature weighs more than a lack of room, so that the mode that comes nearest is the one reported.
int ModeFit::Distance() const {
    int distance = 0;
    for (const auto& message : Messages) {
        const bool room =
            message.Number == "7201tc" || message.Number == "7205tc" || message.Number == "7215tc";
        if (message.Level == Severity::Error) distance += room ? 1 : 2;
    }
    return distance;
}

std::optional<std::size_t> ModeFit::SignalAt(int pin) const {
    const auto owner = pin <= 0 ? 0 : owners_[static_cast<std::size_t>(pin)];
    return owner == 0 ? std::nullopt : std::optional(owner - 1);
}

bool ModeFit::LowAt(std::size_t signal) const {
    if (Choices[signal]) return Choices[signal]->Low;
    return needs_.At(signal).ActiveLow && !needs_.At(signal).Node;
}

void ModeFit::Add(std::size_t signal, const Refusal& refusal) {
    Messages.push_back(model::MakeMessage(refusal.Code.Entry(), {}, refusal.Detail, needs_.At(signal).Name));
}

std::string ModeFit::Place(int pin) const {
    return (pin > device_.Pins ? "node " : "pin ") + std::to_string(pin) + " of " + device_.Mnemonic + " (" +
           mode_.Name + ")";
}

// What no macrocell of the mode can do.
void ModeFit::CheckFeatures(std::size_t signal) {
    const auto lacks = [&](Input input) {
        Add(signal, {"7203tc", needs_.Name(signal, input) + ", " + device_.Mnemonic});
    };
    bool complete = true;
    for (const auto input :
         {Input::T, Input::J, Input::K, Input::S, Input::R, Input::L, Input::Ce, Input::Le}) {
        if (needs_.Has(signal, input)) lacks(input), complete = false;
    }
    const bool ownRows = mode_.AnyUse([](const CellUse& use) { return use.HasOwnRows(); });
    for (const auto input : {Input::Ar, Input::Ap}) {
        if (needs_.Has(signal, input) && mode_.ResetRow < 0 && !ownRows) lacks(input);
    }
    for (const auto input : {Input::Sr, Input::Sp}) {
        if (needs_.Has(signal, input) && mode_.PresetRow < 0) lacks(input);
    }
    const bool anyRegister = mode_.AnyUse([](const CellUse& use) { return use.Kind == UseKind::Register; });
    if (needs_.Registered(signal) && !anyRegister && complete) return lacks(needs_.DataInput(signal));
    const bool neverSet = needs_.Driven(signal) && !needs_.Has(signal, needs_.DataInput(signal));
    const bool emptyNode = needs_.At(signal).Node && !needs_.Driven(signal) && needs_.ReadAtAll(signal);
    if (complete && (neverSet || emptyNode)) Add(signal, {"7213tc", needs_.At(signal).Name});
}

void ModeFit::FindClock() {
    if (mode_.ClockPin == 0) return;
    for (std::size_t signal = 0; signal < needs_.Count(); ++signal) {
        if (!needs_.Has(signal, Input::Ck)) continue;
        const auto literal = needs_.SingleLiteral(signal, Input::Ck);
        const auto name = needs_.Name(signal, Input::Ck);
        const bool rising = literal && literal->Negated == LowAt(literal->Signal);
        if (rising && clock_ && *clock_ != literal->Signal) {
            Add(signal, {"7207tc", name + " is " + needs_.At(literal->Signal).Name + ", " + device_.Mnemonic +
                                       " has one clock, " + needs_.At(*clock_).Name + " at pin " +
                                       std::to_string(mode_.ClockPin)});
            continue;
        }
        if (!rising) {
            Add(signal, {"7207tc", name + ", " + device_.Mnemonic + " takes the rising edge of pin " +
                                       std::to_string(mode_.ClockPin)});
            continue;
        }
        clock_ = literal->Signal;
        const int pin = needs_.At(*clock_).Pin;
        if (needs_.Driven(*clock_) || (pin != 0 && pin != mode_.ClockPin)) {
            Add(signal, {"7207tc", name + " is " + needs_.At(*clock_).Name + ", not pin " +
                                       std::to_string(mode_.ClockPin) + " of " + device_.Mnemonic});
        }
    }
}

// A pin that goes with the rows of the enables is that of the signal declared there.
void ModeFit::FindEnable() {
    if (mode_.EnablePin == 0) return;
    const bool withRows = mode_.AnyUse([](const CellUse& use) { return use.EnableAndPin; });
    for (std::size_t signal = 0; signal < needs_.Count() && !enable_; ++signal) {
        if (withRows && needs_.At(signal).Pin == mode_.EnablePin && !needs_.Driven(signal)) enable_ = signal;
        if (!(needs_.Registered(signal) ? common_.RegisterEnable : common_.OutputEnable)) continue;
        const auto literal = needs_.SingleLiteral(signal, Input::Oe);
        if (literal && !needs_.Driven(literal->Signal)) enable_ = literal->Signal;
    }
}

// With both a register of rows of its own shows its D input.
void ModeFit::CheckOwnRows(std::size_t signal) {
    const auto& choice = Choices[signal];
    const bool both =
        choice && choice->Use->HasOwnRows() && needs_.Has(signal, Input::Ar) && needs_.Has(signal, Input::Ap);
    if (!both) return;
    const auto* reset = needs_.SumOf(signal, Input::Ar, false);
    const auto* preset = needs_.SumOf(signal, Input::Ap, false);
    if (reset->empty() || preset->empty()) return;
    const auto excludes = [&](Literal literal) {
        literal.Negated = !literal.Negated;
        const auto& term = preset->front();
        return std::find(term.begin(), term.end(), literal) != term.end();
    };
    if (std::none_of(reset->front().begin(), reset->front().end(), excludes))
        Add(signal, {"7214tc", needs_.At(signal).Name + ", " + Place(Pins[signal])});
}

// `positive` makes a register 1 or 0 as its row does if the rows hold the function, `negative` if they hold
// the complement.
void ModeFit::FindShared(Shared& shared, Input positive, Input negative, int row) {
    if (row < 0) return;
    const Sum* first = nullptr;
    for (std::size_t signal = 0; signal < needs_.Count(); ++signal) {
        for (const auto input : {positive, negative}) {
            if (!needs_.Has(signal, input)) continue;
            const auto* sum = needs_.SumOf(signal, input, false);
            const auto name = needs_.Name(signal, input);
            if (sum == nullptr || sum->size() > 1) {
                Add(signal, {"7209tc", name + " needs " + (sum ? std::to_string(sum->size()) : "too many") +
                                           " terms, the limit of " + device_.Mnemonic + " is 1"});
            } else if (first != nullptr && !IsSame(*first, *sum)) {
                Add(signal, {"7209tc", name + " differs from " + needs_.Name(*shared.Signal, shared.From) +
                                           ", " + device_.Mnemonic + " has one for all registers"});
            } else if (first == nullptr) {
                first = sum;
                shared.Signal = signal;
                shared.From = input;
            }
        }
    }
    for (std::size_t signal = 0; first != nullptr && signal < needs_.Count(); ++signal) {
        const bool own = needs_.Has(signal, positive) || needs_.Has(signal, negative);
        if (needs_.Registered(signal) && !own && !first->empty())
            Add(signal, {"7211tc", needs_.At(signal).Name + ", " + needs_.Name(*shared.Signal, shared.From)});
    }
}

void ModeFit::PlaceOne(std::size_t signal, int pin) {
    Pins[signal] = pin;
    owners_[static_cast<std::size_t>(pin)] = signal + 1;
    Refusal ignored;
    if (needs_.Driven(signal)) Choices[signal] = Choose(signal, pin, ignored);
}

void ModeFit::PlaceNumbered() {
    const auto place = [&](std::size_t signal, int pin) {
        const auto refusal = Refuse(signal, pin);
        if (refusal) return Add(signal, *refusal);
        const auto owner = SignalAt(pin);
        if (owner) {
            return Add(signal, {"7204tc", needs_.At(*owner).Name + " and " + needs_.At(signal).Name +
                                              " at pin " + std::to_string(pin)});
        }
        PlaceOne(signal, pin);
    };
    for (std::size_t signal = 0; signal < needs_.Count(); ++signal) {
        if (needs_.At(signal).Pin != 0) place(signal, needs_.At(signal).Pin);
    }
    if (clock_ && Pins[*clock_] == 0 && needs_.At(*clock_).Pin == 0) place(*clock_, mode_.ClockPin);
    if (enable_ && Pins[*enable_] == 0 && needs_.At(*enable_).Pin == 0) place(*enable_, mode_.EnablePin);
}

// The outputs with the most terms choose first; a later one may move an earlier one to another pin.
void ModeFit::PlaceOthers() {
    std::vector<std::size_t> open;
    for (std::size_t signal = 0; signal < needs_.Count(); ++signal) {
        const bool idle = needs_.At(signal).Node && !needs_.Driven(signal) && !needs_.ReadAtAll(signal);
        if (Pins[signal] == 0 && !idle) open.push_back(signal);
    }
    const auto size = [&](std::size_t signal) {
        const auto* sum =
            needs_.Driven(signal) ? needs_.SumOf(signal, needs_.DataInput(signal), false) : nullptr;
        return needs_.Driven(signal) ? 1 + (sum ? sum->size() : 0) : 0;
    };
    std::stable_sort(open.begin(), open.end(),
                     [&](std::size_t a, std::size_t b) { return size(a) > size(b); });
    for (const auto signal : open) {
        std::vector<bool> seen(owners_.size(), false);
        if (!Augment(signal, seen)) ExplainNoPin(signal);
    }
}

bool ModeFit::Augment(std::size_t signal, std::vector<bool>& seen) {
    for (const int pin : Candidates(signal)) {
        const auto at = static_cast<std::size_t>(pin);
        if (seen[at]) continue;
        seen[at] = true;
        const auto owner = SignalAt(pin);
        const bool fixed = owner && (needs_.At(*owner).Pin != 0 || owner == clock_ || owner == enable_);
        if (fixed || (owner && !Augment(*owner, seen))) continue;
        // The one that went away may have gone to the other pin of the same sum.
        if (owner && Refuse(signal, pin)) {
            owners_[at] = 0;
            continue;
        }
        PlaceOne(signal, pin);
        return true;
    }
    return false;
}

// The pins that could take the signal: macrocells with just enough terms before larger ones, for nodes buried
// ones before those with a pin; for inputs plain inputs before pins with a purpose of their own.
std::vector<int> ModeFit::Candidates(std::size_t signal) const {
    std::vector<std::tuple<bool, std::size_t, int>> ranked;
    for (int pin = 1; pin <= places_; ++pin) {
        if (Refuse(signal, pin)) continue;
        std::size_t rank = mode_.InputColumn(pin) >= 0 ? 0 : 2;
        if (pin == mode_.ClockPin || pin == mode_.EnablePin) rank = 1;
        Refusal ignored;
        if (needs_.Driven(signal)) rank = Choose(signal, pin, ignored)->Use->Terms;
        ranked.emplace_back(needs_.At(signal).Node && pin <= device_.Pins, rank, pin);
    }
    std::sort(ranked.begin(), ranked.end());
    std::vector<int> pins;
    for (const auto& candidate : ranked) pins.push_back(std::get<int>(candidate));
    return pins;
}

// Without any pin that would do, the reason is that of the macrocell with the most terms.
void ModeFit::ExplainNoPin(std::size_t signal) {
    std::optional<Refusal> reason;
    std::size_t most = 0;
    for (int pin = 1; pin <= places_; ++pin) {
        const auto refusal = Refuse(signal, pin);
        if (refusal && refusal->Code.Entry().Number == sharedSum) return Add(signal, *refusal);
    }
    for (int pin = 1; pin <= places_; ++pin) {
        const auto refusal = Refuse(signal, pin);
        if (!refusal) {
            const auto limit = std::to_string(Candidates(signal).size());
            return Add(signal, {"7205tc", needs_.At(signal).Name + ", " + device_.Mnemonic + " has " + limit +
                                              " that could take it"});
        }
        const auto* cell = mode_.CellAt(pin);
        for (const auto& use : cell == nullptr ? std::vector<CellUse>() : cell->Uses) {
            if (use.Terms <= most) continue;
            most = use.Terms;
            reason = refusal;
        }
    }
    Add(signal, reason ? *reason : Refusal{"7205tc", needs_.At(signal).Name + ", " + device_.Mnemonic});
}

}  // namespace fit
