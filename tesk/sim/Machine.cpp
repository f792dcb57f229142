#include "sim/Machine.h"

#include <algorithm>
#include <set>
#include <utility>

#include "sim/Logic3.h"

namespace sim {

void Machine::SetDefaultClock(Value level) {
    if (usesDefaultClock_ && std::exchange(defaultClock_, level) != level) clockDue_.SetAll();
}

bool Machine::IsClocked(std::size_t net) const {
    const auto kind = design_.Nets[net].Register;
    return kind != RegisterKind::None && kind != RegisterKind::Latch;
}

// The asserted state of a net with the registers as they stand: the function, or the register after its
// asynchronous inputs.
Value Machine::LogicOf(std::size_t net) const {
    const auto kind = design_.Nets[net].Register;
    if (kind == RegisterKind::None) return gates_.Part(net, Input::Out, Value::Zero, now_);
    Value state = now_[logic_ + net];
    if (kind == RegisterKind::Latch) {
        const Value enabled = gates_.Part(net, Input::Le, Value::One, now_);
        if (enabled != Value::Zero)
            state = Choose(enabled, gates_.Part(net, Input::L, Value::Zero, now_), state);
    }
    const Value reset = gates_.Part(net, Input::Ar, Value::Zero, now_);
    const Value preset = gates_.Part(net, Input::Ap, Value::Zero, now_);
    if (reset == Value::One && preset == Value::One) return Value::Unknown;
    return Choose(preset, Value::One, Choose(reset, Value::Zero, state));
}

Value Machine::PinOf(std::size_t net) const {
    const Value outside = external_[net];
    const auto& record = design_.Nets[net];
    if (record.Kind == NetKind::Input) return outside;
    const Value enabled = gates_.Part(net, Input::Oe, Value::One, now_);
    if (enabled == Value::Zero) return outside;
    const Value own = record.ActiveLow ? Not(State(net)) : State(net);
    if (outside == Value::HighZ) return enabled == Value::One ? own : Value::Unknown;
    return Merge(own, outside);
}

Value Machine::ClockOf(std::size_t net) const { return gates_.Part(net, Input::Ck, defaultClock_, now_); }

// The next state by the data inputs alone.
Value Machine::DataState(std::size_t net, const Snapshot& before) const {
    const Value state = before[logic_ + net];
    const auto data = [&](Input input) { return gates_.Part(net, input, Value::Zero, before); };
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
    const Value reset = gates_.Part(net, Input::Sr, Value::Zero, before);
    const Value preset = gates_.Part(net, Input::Sp, Value::Zero, before);
    Value next = DataState(net, before);
    next = Choose(preset, Value::One, Choose(reset, Value::Zero, next));
    if (reset == Value::One && preset == Value::One) next = Value::Unknown;
    return Choose(gates_.Part(net, Input::Ce, Value::One, before), next, before[logic_ + net]);
}

// What reads the net is to be worked out anew: in this round, or if it has passed the place in the next one.
void Machine::Touch(std::size_t net) {
    for (std::size_t at = settles_.Begin[net]; at < settles_.Begin[net + 1]; ++at)
        (settles_.Places[at] >= round_ ? due_ : next_).Set(settles_.Places[at]);
    for (std::size_t at = clocksOf_.Begin[net]; at < clocksOf_.Begin[net + 1]; ++at)
        clockDue_.Set(clocksOf_.Places[at]);
}

// Outside of a round only.
void Machine::SetState(std::size_t net, Value state) {
    if (std::exchange(now_[logic_ + net], state) == state) return;
    if (design_.Nets[net].Kind == NetKind::Node) now_[net] = state;
    if (position_[net] != Marks::None) due_.Set(position_[net]);
    Touch(net);
}

void Machine::SetOutside(std::size_t net, Value level) {
    const Value old = std::exchange(external_[net], level);
    if (old == level) return;
    if (design_.Nets[net].Kind == NetKind::Input) {
        now_[net] = level;
        Touch(net);
        return;
    }
    due_.Set(position_[net]);
    opposed_ -= Known(old) == Value::Unknown ? 0 : 1;
    opposed_ += Known(level) == Value::Unknown ? 0 : 1;
}

// True if something changed. A node's level follows its state.
bool Machine::Update(std::size_t net) {
    const Value logic = LogicOf(net);
    bool changed = std::exchange(now_[logic_ + net], logic) != logic;
    const bool node = design_.Nets[net].Kind == NetKind::Node;
    const Value pin = node ? logic : PinOf(net);
    const Value old = std::exchange(now_[net], pin);
    changed = changed || (!node && old != pin);
    if (changed) Touch(net);
    return changed;
}

// Empty if the logic came to rest, else the nets that still change.
std::vector<std::size_t> Machine::SettleRounds() {
    const std::size_t most = order_.size() + ExtraRounds;
    constexpr std::size_t roundsToTell = 8;  // further ones that show which nets take part
    std::set<std::size_t> restless;
    for (std::size_t round = 1; round <= most + roundsToTell && !Exhausted(); ++round) {
        bool changed = false;
        for (std::size_t at = 0; (at = due_.Take(at)) != Marks::None;) {
            const std::size_t net = order_[at];
            round_ = ++at;
            if (!Update(net)) continue;
            changed = true;
            if (round > most) restless.insert(net);
            if (Trace) Trace(4, "    " + design_.Nets[net].Name + " = " + Letter(Level(net)));
        }
        round_ = 0;
        std::swap(due_, next_);
        if (changed) continue;
        if (Trace) Trace(3, "  settled in " + std::to_string(round) + " rounds");
        return {};
    }
    return {restless.begin(), restless.end()};
}

void Machine::MakeUnknown(const std::vector<std::size_t>& nets) {
    for (const auto net : nets) {
        SetState(net, Value::Unknown);
        if (design_.Nets[net].Kind == NetKind::Node) continue;
        now_[net] = Value::Unknown;
        if (position_[net] != Marks::None) due_.Set(position_[net]);
        Touch(net);
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
    const auto due = due_;
    bool any = false;
    for (const auto net : looping_) {
        if (IsClocked(net) || Known(Level(net)) != Value::Unknown) continue;
        SetState(net, Value::Zero);
        now_[net] = Value::Zero;
        due_.Set(position_[net]);
        Touch(net);
        any = true;
    }
    if (any) {
        const auto trace = std::exchange(Trace, nullptr);
        auto restless = SettleRounds();
        if (trouble.NoFixedPoint.empty()) trouble.NoFixedPoint = std::move(restless);
        Trace = trace;
    }
    now_ = kept;
    due_ = due;
}

// The registers that an edge makes change, with their next states.
void Machine::FindEdges() {
    edges_.clear();
    for (std::size_t i = 0; (i = clockDue_.Take(i)) != Marks::None; ++i) {
        const std::size_t net = clocked_[i];
        const Value clock = ClockOf(net);
        const Value last = std::exchange(clocks_[i], clock);
        const bool edge = last == Value::Zero && clock == Value::One;
        const bool perhaps = last != clock && last != Value::One && clock != Value::Zero;
        if (!perhaps) continue;
        const Value state = State(net);
        const Value next = NextState(net, before_);
        const Value result = edge ? next : Merge(next, state);
        if (result != state) edges_.emplace_back(net, result);
    }
}

// Registers that clock one another are worked off edge by edge.
void Machine::Clock(Trouble& trouble) {
    for (std::size_t round = 0;; ++round) {
        FindEdges();
        if (edges_.empty()) return;
        before_ = now_;
        if (round == clocked_.size() + ExtraRounds) {
            trouble.ClockFault = true;
            trouble.NoFixedPoint.clear();
            for (const auto& change : edges_) trouble.NoFixedPoint.push_back(change.first);
            MakeUnknown(trouble.NoFixedPoint);
            Settle(trouble);
            return;
        }
        for (const auto& [net, state] : edges_) {
            SetState(net, state);
            if (Trace) Trace(1, "  clocked " + design_.Nets[net].Name + " to " + Letter(state));
        }
        Settle(trouble);
    }
}

void Machine::Change(const std::vector<Drive>& drives, Trouble& trouble) {
    before_ = now_;
    for (const auto& [net, level] : drives) SetOutside(net, level);
    Settle(trouble);
    Clock(trouble);
}

Machine::Trouble Machine::Apply(const std::vector<Drive>& drives) {
    Trouble trouble;
    Snapshot before;
    if (Trace) before = now_;
    first_.clear();
    second_.clear();
    for (const auto& drive : drives) (clockSupport_[drive.first] ? second_ : first_).push_back(drive);
    if (!first_.empty() && !second_.empty()) Change(first_, trouble);
    Change(second_.empty() ? first_ : second_, trouble);
    if (!looping_.empty()) ProbeLoops(trouble);
    if (opposed_ > 0) FindContention(trouble);
    if (Trace) TraceChanges(before);
    return trouble;
}

void Machine::Preload(const std::vector<Drive>& states) {
    for (const auto& [net, state] : states)
        if (design_.Nets[net].Register != RegisterKind::None) SetState(net, Known(state));
}

void Machine::FindContention(Trouble& trouble) const {
    for (std::size_t net = 0; net < design_.Nets.size(); ++net) {
        if (design_.Nets[net].Kind == NetKind::Input || Known(external_[net]) == Value::Unknown) continue;
        const Value own = design_.Nets[net].ActiveLow ? Not(State(net)) : State(net);
        const Value enabled = gates_.Part(net, Input::Oe, Value::One, now_);
        if (enabled == Value::One && own == Not(external_[net])) trouble.Contention.push_back(net);
    }
}

void Machine::TraceChanges(const Snapshot& before) const {
    for (std::size_t net = 0; net < design_.Nets.size(); ++net) {
        if (before[net] != Level(net)) Trace(2, "  " + design_.Nets[net].Name + " = " + Letter(Level(net)));
    }
}

}  // namespace sim
