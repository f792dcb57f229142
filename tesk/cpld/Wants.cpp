#include "cpld/Wants.h"

#include <algorithm>

#include "fit/Sums.h"

namespace cpld {
namespace {

using model::Input;

class Builder {
  public:
    Builder(const fit::Needs& needs, std::optional<std::size_t> clockInput)
        : needs_(needs), clockInput_(clockInput) {}

    Wants Run() {
        for (std::size_t signal = 0; signal < needs_.Count(); ++signal) AddName(signal);
        for (std::size_t signal = 0; signal < needs_.Count(); ++signal)
            if (result_.Names[signal].Driven && HasData(signal)) AddWant(signal);
        return std::move(result_);
    }

  private:
    void Tell(std::size_t signal, MessageCode code, const std::string& detail) {
        result_.Messages.push_back(model::MakeMessage(code.Entry(), {}, detail, needs_.At(signal).Name));
    }

    void AddName(std::size_t signal) {
        const auto& from = needs_.At(signal);
        Name name;
        name.Text = from.Name;
        name.Read = needs_.ReadAtAll(signal);
        name.State = signal;
        name.Driven = needs_.Driven(signal) || (from.Node && needs_.ReadAtAll(signal));
        name.Drives = name.Driven && !from.Node;
        name.Low = from.ActiveLow && !from.Node;
        name.Register = needs_.Registered(signal);
        const auto* enable = needs_.SumOf(signal, Input::Oe, false);
        name.Plain = enable == nullptr || fit::IsTrue(*enable) || !name.Drives;
        result_.Names.push_back(std::move(name));
    }

    // Tells what is missing or more than there is.
    bool HasData(std::size_t signal) {
        if (needs_.Registered(signal) && needs_.Has(signal, Input::Out)) {
            Tell(signal, "7809tc", needs_.Name(signal, Input::Out));
            return false;
        }
        const auto has = [&](Input input) { return needs_.Has(signal, input); };
        bool data = false;
        switch (needs_.At(signal).Register) {
            case RegisterKind::None:
                data = has(Input::Out);
                break;
            case RegisterKind::D:
                data = has(Input::D);
                break;
            case RegisterKind::T:
                data = has(Input::T);
                break;
            case RegisterKind::Jk:
                data = has(Input::J) || has(Input::K);
                break;
            case RegisterKind::Rs:
                data = has(Input::S) || has(Input::R);
                break;
            case RegisterKind::Latch:
                data = has(Input::L);
                break;
        }
        if (!data) Tell(signal, "7805tc", needs_.At(signal).Name);
        return data;
    }

    Sum Get(std::size_t signal, Input input) {
        if (!needs_.Has(signal, input)) return {};
        const auto* sum = needs_.SumOf(signal, input, false);
        if (sum == nullptr) TooLarge(signal, input);
        return sum == nullptr ? Sum{} : *sum;
    }
    std::optional<Sum> GetMaybe(std::size_t signal, Input input) {
        return needs_.Has(signal, input) ? std::optional(Get(signal, input)) : std::nullopt;
    }
    void TooLarge(std::size_t signal, Input input) { Tell(signal, "7808tc", needs_.Name(signal, input)); }

    // Where it takes too many terms, of a macrocell of its own.
    Sum Complement(std::size_t signal, Input input) {
        const auto sum = Get(signal, input);
        if (auto complement = Not(sum)) return *complement;
        Want want;
        want.Owner = AddPart(result_.Names, signal);
        want.On = sum;
        result_.All.push_back(want);
        return {{{want.Owner, true, false}}};
    }

    // Of RS registers set wins.
    void AddData(Want& want) {
        const auto signal = want.Owner;
        const Sum state{{{signal, false, false}}}, notState{{{signal, true, false}}};
        switch (needs_.At(signal).Register) {
            case RegisterKind::None:
                want.On = Get(signal, Input::Out);
                return;
            case RegisterKind::D:
                want.On = Get(signal, Input::D);
                return;
            case RegisterKind::Latch:
                want.On = Get(signal, Input::L);
                return;
            case RegisterKind::T:
                want.Toggle = Get(signal, Input::T);
                return;
            case RegisterKind::Jk:
                want.Toggle = Or(And(notState, Get(signal, Input::J)), And(state, Get(signal, Input::K)));
                return;
            case RegisterKind::Rs:
                return AddSetReset(want, state, notState);
        }
    }

    // By the complement of either input, whichever is small.
    void AddSetReset(Want& want, const Sum& state, const Sum& notState) {
        const auto set = Get(want.Owner, Input::S), reset = Get(want.Owner, Input::R);
        if (const auto noSet = Not(set))
            want.Toggle = Or(And(notState, set), And(And(state, *noSet), reset));
        else
            want.On = Or(set, And(state, Complement(want.Owner, Input::R)));
    }

    // Synchronous reset and preset go into the data; preset wins.
    void AddSynchronous(Want& want) {
        const auto signal = want.Owner;
        const bool reset = needs_.Has(signal, Input::Sr), preset = needs_.Has(signal, Input::Sp);
        if (!reset && !preset) return;
        want.Sides.reset();
        const Sum always{{}};
        const auto noReset = reset ? Complement(signal, Input::Sr) : always;
        const auto set = Get(signal, Input::Sp);
        if (want.On) {
            want.On = Minimised(Or(And(*want.On, noReset), set));
            return;
        }
        const auto noPreset = preset ? Complement(signal, Input::Sp) : always;
        const Sum state{{{signal, false, false}}}, notState{{{signal, true, false}}};
        const auto cleared = And(And(state, Get(signal, Input::Sr)), noPreset);
        want.Toggle =
            Minimised(Or(Or(And(*want.Toggle, And(noReset, noPreset)), And(notState, set)), cleared));
    }

    void AddClock(Want& want) {
        const auto signal = want.Owner;
        const bool latch = want.Register == RegisterKind::Latch;
        const auto with = latch ? Input::Le : Input::Ck;
        if (needs_.Has(signal, latch ? Input::Ck : Input::Le))
            return Tell(signal, "7809tc", needs_.Name(signal, latch ? Input::Ck : Input::Le));
        if (needs_.Has(signal, with)) {
            want.Clock = Get(signal, with);
            return;
        }
        if (!clockInput_) return Tell(signal, "7806tc", needs_.Name(signal, with));
        // The rising edge of the pin.
        want.Clock = {{{*clockInput_, needs_.At(*clockInput_).ActiveLow, false}}};
        fit::Function implied;
        implied.Signal = signal;
        implied.To = with;
        implied.True = want.Clock;
        result_.Implied.push_back(std::move(implied));
    }

    // The term that clocks is the one that enables: an enable of another clock goes into the data.
    void AddClockEnable(Want& want) {
        want.ClockEnable = GetMaybe(want.Owner, Input::Ce);
        if (!want.ClockEnable) return;
        if (want.Register == RegisterKind::Latch)
            return Tell(want.Owner, "7809tc", needs_.Name(want.Owner, Input::Ce));
        if (fit::IsTrue(*want.ClockEnable)) want.ClockEnable.reset();
    }

    void CheckCombinational(std::size_t signal) {
        for (const auto input : {Input::Ck, Input::Ce, Input::Le, Input::Ar, Input::Ap, Input::Sr, Input::Sp})
            if (needs_.Has(signal, input)) Tell(signal, "7809tc", needs_.Name(signal, input));
    }

    void AddWant(std::size_t signal) {
        Want want;
        want.Owner = signal;
        const auto kind = needs_.At(signal).Register;
        const bool plain =
            kind == RegisterKind::None || kind == RegisterKind::D || kind == RegisterKind::Latch;
        want.Register = plain ? kind : RegisterKind::D;
        AddData(want);
        const auto data = kind == RegisterKind::Latch ? Input::L : needs_.DataInput(signal);
        if (const auto* sides = needs_.SidesOf(signal, data); sides != nullptr && want.On)
            want.Sides = *sides;
        want.Enable = GetMaybe(signal, Input::Oe);
        if (want.Enable && (!result_.Names[signal].Drives || fit::IsTrue(*want.Enable))) want.Enable.reset();
        if (want.Register == RegisterKind::None) {
            CheckCombinational(signal);
        } else {
            AddSynchronous(want);
            AddClock(want);
            AddClockEnable(want);
            want.Reset = Get(signal, Input::Ar);
            want.Preset = Get(signal, Input::Ap);
        }
        result_.All.push_back(std::move(want));
    }

    const fit::Needs& needs_;
    std::optional<std::size_t> clockInput_;
    Wants result_;
};

}  // namespace

Wants WantsOf(const fit::Needs& needs, std::optional<std::size_t> clockInput) {
    return Builder(needs, clockInput).Run();
}

std::size_t AddPart(std::vector<Name>& names, std::size_t owner) {
    Name name;
    name.Text = names[owner].Text + "." + std::to_string(++names[owner].Parts);
    name.Driven = name.Read = true;
    name.State = names.size();
    names.push_back(std::move(name));
    return names.size() - 1;
}

}  // namespace cpld
