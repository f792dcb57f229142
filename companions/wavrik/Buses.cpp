#include <algorithm>
#include <utility>

#include "wavrik/Waves.h"

namespace wavrik {
namespace {

bool IsOneBit(const Signal& signal) {
    return std::all_of(signal.Changes.begin(), signal.Changes.end(),
                       [](const Change& change) { return change.To < FirstWord; });
}

// How many signals from `at` on make a bus: indices that go up or down by one, each of one bit.
std::size_t BusLength(const std::vector<Signal>& signals, std::size_t at) {
    const IndexedName first = SplitIndex(signals[at].Name);
    std::size_t count = 1;
    int step = 0;
    if (first.Index < 0 || first.Stem.empty() || !IsOneBit(signals[at])) return 1;
    for (; at + count < signals.size(); ++count) {
        const IndexedName next = SplitIndex(signals[at + count].Name);
        const int distance = next.Index - first.Index;
        if (count == 1) step = distance;
        const bool follows = next.Index >= 0 && next.Stem == first.Stem && (step == 1 || step == -1) &&
                             distance == step * static_cast<int>(count);
        if (!follows || !IsOneBit(signals[at + count])) break;
    }
    return count;
}

}  // namespace

// The most significant member is the one of the highest index, whatever their order.
void WavesBuilder::AddBus(const std::vector<Signal>& members) {
    struct Event {
        Time At;
        std::size_t Bit;
        Value To;
    };
    const IndexedName first = SplitIndex(members.front().Name);
    const IndexedName last = SplitIndex(members.back().Name);
    std::vector<Event> events;
    for (std::size_t i = 0; i < members.size(); ++i) {
        const std::size_t bit = first.Index > last.Index ? i : members.size() - 1 - i;
        for (const Change& change : members[i].Changes) events.push_back({change.At, bit, change.To});
    }
    std::stable_sort(events.begin(), events.end(),
                     [](const Event& a, const Event& b) { return a.At < b.At; });
    const std::size_t bus = waves_.Signals.size();
    waves_.Signals.push_back({members.front().Name + ".." + std::to_string(last.Index), {}, {}});
    std::string bits(members.size(), 'X');
    for (std::size_t i = 0; i < events.size(); ++i) {
        bits[events[i].Bit] = static_cast<char>(events[i].To);
        if (i + 1 == events.size() || events[i + 1].At != events[i].At)
            Add(bus, events[i].At, WordOf(HexOf(bits)), 0);
    }
}

Waves WavesBuilder::Finish(Time end) {
    waves_.End = std::max<Time>(end, 1);  // values at the start alone are shown too
    // Buses are a comfort: not at the price of a refusal.
    if (2 * changes_ > MostChanges || 2 * waves_.Signals.size() > MostSignals) return std::move(waves_);
    std::vector<Signal> signals = std::exchange(waves_.Signals, {});
    for (std::size_t at = 0; at < signals.size();) {
        const std::size_t count = BusLength(signals, at);
        const auto begin = signals.begin() + static_cast<std::ptrdiff_t>(at);
        std::vector<Signal> members(std::make_move_iterator(begin),
                                    std::make_move_iterator(begin + static_cast<std::ptrdiff_t>(count)));
        if (count > 1) AddBus(members);
        for (Signal& member : members) {
            member.IsMember = count > 1;
            waves_.Signals.push_back(std::move(member));
        }
        at += count;
    }
    return std::move(waves_);
}

}  // namespace wavrik
