#pragma once

#include <compare>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "fit/Device.h"
#include "model/Register.h"
#include "proof/MessageTable.h"

// A programmed device: what its fuses make of it, in levels of its pins and states of its registers. Nothing
// here knows names or asserted states of a design.
namespace proof {

using model::RegisterKind;

// What a product term can read.
struct Signal {
    enum class Kind {
        Pin,   // the level at a pin, whoever drives it
        Cell,  // inside a macrocell: the state of its register; without one the value of its function
    };
    Kind From = Kind::Pin;
    std::size_t At = 0;  // pin number (0: a line that the device library does not know), or index into Cells
    auto operator<=>(const Signal&) const = default;  // NOLINT(modernize-use-nullptr)
};

struct Literal {
    Signal Of;
    bool Negated = false;
    auto operator<=>(const Literal&) const = default;  // NOLINT(modernize-use-nullptr)
};
using Term = std::vector<Literal>;  // a product; empty: always true
using Sum = std::vector<Term>;      // in the order of the rows, those that are false left out; empty: false

inline Sum Always() { return {{}}; }

// How a function of a macrocell comes about where the equations of a design may leave it open.
enum class Source {
    Own,     // the macrocell has it for itself
    Shared,  // all macrocells, or a group of them, have the same
    Device,  // no fuse has a say: a clock pin, an enable pin, outputs that are always on
};

struct Control {
    Sum When;
    Source From = Source::Device;
};

struct Macrocell {
    int Pin = 0;   // 0: buried
    int Node = 0;  // the number by which a design names it: its pin, or that of a buried one
    RegisterKind Register = RegisterKind::None;  // None, D, T or Latch

    // The function: `Rows`, XOR `Rows2` where the macrocell has a second sum, complemented if `Inverted`. It
    // is what a register takes.
    Sum Rows;
    std::optional<Sum> Rows2;
    bool Inverted = false;

    bool PinInverted = false;  // the pin has the complement of the register, or of the function
    Control Enable;            // of the pin. `When` empty: it never drives, the pin is an input or open
    Term EnableWith;           // what has to be true as well, whatever the fuses say
    Control Clock;             // takes its rising edge; of a latch: open while true. Not for None
    Control ClockEnable{Always(), Source::Device};
    Control Reset, Preset;  // while true the register is 0, 1
    // While both are true: false, the register is 0; true, its input goes through.
    bool PassesWhenBoth = false;
    Control SyncReset, SyncPreset;  // the same at the clock
    char PowerUp = 'X';             // '0', '1': the register at power-up; 'X': not known
    // False if the fuses that choose the use of the macrocell have values that the device does not know; it
    // is then told as one that never drives.
    bool Known = true;

    bool Drives() const { return !Enable.When.empty(); }
};

// All sums of a macrocell, those of its clock and the like included; of a constant one to be read alone.
template <typename Cell>
auto SumsOf(Cell& cell) {
    std::vector<decltype(&cell.Rows)> sums{&cell.Rows};
    for (auto* control : {&cell.Enable, &cell.Clock, &cell.ClockEnable, &cell.Reset, &cell.Preset,
                          &cell.SyncReset, &cell.SyncPreset})
        sums.push_back(&control->When);
    if (cell.Rows2) sums.push_back(&*cell.Rows2);
    return sums;
}

struct Chip {
    std::string Device;  // mnemonic
    std::string Mode;
    int Pins = 0;
    std::vector<Macrocell> Cells;  // all of the mode, in the order of the device library
};

struct ChipResult {
    std::optional<Chip> Found;
    std::vector<Message> Messages;  // codes 74..tc
};

// What the fuses make of the device. The mode is the first one whose fixed fuses they have. A map that ends
// before the user signature is as good as a whole one.
ChipResult ReadBack(const fit::Device& device, const std::vector<bool>& fuses);

}  // namespace proof
