#include "zrx/Problem.h"

#include <algorithm>
#include <numeric>
#include <set>

namespace zrx {

namespace {

constexpr std::size_t none = static_cast<std::size_t>(-1);

template <class Take>
void ForEachLiteral(const fit::Function& function, const Take& take) {
    for (const auto* sum : {&function.True, &function.False}) {
        if (!*sum) continue;
        for (const fit::Term& term : **sum)
            for (const fit::Literal& literal : term) take(literal);
    }
}

const fit::Function* Data(const std::vector<const fit::Function*>& functions) {
    for (const fit::Function* function : functions)
        if (function->To == model::Input::Out || function->To == model::Input::D) return function;
    return nullptr;
}

bool HasAny(const std::vector<const fit::Function*>& functions, std::initializer_list<model::Input> inputs) {
    return std::any_of(functions.begin(), functions.end(), [&](const fit::Function* function) {
        return std::find(inputs.begin(), inputs.end(), function->To) != inputs.end();
    });
}

std::vector<std::size_t> Sorted(const std::set<std::size_t>& set) { return {set.begin(), set.end()}; }

}  // namespace

void Utilize(fit::Device& device, int percent) {
    for (fit::Mode& mode : device.Modes)
        for (fit::Cell& cell : mode.Cells)
            for (fit::CellUse& use : cell.Uses)
                use.Terms = use.Terms * static_cast<std::size_t>(percent) / 100;
}

Problem::Problem(fit::Design design, std::vector<Candidate> candidates)
    : design_(std::move(design)), candidates_(std::move(candidates)) {
    for (fit::Signal& signal : design_.Signals) signal.Pin = 0;
    for (const Candidate& candidate : candidates_) {
        auto& rooms = rooms_.emplace_back();
        for (const fit::Mode& mode : candidate.Device.Modes) rooms.push_back(RoomOf(mode));
    }
    given_.resize(design_.Signals.size());
    for (const fit::Function& function : design_.Functions) given_[function.Signal].push_back(&function);
    FindItems();
}

Problem::Room Problem::RoomOf(const fit::Mode& mode) {
    Room room;
    std::set<int> pins{mode.ClockPin, mode.EnablePin};
    for (const auto& input : mode.Inputs) pins.insert(input.first);
    pins.erase(0);
    room.Pins = pins.size();
    room.ArrayPins = mode.Inputs.size();
    room.Cells = mode.Cells.size();
    for (const fit::Cell& cell : mode.Cells) {
        bool input = false;
        bool feedback = false;
        std::size_t output = 0;
        std::size_t register_ = 0;
        for (const fit::CellUse& use : cell.Uses) {
            input = input || use.Kind == fit::UseKind::Input;
            feedback = feedback || use.Feedback != fit::FeedbackKind::None;
            if (use.Kind == fit::UseKind::Output) output = std::max(output, use.Terms);
            if (use.Kind == fit::UseKind::Register) register_ = std::max(register_, use.Terms);
        }
        if (output > 0) room.Output.push_back(output);
        if (register_ > 0) room.Register.push_back(register_);
        room.InputCells += input ? 1 : 0;
        room.Feedbacks += feedback ? 1 : 0;
        room.Polarity = cell.Polarity;
    }
    room.OwnRows = mode.AnyUse([](const fit::CellUse& use) { return use.HasOwnRows(); });
    std::sort(room.Output.rbegin(), room.Output.rend());
    std::sort(room.Register.rbegin(), room.Register.rend());
    return room;
}

// For each signal the lowest one that it has to share its chip with.
std::vector<std::size_t> Problem::Groups() const {
    std::vector<std::size_t> group(design_.Signals.size());
    std::iota(group.begin(), group.end(), std::size_t{0});
    const auto rootOf = [&](std::size_t signal) {
        while (group[signal] != signal) signal = group[signal] = group[group[signal]];
        return signal;
    };
    for (const fit::Function& function : design_.Functions)
        ForEachLiteral(function, [&](const fit::Literal& literal) {
            const bool register_ = design_.Signals[literal.Signal].Register != model::RegisterKind::None;
            if (literal.Pin || !register_ || !HasAny(given_[literal.Signal], {model::Input::Oe})) return;
            const std::size_t a = rootOf(function.Signal);
            const std::size_t b = rootOf(literal.Signal);
            group[std::max(a, b)] = std::min(a, b);
        });
    for (std::size_t signal = 0; signal < group.size(); ++signal) group[signal] = rootOf(signal);
    return group;
}

void Problem::FindItems() {
    const std::vector<std::size_t> group = Groups();
    std::map<std::size_t, std::size_t> items;
    itemOf_.assign(design_.Signals.size(), none);
    readers_.resize(design_.Signals.size());
    for (std::size_t signal = 0; signal < design_.Signals.size(); ++signal) {
        if (given_[signal].empty()) continue;
        const auto [at, isNew] = items.emplace(group[signal], items_.size());
        if (isNew) items_.emplace_back();
        itemOf_[signal] = at->second;
        items_[at->second].Units.push_back(signal);
    }
    for (std::size_t i = 0; i < items_.size(); ++i) {
        std::set<std::size_t> reads;
        std::set<std::size_t> array;
        for (const std::size_t unit : items_[i].Units) {
            for (const fit::Function* function : given_[unit])
                ForEachLiteral(*function, [&](const fit::Literal& literal) {
                    reads.insert(literal.Signal);
                    if (function->To != model::Input::Ck && function->To != model::Input::Oe)
                        array.insert(literal.Signal);
                });
            items_[i].Terms = std::max(items_[i].Terms, Need(unit, fit::PolarityKind::High, false));
        }
        items_[i].Reads = Sorted(reads);
        items_[i].Array = Sorted(array);
        for (const std::size_t signal : items_[i].Reads) readers_[signal].push_back(i);
    }
}

std::string Problem::NameOf(std::size_t item) const {
    std::string names;
    for (const std::size_t unit : items_[item].Units)
        names += (names.empty() ? "" : ", ") + design_.Signals[unit].Name;
    return names;
}

// The product terms that an output takes in a macrocell of a polarity, at least.
std::size_t Problem::Need(std::size_t unit, fit::PolarityKind polarity, bool ownRows) const {
    const fit::Function* data = Data(given_[unit]);
    if (data == nullptr) return 0;
    const std::size_t on = data->True->size();
    const std::size_t off = data->False ? data->False->size() : on;
    const fit::Signal& signal = design_.Signals[unit];
    if (polarity == fit::PolarityKind::Low && signal.Node) return std::min(on, off);
    if (polarity == fit::PolarityKind::Low) return signal.ActiveLow ? on : off;
    return !ownRows && HasAny(given_[unit], {model::Input::Ap, model::Input::Sr}) ? off : on;
}

Problem::Demand Problem::DemandOf(const Set& set) const {
    Demand demand;
    std::vector<std::size_t> reads;
    std::vector<std::size_t> array;
    for (const std::size_t item : set) {
        demand.Units += items_[item].Units.size();
        reads.insert(reads.end(), items_[item].Reads.begin(), items_[item].Reads.end());
        array.insert(array.end(), items_[item].Array.begin(), items_[item].Array.end());
    }
    const auto count = [&](std::vector<std::size_t>& signals, bool own) {
        std::sort(signals.begin(), signals.end());
        signals.erase(std::unique(signals.begin(), signals.end()), signals.end());
        return static_cast<std::size_t>(
            std::count_if(signals.begin(), signals.end(), [&](std::size_t signal) {
                return own == (itemOf_[signal] != none &&
                               std::binary_search(set.begin(), set.end(), itemOf_[signal]));
            }));
    };
    demand.Inputs = count(reads, false);
    demand.ArrayInputs = count(array, false);
    demand.Feedbacks = count(array, true);
    return demand;
}

bool Problem::MayFit(const Set& set, const Demand& demand, const Room& room) const {
    if (demand.Units > room.Cells || demand.Feedbacks > room.Feedbacks) return false;
    const std::size_t free = std::min(room.InputCells, room.Cells - demand.Units);
    if (demand.Inputs > room.Pins + free || demand.ArrayInputs > room.ArrayPins + free) return false;
    std::vector<std::size_t> outputs;
    std::vector<std::size_t> registers;
    for (const std::size_t item : set)
        for (const std::size_t unit : items_[item].Units) {
            const bool isRegister = design_.Signals[unit].Register != model::RegisterKind::None;
            (isRegister ? registers : outputs).push_back(Need(unit, room.Polarity, room.OwnRows));
        }
    const auto match = [](std::vector<std::size_t>& needs, const std::vector<std::size_t>& cells) {
        std::sort(needs.rbegin(), needs.rend());
        return needs.size() <= cells.size() &&
               std::equal(needs.begin(), needs.end(), cells.begin(), std::less_equal<>());
    };
    return match(outputs, room.Output) && match(registers, room.Register);
}

bool Problem::MayFit(const Set& set, std::size_t candidate) const {
    const auto& rooms = rooms_[candidate];
    const Demand demand = DemandOf(set);
    return std::any_of(rooms.begin(), rooms.end(),
                       [&](const Room& room) { return MayFit(set, demand, room); });
}

void Problem::AddFunctions(Chip& chip, const std::map<std::size_t, std::size_t>& local,
                           std::size_t units) const {
    const auto rename = [&](fit::Sum& sum) {
        for (fit::Term& term : sum)
            for (fit::Literal& literal : term) {
                literal.Signal = local.at(literal.Signal);
                literal.Pin = literal.Pin && literal.Signal < units;
            }
    };
    for (std::size_t unit = 0; unit < units; ++unit)
        for (const fit::Function* function : given_[chip.Whole[unit]]) {
            fit::Function& copy = chip.Design.Functions.emplace_back(*function);
            copy.Signal = unit;
            for (auto* sum : {&copy.True, &copy.False})
                if (*sum) rename(**sum);
        }
}

Problem::Chip Problem::Place(const Set& set, std::size_t candidate) const {
    Chip chip;
    std::map<std::size_t, std::size_t> local;
    const auto add = [&](std::size_t signal) -> fit::Signal& {
        local.emplace(signal, chip.Whole.size());
        chip.Whole.push_back(signal);
        return chip.Design.Signals.emplace_back(design_.Signals[signal]);
    };
    for (const std::size_t item : set)
        for (const std::size_t unit : items_[item].Units) {
            const Set& readers = readers_[unit];
            fit::Signal& signal = add(unit);
            // A node that other chips read needs its pin.
            signal.Node =
                signal.Node && std::includes(set.begin(), set.end(), readers.begin(), readers.end());
        }
    const std::size_t units = chip.Whole.size();
    for (const std::size_t item : set)
        for (const std::size_t read : items_[item].Reads) {
            if (local.contains(read)) continue;
            fit::Signal& signal = add(read);
            signal.Node = false;
            signal.Register = model::RegisterKind::None;
        }
    AddFunctions(chip, local, units);
    chip.Fit = fit::FitDesign(candidates_[candidate].Device, chip.Design, {});
    return chip;
}

bool Problem::Fits(const Set& set, std::size_t candidate) {
    if (!MayFit(set, candidate)) return false;
    const auto [at, isNew] = known_.emplace(std::pair(candidate, set), false);
    if (!isNew) return at->second;
    const fit::Fit fit = Place(set, candidate).Fit;
    // What a device would add, such as a reset of all its registers, is not in the design.
    return at->second = fit.Ok() && fit.Implied.empty();
}

std::size_t Problem::FewestChips(const std::vector<std::size_t>& candidates) const {
    std::size_t most = 1;
    for (const std::size_t candidate : candidates)
        for (const Room& room : rooms_[candidate]) most = std::max(most, room.Cells);
    std::size_t units = 0;
    for (const Item& item : items_) units += item.Units.size();
    return (units + most - 1) / most;
}

}  // namespace zrx
