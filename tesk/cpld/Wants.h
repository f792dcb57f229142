#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cpld/Algebra.h"
#include "cpld/Messages.h"
#include "fit/Needs.h"

// What a design asks of the macrocells, before anything is known of places: D registers and latches alone,
// with synchronous resets and needless clock enables in their data.
namespace cpld {

using fit::RegisterKind;

// Something that has a name: a signal of the design, or a buried function that the fitter adds behind them.
struct Name {
    std::string Text;
    bool Drives = false;    // it is at a pin as an output
    bool Driven = false;    // it needs a macrocell
    bool Low = false;       // its pin is low while it is asserted
    bool Register = false;  // read without .IO it is a register, else its pin
    // The pin is what the macrocell gives, always: either of them can be read.
    bool Plain = true;
    bool Read = false;      // by anyone
    std::size_t Parts = 0;  // buried functions that were added for it
    std::size_t State = 0;  // whose register is read for it: its own index, or that of an added name
    std::optional<std::size_t> Place;  // pad, or macrocell of a name without a pin, if it is fixed
};

// One macrocell's task in asserted states of its name.
struct Want {
    std::size_t Owner = 0;                       // index into the names
    RegisterKind Register = RegisterKind::None;  // None, D or Latch
    // The function, or for a register when it changes; at least one of them, a missing one is made where it
    // can be.
    std::optional<Sum> On, Toggle;
    std::optional<fit::Sides> Sides;  // the same function as an exclusive or that is to be kept
    Sum Clock;
    std::optional<Sum> ClockEnable;
    Sum Reset, Preset;          // asynchronous, of the asserted state
    std::optional<Sum> Enable;  // of the output; nothing: always
};

struct Wants {
    std::vector<Name> Names;
    std::vector<Want> All;
    std::vector<fit::Function> Implied;  // clocks that were added
    std::vector<Message> Messages;
};

// `clockInput` is the signal at the pin that clocks registers without a clock of their own, if there is one.
Wants WantsOf(const fit::Needs& needs, std::optional<std::size_t> clockInput);

// Adds a buried function for a name, told by its number behind it. Gives its index.
std::size_t AddPart(std::vector<Name>& names, std::size_t owner);

}  // namespace cpld
