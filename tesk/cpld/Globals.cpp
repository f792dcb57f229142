#include <algorithm>
#include <map>

#include "cpld/Plan.h"

namespace cpld {
namespace {

using Net = std::pair<std::size_t, bool>;  // of a literal: signal, negated

class Chooser {
  public:
    Chooser(const Device& device, const Package& package, Wants& wants)
        : device_(device), package_(package), wants_(wants), taken_(device.Pads.size()) {
        for (const auto& name : wants.Names)
            if (name.Place) taken_[*name.Place] = true;
    }

    Globals Run() {
        ChooseClocks();
        ChooseClear();
        ChooseEnables();
        return result_;
    }

  private:
    bool IsInput(std::size_t signal) const { return !wants_.Names[signal].Driven; }

    std::optional<Literal> InputLiteral(const Sum& sum) const {
        if (sum.size() != 1 || sum.front().size() != 1 || !IsInput(sum.front().front().Signal))
            return std::nullopt;
        auto literal = sum.front().front();
        literal.Pin = false;
        return literal;
    }

    // The nets, the most used ones first.
    static std::vector<Net> Sorted(const std::map<Net, std::size_t>& uses) {
        std::vector<Net> nets;
        for (const auto& [net, count] : uses) nets.push_back(net);
        std::stable_sort(nets.begin(), nets.end(),
                         [&](const Net& a, const Net& b) { return uses.at(a) > uses.at(b); });
        return nets;
    }

    // The pad of those offered at which the signal is, or comes to be; nothing if that can't be.
    std::optional<std::size_t> PadAmong(std::size_t signal, const std::vector<std::size_t>& pads) {
        auto& place = wants_.Names[signal].Place;
        if (place) {
            const bool there = std::find(pads.begin(), pads.end(), *place) != pads.end();
            return there ? place : std::nullopt;
        }
        for (const auto pad : pads) {
            if (taken_[pad] || package_.Pins[pad] == 0 || device_.IsJtagPad(pad)) continue;
            taken_[pad] = true;
            place = pad;
            return pad;
        }
        return std::nullopt;
    }

    static std::vector<std::size_t> PadsOf(const std::vector<Signal>& signals) {
        std::vector<std::size_t> pads;
        for (const auto& signal : signals)
            if (signal.Is == Signal::Kind::Pad) pads.push_back(signal.Index);
        return pads;
    }

    void ChooseClocks() {
        std::map<Net, std::size_t> uses;
        for (const auto& want : wants_.All)
            if (const auto literal = InputLiteral(want.Clock)) ++uses[{literal->Signal, literal->Negated}];
        const auto& special = device_.Special.Clocks;
        const std::vector<std::size_t> pads(special.begin(), special.end());
        for (const auto& net : Sorted(uses)) {
            for (std::size_t line = 0; line < ClockCount; ++line) {
                if (result_.Clocks[line]) continue;
                const auto pad = PadAmong(net.first, pads);
                if (!pad) break;
                const auto brings = PadsOf(device_.Clocks[line].Signals);
                if (std::find(brings.begin(), brings.end(), *pad) == brings.end()) continue;
                result_.Clocks[line] = GlobalNet{{net.first, net.second, false}, *pad};
                break;
            }
        }
    }

    // What clears is told of what the macrocell gives: of an active-low pin that is its preset.
    void ChooseClear() {
        std::map<Net, std::size_t> uses;
        for (const auto& want : wants_.All) {
            const bool low = wants_.Names[want.Owner].Low;
            for (const auto& term : low ? want.Preset : want.Reset)
                if (const auto literal = InputLiteral({term})) ++uses[{literal->Signal, literal->Negated}];
        }
        for (const auto& net : Sorted(uses)) {
            const auto pad = PadAmong(net.first, {device_.Special.Clear});
            if (!pad) continue;
            result_.Clear = GlobalNet{{net.first, net.second, false}, *pad};
            return;
        }
    }

    // By pads that are inputs only, unless nothing but a global enable will do.
    void ChooseEnables() {
        std::map<Net, std::size_t> uses;
        std::map<Net, bool> needed;
        for (const auto& want : wants_.All) {
            if (!want.Enable) continue;
            const auto literal = InputLiteral(*want.Enable);
            if (!literal) continue;
            const bool low = wants_.Names[want.Owner].Low;
            const Net net{literal->Signal, literal->Negated};
            ++uses[net];
            if (!(low ? want.Reset : want.Preset).empty()) needed[net] = true;
        }
        for (const bool must : {true, false})
            for (const auto& net : Sorted(uses))
                if (needed[net] == must) ChooseEnable(net, must);
    }

    void ChooseEnable(const Net& net, bool must) {
        for (const bool inputOnly : {true, false}) {
            for (std::size_t line = 0; line < EnableCount; ++line) {
                if (result_.Enables[line]) continue;
                auto pads = PadsOf(device_.Enables[line].Signals);
                const bool fixed = wants_.Names[net.first].Place.has_value();
                if (!fixed)
                    std::erase_if(pads, [&](auto pad) { return inputOnly != (pad >= device_.CellCount()); });
                const auto pad = PadAmong(net.first, pads);
                if (!pad) continue;
                result_.Enables[line] = GlobalNet{{net.first, net.second, false}, *pad};
                return;
            }
            if (!must) return;
        }
    }

    const Device& device_;
    const Package& package_;
    Wants& wants_;
    std::vector<bool> taken_;
    Globals result_;
};

template <std::size_t count>
std::optional<std::size_t> Find(const std::array<std::optional<GlobalNet>, count>& nets, const Sum& sum) {
    if (sum.size() != 1 || sum.front().size() != 1) return std::nullopt;
    const auto& literal = sum.front().front();
    for (std::size_t i = 0; i < count; ++i)
        if (nets[i] && nets[i]->From.Signal == literal.Signal && nets[i]->From.Negated == literal.Negated)
            return i;
    return std::nullopt;
}

}  // namespace

std::optional<std::size_t> Globals::ClockOf(const Sum& sum) const { return Find(Clocks, sum); }
std::optional<std::size_t> Globals::EnableOf(const Sum& sum) const { return Find(Enables, sum); }

Globals ChooseGlobals(const Device& device, const Package& package, Wants& wants) {
    return Chooser(device, package, wants).Run();
}

}  // namespace cpld
