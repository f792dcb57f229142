#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "fit/Device.h"
#include "model/Register.h"

// Fits a design into a device: pins and macrocells for names, polarities, and the fuse map.
//
// Everything is told in asserted states: a name declared with "!" is 1 while its pin is low.
namespace fit {

using model::Input;
using model::InputCount;
using model::RegisterKind;

struct Literal {
    std::size_t Signal = 0;  // index into Design::Signals
    bool Negated = false;
    bool Pin = false;  // .IO; else the register of a registered signal, the pin of any other
    bool operator==(const Literal&) const = default;
    // Both senses of a variable are neighbours.
    auto operator<=>(const Literal& other) const {
        return std::tie(Signal, Pin, Negated) <=> std::tie(other.Signal, other.Pin, other.Negated);
    }
};
using Term = std::vector<Literal>;  // a product; empty: always true
using Sum = std::vector<Term>;      // empty: constant 0

// The sides of an exclusive or, each with its complement.
struct Sides {
    Sum Left, NotLeft;
    Sum Right, NotRight;
};

// Give both sums, minimised, where it can be done: the fitter needs the complement for active-low outputs and
// for the choice of polarity. A missing one is made from the other, with absorption only.
struct Function {
    std::size_t Signal = 0;
    Input To = Input::Out;
    std::optional<Sum> True;   // of the function
    std::optional<Sum> False;  // of its complement
    // The design was written for the complement ("!Y = …"), see Polarity. The compiler never sets it, for it
    // has made asserted states of all equations; kept for callers that fit equations as they are written.
    bool Inverted = false;
    // The function as an exclusive or: taken by the macrocells that have one, before a single sum.
    std::optional<Sides> Xor = std::nullopt;
};

struct Signal {
    std::string Name;
    int Pin = 0;             // pin, or macrocell of a PINNODE; 0: the fitter chooses
    bool ActiveLow = false;  // declared with "!"; not looked at for nodes
    bool Node = false;       // NODE or PINNODE: it needs a macrocell, no pin
    RegisterKind Register = RegisterKind::None;
};

struct Design {
    std::vector<Signal> Signals;
    std::vector<Function> Functions;                  // at most one a signal and input
    std::vector<std::pair<std::size_t, bool>> Fuses;  // FUSE statements: number, value; they come last
};

// Which sum goes into the rows where the macrocell leaves a choice.
enum class Polarity {
    Natural,     // the sum as written: the function, or its complement if that is all there is or `Inverted`
    Best,        // "kb": the sum with fewer terms
    Complement,  // "kd": the other one than `Natural`
};

struct Options {
    Polarity Choose = Polarity::Natural;
    // Of shared terms that are not used: their fuses to the outputs are taken away, too ("d").
    bool DropUnused = false;
};

// What the rows of a macrocell with an exclusive or hold.
enum class Exclusive {
    None,      // a single sum
    Constant,  // a single sum in the other sense, and true
    Sides,     // the sides of the function
};

// Where a signal went.
struct Placement {
    int Pin = 0;  // 0: nowhere (`virtual` without a number, or a signal that nothing needs)
    UseKind Use = UseKind::Input;
    bool Complemented = false;  // the rows hold the complement of the function
    bool PolarityHigh = true;   // the pin carries the sum of the rows
    std::size_t Used = 0;       // product terms, shared ones among them, without the one of the output enable
    std::size_t Available = 0;  // 0 for inputs and for `virtual`
    // Of an exclusive or. Which of its sides are complemented in the rows: the left one, and the right one if
    // that does not give what `Complemented` tells.
    fit::Exclusive Exclusive = fit::Exclusive::None;
    bool LeftComplemented = false;
    char PowerUp = 'X';  // asserted state of its register at power-up: '0' or '1'; 'X' if not known
};

struct Fit {
    std::string Mnemonic;
    std::string Mode;                   // name of the mode, empty for `virtual`
    std::vector<Placement> Placements;  // one a signal
    std::vector<bool> Fuses;            // the fuse map; empty for `virtual` and with errors
    // What the device adds to the equations, for the simulation: CK of registers on the clock pin, OE of
    // outputs on the enable pin, AR or AP and SP or SR that all registers share. `True` is set.
    std::vector<Function> Implied;
    std::vector<Message> Messages;  // codes 72..tc

    bool Ok() const { return !model::HasErrors(Messages); }
};

// The modes are tried in their order; the first one that takes the design is used. If none does, the errors
// are those of the mode with the fewest. Indices in the design must be in range.
Fit FitDesign(const Device& device, const Design& design, const Options& options);

// A device of the library that takes a design which does not fit `instead`: of the same kind (first letter)
// and pins before others, the smaller ones first. Null if there is none, or if it can't be told in short
// time.
const Device* FindOther(const Library& library, const Device& instead, const Design& design,
                        const Options& options);

}  // namespace fit
