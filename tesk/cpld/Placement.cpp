#include "cpld/Placement.h"

#include <algorithm>
#include <bit>
#include <numeric>

namespace cpld {

Placement::Placement(const Device& device, const Package& package, const Problem& problem, bool jtagPads)
    : device_(device),
      problem_(problem),
      sourcesOf_(problem.Units.size() + problem.Inputs.size()),
      unitAt_(device.CellCount(), nobody),
      padOf_(device.Pads.size(), nobody),
      last_(problem.Units.size(), nobody),
      inputPad_(problem.Inputs.size(), nobody),
      blocks_(device.Blocks.size()),
      dirty_(device.Blocks.size()) {
    for (std::size_t pad = 0; pad < device.Pads.size(); ++pad)
        padOk_.push_back(package.Pins[pad] != 0 && (jtagPads || !device.IsJtagPad(pad)));
    for (const auto& block : device.Blocks) {
        auto& pads = padMask_.emplace_back(device.Pads.size());
        auto& feedbacks = feedbackMask_.emplace_back(device.CellCount());
        for (std::size_t i = 0; i < block.Switches.size(); ++i)
            for (const auto& signal : block.Switches[i].Signals) {
                if (signal.Is == Signal::Kind::Ground) continue;
                auto& masks = signal.Is == Signal::Kind::Pad ? pads : feedbacks;
                masks[signal.Index] |= std::uint64_t{1} << i;
            }
    }
    std::size_t foldbacks = 0;
    for (const auto& unit : problem.Units)
        for (const auto index : unit.Foldbacks) foldbacks = std::max(foldbacks, index + 1);
    for (auto& block : blocks_) {
        block.Readers.resize(problem.Sources.size());
        block.Foldbacks.resize(foldbacks);
    }
    for (std::size_t i = 0; i < problem.Sources.size(); ++i) {
        const auto& source = problem.Sources[i];
        sourcesOf_[source.Unit ? *source.Unit : problem.Units.size() + *source.Input].push_back(i);
    }
}

bool Placement::Fits(std::size_t unit, std::size_t last) const {
    const auto& what = problem_.Units[unit];
    if (last % BlockCells + 1 < what.Length) return false;
    for (std::size_t i = 0; i < what.Length; ++i)
        if (unitAt_[last - i] != nobody) return false;
    return !what.Pad || PadFree(last);
}

void Placement::Count(std::size_t unit, std::size_t block, bool add) {
    auto& state = blocks_[block];
    const auto& what = problem_.Units[unit];
    const auto change = static_cast<std::uint16_t>(add ? 1 : -1);
    for (const auto source : what.Reads)
        state.Readers[source] = static_cast<std::uint16_t>(state.Readers[source] + change);
    for (const auto index : what.Foldbacks)
        state.Foldbacks[index] = static_cast<std::uint16_t>(state.Foldbacks[index] + change);
    const auto used = what.Length - what.Spare;
    state.Spare = add ? state.Spare - used : state.Spare + used;
    dirty_[block] = true;
}

void Placement::Put(std::size_t unit, std::size_t last) {
    const auto& what = problem_.Units[unit];
    last_[unit] = last;
    for (std::size_t i = 0; i < what.Length; ++i) unitAt_[last - i] = unit;
    if (what.Pad) padOf_[last] = unit;
    Count(unit, last / BlockCells, true);
}

// What a place costs: sources that the block did not read yet, and pads that others may need.
int Placement::Rating(std::size_t unit, std::size_t last, std::mt19937& random) const {
    const auto& what = problem_.Units[unit];
    const auto& readers = blocks_[last / BlockCells].Readers;
    int rating = 0;
    for (const auto source : what.Reads) rating += readers[source] == 0 ? 16 : 0;
    for (std::size_t i = what.Pad ? 1 : 0; i < what.Length; ++i) rating += padOk_[last - i] ? 8 : 0;
    // Beside others, so that long rows stay free.
    const auto first = last + 1 - what.Length;
    const bool beside = first % BlockCells == 0 || unitAt_[first - 1] != nobody;
    return rating + (beside ? 0 : 4) + static_cast<int>(random() % 8);
}

bool Placement::PlaceUnit(std::size_t unit, std::mt19937& random) {
    std::size_t best = nobody;
    int bestRating = 0;
    for (std::size_t last = 0; last < unitAt_.size(); ++last) {
        if (!Fits(unit, last)) continue;
        const int rating = Rating(unit, last, random);
        if (best != nobody && rating >= bestRating) continue;
        best = last;
        bestRating = rating;
    }
    if (best != nobody) Put(unit, best);
    return best != nobody;
}

bool Placement::PlaceInputs() {
    for (std::size_t i = 0; i < problem_.Inputs.size(); ++i) {
        if (inputPad_[i] != nobody) continue;
        auto pad = padOf_.size();
        while (pad > 0 && !PadFree(pad - 1)) --pad;
        if (pad == 0) return false;
        inputPad_[i] = pad - 1;
        padOf_[pad - 1] = problem_.Units.size() + i;
    }
    return true;
}

std::optional<std::size_t> Placement::Construct(std::mt19937& random) {
    for (std::size_t i = 0; i < problem_.Inputs.size(); ++i) {
        const auto& place = problem_.Inputs[i].Place;
        if (!place) continue;
        inputPad_[i] = *place;
        padOf_[*place] = problem_.Units.size() + i;
    }
    std::vector<std::size_t> order(problem_.Units.size());
    std::iota(order.begin(), order.end(), 0u);
    for (std::size_t i = order.size(); i > 1; --i) std::swap(order[i - 1], order[random() % i]);
    const auto rank = [&](std::size_t unit) {
        const auto& what = problem_.Units[unit];
        return what.Place ? 100u : what.Length * 2 + (what.Pad ? 1u : 0u);
    };
    std::stable_sort(order.begin(), order.end(), [&](auto a, auto b) { return rank(a) > rank(b); });
    for (const auto unit : order) {
        const auto& place = problem_.Units[unit].Place;
        const bool placed = place ? Fits(unit, *place) : PlaceUnit(unit, random);
        if (!placed) return unit;
        if (place) Put(unit, *place);
    }
    if (!PlaceInputs()) return problem_.Units.size();
    Refresh();
    return std::nullopt;
}

// Whether no unit reaches beyond the row.
bool Placement::Whole(std::size_t first, std::size_t length) const {
    const auto crosses = [&](std::size_t before) {
        return unitAt_[before] != nobody && unitAt_[before] == unitAt_[before + 1];
    };
    if (first % BlockCells != 0 && crosses(first - 1)) return false;
    const auto last = first + length - 1;
    return last % BlockCells == BlockCells - 1 || !crosses(last);
}

bool Placement::Movable(const Change& change, std::size_t from, std::size_t to) const {
    for (std::size_t i = 0; i < change.Length; ++i) {
        const auto unit = unitAt_[from + i];
        if (unit != nobody && problem_.Units[unit].Place) return false;
        if (!IsOutput(from + i)) continue;
        if (!padOk_[to + i]) return false;
        const auto other = padOf_[to + i];
        if (other == nobody || other < problem_.Units.size()) continue;
        if (problem_.Inputs[other - problem_.Units.size()].Place) return false;
    }
    return true;
}

Placement::Change Placement::Propose(std::mt19937& random) const {
    Change change;
    const bool input = !problem_.Inputs.empty() && (problem_.Units.empty() || random() % 3 == 0);
    if (input) {
        change.Length = 0;
        change.From = inputPad_[random() % inputPad_.size()];
        change.To = random() % padOf_.size();
        return change;
    }
    const auto unit = random() % problem_.Units.size();
    change.Length = problem_.Units[unit].Length;
    change.From = last_[unit] + 1 - change.Length;
    const auto block = random() % blocks_.size();
    change.To = block * BlockCells + random() % (BlockCells + 1 - change.Length);
    return change;
}

bool Placement::Allowed(const Change& change) const {
    if (change.Length == 0) {
        if (change.From == change.To || !padOk_[change.To] || IsOutput(change.To)) return false;
        for (const auto pad : {change.From, change.To})
            if (padOf_[pad] != nobody && problem_.Inputs[padOf_[pad] - problem_.Units.size()].Place)
                return false;
        return true;
    }
    const auto apart = change.From > change.To ? change.From - change.To : change.To - change.From;
    if (apart < change.Length) return false;
    return Whole(change.To, change.Length) && Movable(change, change.From, change.To) &&
           Movable(change, change.To, change.From);
}

void Placement::Touch(std::size_t owner) {
    for (const auto source : sourcesOf_[owner])
        for (std::size_t block = 0; block < blocks_.size(); ++block)
            if (blocks_[block].Readers[source] > 0) dirty_[block] = true;
}

void Placement::ExchangePads(std::size_t a, std::size_t b) {
    std::swap(padOf_[a], padOf_[b]);
    for (const auto pad : {a, b}) {
        const auto owner = padOf_[pad];
        if (owner == nobody) continue;
        if (owner >= problem_.Units.size()) inputPad_[owner - problem_.Units.size()] = pad;
        Touch(owner);
    }
}

void Placement::Apply(const Change& change) {
    if (change.Length == 0) {
        ExchangePads(change.From, change.To);
        return Refresh();
    }
    for (std::size_t i = 0; i < change.Length; ++i) {
        const auto from = change.From + i, to = change.To + i;
        if (IsOutput(from) || IsOutput(to)) ExchangePads(from, to);
        std::swap(unitAt_[from], unitAt_[to]);
    }
    const bool across = change.From / BlockCells != change.To / BlockCells;
    const auto settle = [&](std::size_t to, std::size_t from) {
        for (std::size_t i = 0; i < change.Length; ++i) {
            const auto unit = unitAt_[to + i];
            const bool last = unit != nobody && (i + 1 == change.Length || unitAt_[to + i + 1] != unit);
            if (!last) continue;
            last_[unit] = to + i;
            Touch(unit);
            if (!across) continue;
            Count(unit, from / BlockCells, false);
            Count(unit, to / BlockCells, true);
        }
    };
    settle(change.To, change.From);
    settle(change.From, change.To);
    Refresh();
}

void Placement::Refresh() {
    for (std::size_t block = 0; block < blocks_.size(); ++block) {
        if (!dirty_[block]) continue;
        const int cost = Evaluate(block);
        cost_ += cost - blocks_[block].Cost;
        blocks_[block].Cost = cost;
        dirty_[block] = false;
    }
}

std::uint64_t Placement::MaskOf(const Source& source, std::size_t block) const {
    std::uint64_t mask = 0;
    const auto pad = source.Input ? inputPad_[*source.Input] : last_[*source.Unit];
    if (source.Pad) mask |= padMask_[block][pad];
    if (source.Feedback) mask |= feedbackMask_[block][pad];
    return mask;
}

std::size_t Placement::Switch(std::size_t block, std::array<std::int16_t, BlockSwitches>& owners,
                              std::vector<std::size_t>& sources) const {
    std::vector<std::uint64_t> masks;
    for (std::size_t i = 0; i < problem_.Sources.size(); ++i) {
        if (blocks_[block].Readers[i] == 0) continue;
        sources.push_back(i);
        masks.push_back(MaskOf(problem_.Sources[i], block));
    }
    return Match(masks, owners);
}

std::size_t Placement::MissingFoldbacks(std::size_t block) const {
    const auto& state = blocks_[block];
    const auto used = static_cast<std::size_t>(
        std::count_if(state.Foldbacks.begin(), state.Foldbacks.end(), [](auto users) { return users > 0; }));
    return used > state.Spare ? used - state.Spare : 0;
}

int Placement::Evaluate(std::size_t block) const {
    std::array<std::int16_t, BlockSwitches> owners{};
    std::vector<std::size_t> sources;
    const auto missing = Switch(block, owners, sources) + MissingFoldbacks(block);
    if (missing > 0) return static_cast<int>(missing) * hardWeight;
    // The switches that are free, or can be made free.
    std::uint64_t open = 0;
    for (std::size_t i = 0; i < owners.size(); ++i)
        if (owners[i] < 0) open |= std::uint64_t{1} << i;
    for (bool more = true; more;) {
        more = false;
        for (std::size_t i = 0; i < owners.size(); ++i) {
            const auto bit = std::uint64_t{1} << i;
            if ((open & bit) != 0) continue;
            const auto& source = problem_.Sources[sources[static_cast<std::size_t>(owners[i])]];
            if ((MaskOf(source, block) & open) == 0) continue;
            open |= bit;
            more = true;
        }
    }
    int unreachable = 0;
    for (const auto& source : problem_.Sources) unreachable += (MaskOf(source, block) & open) == 0 ? 1 : 0;
    // Less than one that is missing, in all blocks together.
    return std::min(unreachable, hardWeight / static_cast<int>(blocks_.size()) - 1);
}

Layout Placement::Result() const {
    Layout layout{last_, inputPad_, {}};
    for (std::size_t block = 0; block < blocks_.size(); ++block) {
        std::array<std::int16_t, BlockSwitches> owners{};
        std::vector<std::size_t> sources;
        Switch(block, owners, sources);
        auto& switches = layout.Switches.emplace_back(BlockSwitches);
        for (std::size_t i = 0; i < BlockSwitches; ++i)
            if (owners[i] >= 0) switches[i] = sources[static_cast<std::size_t>(owners[i])];
    }
    return layout;
}

Shortage Placement::Missing() const {
    Shortage shortage;
    for (std::size_t block = 0; block < blocks_.size(); ++block) {
        std::array<std::int16_t, BlockSwitches> owners{};
        std::vector<std::size_t> sources;
        shortage.Unswitched.push_back(Switch(block, owners, sources));
        shortage.Foldbacks.push_back(MissingFoldbacks(block));
        shortage.Total += shortage.Unswitched.back() + shortage.Foldbacks.back();
    }
    return shortage;
}

}  // namespace cpld
