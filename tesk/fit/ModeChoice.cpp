#include <algorithm>

#include "fit/ModeFit.h"
#include "fit/Sums.h"

// Whether a pin can take a signal, and how.
namespace fit {

bool ModeFit::ReadsArray(std::size_t signal, bool pin) const { return needs_.Read(signal, pin, common_); }

// Nothing but output enables read it, which the enable pin does without the array.
bool ModeFit::IsEnableOnly(std::size_t signal) const {
    const Needs::Common enables{common_.Clock, true, true};
    return enable_ == signal && !needs_.Read(signal, false, enables) && !needs_.Read(signal, true, enables);
}

std::optional<ModeFit::Refusal> ModeFit::Refuse(std::size_t signal, int pin) const {
    const auto& name = needs_.At(signal).Name;
    if (pin > places_)
        return Refusal{"7202tc",
                       name + ", " + device_.Mnemonic + " has " + std::to_string(device_.Pins) + " pins"};
    if (pin > device_.Pins && !needs_.At(signal).Node)
        return Refusal{"7202tc", name + ", " + Place(pin) + " has no pin"};
    if (pin == device_.GroundPin || pin == device_.SupplyPin)
        return Refusal{"7202tc", name + ", " + Place(pin) + " is power"};
    const auto isClock = clock_ == signal && pin != mode_.ClockPin;
    const auto isEnable = enable_ == signal && pin != mode_.EnablePin;
    if (isClock || isEnable) {
        const int right = isClock ? mode_.ClockPin : mode_.EnablePin;
        return Refusal{isClock ? MessageCode("7207tc") : MessageCode("7208tc"),
                       name + " is at pin " + std::to_string(pin) + ", needs pin " + std::to_string(right) +
                           " of " + device_.Mnemonic};
    }
    if (!needs_.Driven(signal)) return RefuseInput(signal, pin);
    Refusal why;
    return Choose(signal, pin, why) ? std::nullopt : std::optional(why);
}

std::optional<ModeFit::Refusal> ModeFit::RefuseInput(std::size_t signal, int pin) const {
    const bool read = ReadsArray(signal, false) || ReadsArray(signal, true);
    if (needs_.At(signal).Node) return Refusal{"7213tc", needs_.At(signal).Name};
    if (mode_.InputColumn(pin) >= 0) return std::nullopt;
    const bool special = pin == mode_.ClockPin || pin == mode_.EnablePin || pin == mode_.PreloadPin;
    if (special && (!read || (pin == mode_.EnablePin && IsEnableOnly(signal)))) return std::nullopt;
    const auto* cell = mode_.CellAt(pin);
    const bool canRead =
        cell != nullptr && std::any_of(cell->Uses.begin(), cell->Uses.end(), [&](const CellUse& use) {
            return use.Kind == UseKind::Input && (cell->Column >= 0 || !read);
        });
    if (canRead) return std::nullopt;
    return Refusal{"7202tc", needs_.At(signal).Name + ", " + Place(pin) + " is no input of the array"};
}

std::optional<Choice> ModeFit::Choose(std::size_t signal, int pin, Refusal& why) const {
    const auto& name = needs_.At(signal).Name;
    const auto* cell = mode_.CellAt(pin);
    if (cell == nullptr) {
        why = {"7202tc", name + ", " + Place(pin) + " is no output"};
        return std::nullopt;
    }
    const auto kind = needs_.Registered(signal) ? UseKind::Register : UseKind::Output;
    std::optional<Choice> choice;
    bool any = false;
    for (const auto& use : cell->Uses) {
        if (use.Kind != kind) continue;
        Refusal ownWhy;
        if ((choice = ChooseUse(signal, *cell, use, ownWhy))) return choice;
        if (!any) why = ownWhy;
        any = true;
    }
    const bool wantsRegister = kind == UseKind::Register;
    if (!any)
        why = {"7202tc",
               name + ", " + Place(pin) + (wantsRegister ? " has no register" : " is always a register")};
    return std::nullopt;
}

std::optional<Choice> ModeFit::ChooseUse(std::size_t signal, const Cell& cell, const CellUse& use,
                                         Refusal& why) const {
    Choice choice;
    choice.Use = &use;
    auto refusal = CheckEnable(signal, use);
    if (!refusal) refusal = CheckRows(signal, cell, use);
    if (!refusal) refusal = CheckFeedback(signal, cell, use);
    if (refusal) {
        why = *refusal;
        return std::nullopt;
    }
    return ChooseSum(signal, cell, choice, why) ? std::optional(choice) : std::nullopt;
}

std::optional<ModeFit::Refusal> ModeFit::CheckEnable(std::size_t signal, const CellUse& use) const {
    if (!needs_.Has(signal, Input::Oe)) return std::nullopt;
    if (use.Enable == EnableKind::Row) return CheckEnableRow(signal, use);
    const auto name = needs_.Name(signal, Input::Oe);
    const auto* sum = needs_.SumOf(signal, Input::Oe, false);
    if (sum != nullptr && IsTrue(*sum)) return std::nullopt;
    if (use.Enable == EnableKind::Pin) {
        const auto literal = needs_.SingleLiteral(signal, Input::Oe);
        const bool low = literal && enable_ == literal->Signal && literal->Negated != LowAt(literal->Signal);
        if (low) return std::nullopt;
        const std::string what = use.Kind == UseKind::Register ? "registers" : "outputs";
        return Refusal{"7208tc", name + ", " + device_.Mnemonic + " enables its " + what + " with pin " +
                                     std::to_string(mode_.EnablePin) + " low"};
    }
    return Refusal{"7208tc",
                   name + ", outputs of " + device_.Mnemonic + " (" + mode_.Name + ") are always enabled"};
}

std::optional<ModeFit::Refusal> ModeFit::CheckEnableRow(std::size_t signal, const CellUse& use) const {
    const auto name = needs_.Name(signal, Input::Oe);
    const auto* sum = needs_.SumOf(signal, Input::Oe, false);
    if (sum == nullptr || sum->size() > 1)
        return Refusal{"7208tc", name + " needs " + (sum ? std::to_string(sum->size()) : "too many") +
                                     " terms, the limit is 1"};
    if (!use.EnableAndPin || !enable_ || sum->empty()) return std::nullopt;
    const auto& term = sum->front();
    const auto low = LevelLiteral(*enable_, LowAt(*enable_), false);
    if (std::find(term.begin(), term.end(), low) != term.end()) return std::nullopt;
    return Refusal{"7208tc", name + ", " + device_.Mnemonic + " enables it only with pin " +
                                 std::to_string(mode_.EnablePin) + " low, " + needs_.At(*enable_).Name};
}

std::optional<ModeFit::Refusal> ModeFit::CheckRows(std::size_t signal, const Cell& cell,
                                                   const CellUse& use) const {
    if (!use.HasOwnRows()) return std::nullopt;
    if (!needs_.Has(signal, Input::Ck))
        return Refusal{"7207tc", needs_.At(signal).Name + " needs a .CK, " + Place(cell.Pin) +
                                     " clocks its register by a term of its own"};
    for (const auto input : {Input::Ck, Input::Ar, Input::Ap}) {
        if (!needs_.Has(signal, input)) continue;
        const auto* sum = needs_.SumOf(signal, input, false);
        if (sum != nullptr && sum->size() <= 1) continue;
        return Refusal{input == Input::Ck ? MessageCode("7207tc") : MessageCode("7209tc"),
                       needs_.Name(signal, input) + " needs " +
                           (sum ? std::to_string(sum->size()) : "too many") + " terms, the limit of " +
                           Place(cell.Pin) + " is 1"};
    }
    return std::nullopt;
}

std::optional<ModeFit::Refusal> ModeFit::CheckFeedback(std::size_t signal, const Cell& cell,
                                                       const CellUse& use) const {
    const bool pin = ReadsArray(signal, true);
    if (!pin && !ReadsArray(signal, false)) return std::nullopt;
    const auto& name = needs_.At(signal).Name;
    if (use.Feedback == FeedbackKind::None) return Refusal{"7206tc", name + ", " + Place(cell.Pin)};
    // A register's pin shows the register as long as it is enabled.
    const bool switched = needs_.Has(signal, Input::Oe) || (use.EnableAndPin && enable_);
    const bool node = needs_.At(signal).Node;
    if (!switched || (!needs_.Registered(signal) && !node)) return std::nullopt;
    if (use.Feedback != FeedbackKind::Pin && pin)
        return Refusal{"7206tc", name + ".IO, " + Place(cell.Pin) + " leads back its register"};
    if (use.Feedback == FeedbackKind::Pin && ReadsArray(signal, false))
        return Refusal{"7206tc", name + ", " + Place(cell.Pin) +
                                     " leads back its pin, which is not always on" +
                                     (node ? "" : "; read " + name + ".IO")};
    return std::nullopt;
}

// Whether the rows must hold the complement: reset and preset of the device act on the register, those of the
// design on the name.
std::optional<bool> ModeFit::RequiredSense(std::size_t signal) const {
    if (needs_.Has(signal, Input::Ar) || needs_.Has(signal, Input::Sp)) return false;
    if (needs_.Has(signal, Input::Ap) || needs_.Has(signal, Input::Sr)) return true;
    return std::nullopt;
}

// The levels and polarities that a signal may have in a macrocell, the preferred one first.
std::vector<Choice> ModeFit::Senses(std::size_t signal, const Cell& cell, const Choice& base) const {
    const auto& record = needs_.At(signal);
    std::vector<Choice> senses;
    const bool inverted = needs_.WrittenInverted(signal, needs_.DataInput(signal));
    for (const bool complemented : {inverted, !inverted}) {
        for (const bool low : {false, true}) {
            // A node has no level of its own: its macrocell may carry either, as its polarity asks for.
            const bool freeLevel = record.Node && cell.Polarity != PolarityKind::Fuse;
            if (!freeLevel && low != (record.ActiveLow && !record.Node)) continue;
            if (cell.Polarity == PolarityKind::Low && complemented == low) continue;
            if (cell.Polarity == PolarityKind::High && complemented != low) continue;
            const auto required = base.Use->HasOwnRows() ? std::nullopt : RequiredSense(signal);
            if (required && *required != complemented) continue;
            senses.push_back(base);
            senses.back().Low = low;
            senses.back().Complemented = complemented;
        }
    }
    if (options_.Choose == Polarity::Complement) std::reverse(senses.begin(), senses.end());
    return senses;
}

// An exclusive or is complemented by complementing one of its sides. A single sum is one with a constant:
// with true it is there that a macrocell of one polarity takes either.
void ModeFit::AddXorChoices(std::size_t signal, const Choice& sense, std::vector<Choice>& choices) const {
    static const Sum never;
    static const Sum always{Term{}};
    const auto add = [&](Exclusive kind, bool leftComplemented, const Sum* first, const Sum* second) {
        if (first == nullptr) return;
        auto choice = sense;
        choice.Kind = kind;
        choice.LeftComplemented = leftComplemented;
        choice.Rows = first;
        choice.XorRows = second;
        auto swapped = choice;
        std::swap(swapped.Rows, swapped.XorRows);
        choices.push_back(swapped.Fits() && !choice.Fits() ? swapped : choice);
    };
    const auto* sides = needs_.SidesOf(signal, needs_.DataInput(signal));
    for (const bool left : {sense.Complemented, !sense.Complemented}) {
        if (sides == nullptr) break;
        add(Exclusive::Sides, left, left ? &sides->NotLeft : &sides->Left,
            left != sense.Complemented ? &sides->NotRight : &sides->Right);
    }
    const auto data = needs_.DataInput(signal);
    add(Exclusive::None, false, needs_.SumOf(signal, data, sense.Complemented), &never);
    add(Exclusive::Constant, false, needs_.SumOf(signal, data, !sense.Complemented), &always);
}

// The ways to put a signal into a macrocell, the preferred one first.
std::vector<Choice> ModeFit::SumChoices(std::size_t signal, const Cell& cell, const Choice& base) const {
    std::vector<Choice> choices;
    for (auto sense : Senses(signal, cell, base)) {
        if (base.Use->XorTerms > 0) {
            AddXorChoices(signal, sense, choices);
            continue;
        }
        sense.Rows = needs_.SumOf(signal, needs_.DataInput(signal), sense.Complemented);
        if (sense.Rows != nullptr) choices.push_back(sense);
    }
    if (options_.Choose == Polarity::Best) {
        std::stable_sort(choices.begin(), choices.end(),
                         [](const Choice& a, const Choice& b) { return a.Size() < b.Size(); });
    }
    return choices;
}

// The signal of a macrocell with the same rows, if it has one.
std::optional<std::size_t> ModeFit::SharedWith(std::size_t signal, const Cell& cell,
                                               const CellUse& use) const {
    for (const auto& other : mode_.Cells) {
        const auto owner = &other == &cell ? std::nullopt : SignalAt(other.Pin);
        if (owner && owner != signal && Choices[*owner] && Choices[*owner]->Use->SharesSum(use)) return owner;
    }
    return std::nullopt;
}

// The rows are those that are there, if they are the same function.
bool ModeFit::TakeShared(const Choice& shared, Choice& choice) const {
    const bool same = (shared.XorRows == nullptr) == (choice.XorRows == nullptr) &&
                      needs_.AreEqual(*shared.Rows, *choice.Rows) &&
                      (shared.XorRows == nullptr || needs_.AreEqual(*shared.XorRows, *choice.XorRows));
    choice.Rows = shared.Rows;
    choice.XorRows = shared.XorRows;
    return same;
}

// By what is kept as an exclusive or, else by the shorter one of the sums that would do.
ModeFit::Refusal ModeFit::TooManyTerms(std::size_t signal, int pin,
                                       const std::vector<Choice>& choices) const {
    const auto& first = choices.front();
    const auto less = [&](const Choice& a, const Choice& b) {
        return std::pair(a.Complemented != first.Complemented, a.Size()) <
               std::pair(b.Complemented != first.Complemented, b.Size());
    };
    const bool kept = first.Kind == Exclusive::Sides;
    const auto& choice = kept ? first : *std::min_element(choices.begin(), choices.end(), less);
    const auto text = [](std::size_t sum, bool two, std::size_t second) {
        return std::to_string(sum) + (two ? " $ " + std::to_string(second) : "");
    };
    return {"7201tc", needs_.Name(signal, needs_.DataInput(signal)) + " needs " +
                          text(choice.Rows->size(), kept, kept ? choice.XorRows->size() : 0) +
                          ", the limit of " + Place(pin) + " is " +
                          text(choice.Use->Terms, choice.Use->XorTerms > 0, choice.Use->XorTerms)};
}

bool ModeFit::ChooseSum(std::size_t signal, const Cell& cell, Choice& choice, Refusal& why) const {
    const auto name = needs_.Name(signal, needs_.DataInput(signal));
    const bool both = !choice.Use->HasOwnRows() &&
                      (needs_.Has(signal, Input::Ar) || needs_.Has(signal, Input::Sp)) &&
                      (needs_.Has(signal, Input::Ap) || needs_.Has(signal, Input::Sr));
    if (both) {
        why = {"7209tc", needs_.At(signal).Name + ", its .AR and .SP can't go with .AP and .SR"};
        return false;
    }
    const auto choices = SumChoices(signal, cell, choice);
    if (choices.empty()) {
        why = {"7212tc", name + ", " + Place(cell.Pin)};
        return false;
    }
    choice = choices.front();
    if (const auto owner = SharedWith(signal, cell, *choice.Use)) {
        why = {"7216tc", name + " differs from " + needs_.Name(*owner, needs_.DataInput(*owner)) +
                             ", which has the sum of " + Place(cell.Pin)};
        return TakeShared(*Choices[*owner], choice);
    }
    const auto fits = std::find_if(choices.begin(), choices.end(), [&](const Choice& other) {
        return other.Low == choice.Low && other.Complemented == choice.Complemented && other.Fits();
    });
    if (fits == choices.end()) {
        why = TooManyTerms(signal, cell.Pin, choices);
        return false;
    }
    choice = *fits;
    return true;
}

}  // namespace fit
