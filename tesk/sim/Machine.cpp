#include "sim/Machine.h"

#include <algorithm>
#include <set>
#include <utility>

#include "sim/Logic3.h"

namespace sim {

char Letter(Value value) { return "01XZ"[static_cast<std::size_t>(value)]; }

Value Machine::Level(std::size_t net) const {
    return design_.Nets[net].Kind == NetKind::Node ? now_.Logic[net] : now_.Pin[net];
}

bool Machine::IsClocked(std::size_t net) const {
    const auto kind = design_.Nets[net].Register;
    return kind != RegisterKind::None && kind != RegisterKind::Latch;
}

Value Machine::Read(const Literal& literal, const Snapshot& from) const {
    ++work_;
    const auto& net = design_.Nets[literal.Net];
    const bool registered = net.Register != RegisterKind::None;
    const bool isPin = net.Kind != NetKind::Node &&
                       (literal.From == Feedback::Pin || (literal.From == Feedback::Default && !registered));
    const Value level = Known(isPin ? from.Pin[literal.Net] : from.Logic[literal.Net]);
    return literal.Negated != (isPin && net.ActiveLow) ? Not(level) : level;
}

Value Machine::Sum(const Function& function, const Snapshot& from) const {
    Value sum = Value::Zero;
    for (const auto& term : function.Terms) {
        ++work_;
        Value product = Value::One;
        for (const auto& literal : term) {
            const Value value = Read(literal, from);
            if (value == Value::Zero) product = value;
            if (product == Value::Zero) break;
            if (value == Value::Unknown) product = value;
        }
        if (product == Value::One) sum = product;
        if (sum == Value::One) break;
        if (product == Value::Unknown) sum = product;
    }
    return function.Negative ? Not(sum) : sum;
}

Value Machine::Part(std::size_t net, Input input, Value missing, const Snapshot& from) const {
    const auto* function = parts_[net][input];
    return function == nullptr ? missing : Sum(*function, from);
}

// The asserted state of a net with the registers as they stand: the function, or the register after its
// asynchronous inputs.
Value Machine::LogicOf(std::size_t net) const {
    const auto kind = design_.Nets[net].Register;
    if (kind == RegisterKind::None) return Part(net, Input::Out, Value::Zero, now_);
    Value state = now_.Logic[net];
    if (kind == RegisterKind::Latch) {
        const Value enabled = Part(net, Input::Le, Value::One, now_);
        if (enabled != Value::Zero) state = Choose(enabled, Part(net, Input::L, Value::Zero, now_), state);
    }
    const Value reset = Part(net, Input::Ar, Value::Zero, now_);
    const Value preset = Part(net, Input::Ap, Value::Zero, now_);
    if (reset == Value::One && preset == Value::One) return Value::Unknown;
    return Choose(preset, Value::One, Choose(reset, Value::Zero, state));
}

Value Machine::PinOf(std::size_t net) const {
    const Value outside = external_[net];
    const auto& record = design_.Nets[net];
    if (record.Kind == NetKind::Input) return outside;
    const Value enabled = Part(net, Input::Oe, Value::One, now_);
    if (enabled == Value::Zero) return outside;
    const Value own = record.ActiveLow ? Not(now_.Logic[net]) : now_.Logic[net];
    if (outside == Value::HighZ) return enabled == Value::One ? own : Value::Unknown;
    return Merge(own, outside);
}

Value Machine::ClockOf(std::size_t net) const { return Part(net, Input::Ck, defaultClock_, now_); }

// The next state by the data inputs alone.
Value Machine::DataState(std::size_t net, const Snapshot& before) const {
    const Value state = before.Logic[net];
    const auto data = [&](Input input) { return Part(net, input, Value::Zero, before); };
    const auto setReset = [&](Value set, Value reset, Value both) {
        return Choose(set, Choose(reset, both, Value::One), Choose(reset, Value::Zero, state));
    };
    switch (design_.Nets[net].Register) {
        case RegisterKind::D:
            return data(Input::D);
        case RegisterKind::T:
            return Choose(data(Input::T), Not(state), state);
        case RegisterKind::Jk:
            return setReset(data(Input::J), data(Input::K), Not(state));
        case RegisterKind::Rs:
            return setReset(data(Input::S), data(Input::R), Value::Unknown);
        default:
            return state;
    }
}

Value Machine::NextState(std::size_t net, const Snapshot& before) const {
    const Value reset = Part(net, Input::Sr, Value::Zero, before);
    const Value preset = Part(net, Input::Sp, Value::Zero, before);
    Value next = DataState(net, before);
    next = Choose(preset, Value::One, Choose(reset, Value::Zero, next));
    if (reset == Value::One && preset == Value::One) next = Value::Unknown;
    return Choose(Part(net, Input::Ce, Value::One, before), next, before.Logic[net]);
}

// True if something changed.
bool Machine::Update(std::size_t net) {
    const Value logic = LogicOf(net);
    const bool logicChanged = std::exchange(now_.Logic[net], logic) != logic;
    if (design_.Nets[net].Kind == NetKind::Node) return logicChanged;
    const Value pin = PinOf(net);
    return std::exchange(now_.Pin[net], pin) != pin || logicChanged;
}

// Empty if the logic came to rest, else the nets that still change.
std::vector<std::size_t> Machine::SettleRounds() {
    const std::size_t most = order_.size() + ExtraRounds;
    constexpr std::size_t roundsToTell = 8;  // further ones that show which nets take part
    std::set<std::size_t> restless;
    for (std::size_t round = 1; round <= most + roundsToTell && !Exhausted(); ++round) {
        bool changed = false;
        for (const auto net : order_) {
            if (!Update(net)) continue;
            changed = true;
            if (round > most) restless.insert(net);
            if (Trace) Trace(4, "    " + design_.Nets[net].Name + " = " + Letter(Level(net)));
        }
        if (changed) continue;
        if (Trace) Trace(3, "  settled in " + std::to_string(round) + " rounds");
        return {};
    }
    return {restless.begin(), restless.end()};
}

void Machine::MakeUnknown(const std::vector<std::size_t>& nets) {
    for (const auto net : nets) {
        now_.Logic[net] = Value::Unknown;
        if (design_.Nets[net].Kind != NetKind::Node) now_.Pin[net] = Value::Unknown;
    }
}

void Machine::Settle(Trouble& trouble) {
    auto restless = SettleRounds();
    if (restless.empty()) return;
    MakeUnknown(looping_);
    MakeUnknown(restless);
    SettleRounds();
    trouble.NoFixedPoint = std::move(restless);
}

// An unknown value in a loop may hide that the loop has no resting state at all, as in A = !A: it is tried
// out from 0. What the loop settles to is not kept, for it might as well settle to something else.
void Machine::ProbeLoops(Trouble& trouble) {
    const auto kept = now_;
    bool any = false;
    for (const auto net : looping_) {
        if (IsClocked(net) || Known(Level(net)) != Value::Unknown) continue;
        now_.Logic[net] = Value::Zero;
        now_.Pin[net] = Value::Zero;
        any = true;
    }
    if (any) {
        const auto trace = std::exchange(Trace, nullptr);
        auto restless = SettleRounds();
        if (trouble.NoFixedPoint.empty()) trouble.NoFixedPoint = std::move(restless);
        Trace = trace;
    }
    now_ = kept;
}

// The registers that an edge makes change, with their next states.
std::vector<Machine::Drive> Machine::Edges(const Snapshot& before) {
    std::vector<Drive> changes;
    for (std::size_t i = 0; i < clocked_.size(); ++i) {
        const Value clock = ClockOf(clocked_[i]);
        const Value last = std::exchange(clocks_[i], clock);
        const bool edge = last == Value::Zero && clock == Value::One;
        const bool perhaps = last != clock && last != Value::One && clock != Value::Zero;
        if (!perhaps) continue;
        const Value state = now_.Logic[clocked_[i]];
        const Value next = NextState(clocked_[i], before);
        const Value result = edge ? next : Merge(next, state);
        if (result != state) changes.emplace_back(clocked_[i], result);
    }
    return changes;
}

// Registers that clock one another are worked off edge by edge; `before` is what the data inputs see.
void Machine::Clock(Snapshot before, Trouble& trouble) {
    for (std::size_t round = 0;; ++round) {
        const auto changes = Edges(before);
        if (changes.empty()) return;
        before = now_;
        if (round == clocked_.size() + ExtraRounds) {
            trouble.ClockFault = true;
            trouble.NoFixedPoint.clear();
            for (const auto& change : changes) trouble.NoFixedPoint.push_back(change.first);
            MakeUnknown(trouble.NoFixedPoint);
            Settle(trouble);
            return;
        }
        for (const auto& [net, state] : changes) {
            now_.Logic[net] = state;
            if (Trace) Trace(1, "  clocked " + design_.Nets[net].Name + " to " + Letter(state));
        }
        Settle(trouble);
    }
}

void Machine::Change(const std::vector<Drive>& drives, Trouble& trouble) {
    const auto before = now_;
    for (const auto& [net, level] : drives) {
        external_[net] = level;
        if (design_.Nets[net].Kind == NetKind::Input) now_.Pin[net] = level;
    }
    Settle(trouble);
    Clock(before, trouble);
}

Machine::Trouble Machine::Apply(const std::vector<Drive>& drives) {
    Trouble trouble;
    const auto before = now_;
    std::vector<Drive> first;
    std::vector<Drive> second;
    for (const auto& drive : drives) (clockSupport_[drive.first] ? second : first).push_back(drive);
    if (!first.empty() && !second.empty()) Change(first, trouble);
    Change(second.empty() ? first : second, trouble);
    if (!looping_.empty()) ProbeLoops(trouble);
    FindContention(trouble);
    if (Trace) TraceChanges(before);
    return trouble;
}

void Machine::Preload(const std::vector<Drive>& states) {
    for (const auto& [net, state] : states) {
        if (design_.Nets[net].Register != RegisterKind::None) now_.Logic[net] = Known(state);
    }
}

void Machine::FindContention(Trouble& trouble) const {
    for (std::size_t net = 0; net < design_.Nets.size(); ++net) {
        if (design_.Nets[net].Kind == NetKind::Input || Known(external_[net]) == Value::Unknown) continue;
        const Value own = design_.Nets[net].ActiveLow ? Not(now_.Logic[net]) : now_.Logic[net];
        const Value enabled = Part(net, Input::Oe, Value::One, now_);
        if (enabled == Value::One && own == Not(external_[net])) trouble.Contention.push_back(net);
    }
}

void Machine::TraceChanges(const Snapshot& before) const {
    for (std::size_t net = 0; net < design_.Nets.size(); ++net) {
        const bool node = design_.Nets[net].Kind == NetKind::Node;
        const Value old = node ? before.Logic[net] : before.Pin[net];
        if (old != Level(net)) Trace(2, "  " + design_.Nets[net].Name + " = " + Letter(Level(net)));
    }
}

}  // namespace sim
