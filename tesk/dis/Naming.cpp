#include <set>

#include "dis/DesignText.h"

namespace dis {
namespace {

// The pins that live macrocells read and do not drive themselves.
std::set<int> InputsOf(const Programmed& chip) {
    std::set<int> pins;
    for (std::size_t i = 0; i < chip.Live.size(); ++i) {
        if (!chip.Live[i]) continue;
        for (const auto* sum : SumsOf(chip.At(i)))
            for (const auto& term : *sum)
                for (const auto& literal : term)
                    if (literal.Of.From == proof::Signal::Kind::Pin && !chip.LiveAt(literal.Of.At))
                        pins.insert(static_cast<int>(literal.Of.At));
    }
    return pins;
}

}  // namespace

Naming::Naming(const Programmed& chip, const PinNames& names) {
    for (const int pin : InputsOf(chip)) pins_[pin];
    for (std::size_t i = 0; i < chip.Live.size(); ++i)
        if (chip.Live[i] && chip.At(i).Pin != 0) pins_[chip.At(i).Pin].ActiveLow = chip.ActiveLow(i);
    convert::NameMaker maker;
    for (auto& [pin, record] : pins_) {
        const auto given = names.find(pin);
        if (given == names.end()) continue;
        record.Name = maker.Of(std::to_string(pin), given->second.Name);
        if (!chip.LiveAt(static_cast<std::size_t>(pin))) record.ActiveLow = given->second.ActiveLow;
    }
    for (auto& [pin, record] : pins_) record.Name = maker.Of(std::to_string(pin), "P" + std::to_string(pin));
    for (std::size_t i = 0; i < chip.Live.size(); ++i) {
        if (!chip.Live[i]) continue;
        const auto& cell = chip.At(i);
        const auto node = std::to_string(cell.Node);
        cells_[i] = cell.Pin != 0 ? pins_.at(cell.Pin).Name : maker.Of("node " + node, "N" + node);
    }
}

}  // namespace dis
