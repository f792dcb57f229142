#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "logic/Cover.h"
#include "proof/Chip.h"

// Whether a chip does what a design says: each function of each name, by covers.
namespace proof {

using model::Input;

// A name of the design and where it is in the device.
struct Name {
    std::string Text;
    int Place = 0;  // pin, or the number of a macrocell; 0: nowhere, as nodes that nothing reads
    bool Node = false;
    // Its pin is low while it is asserted; of a node: the pin of its macrocell would be.
    bool ActiveLow = false;
    RegisterKind Register = RegisterKind::None;
};

// A column of a cover, in asserted states: a name's register, or the pin of one without. `Pin`: of a register
// its pin.
struct Column {
    std::size_t Name = 0;
    bool Pin = false;
};

// What the equations want of a name, anything where `DontCare` holds. Covers of one output, disjoint.
struct Wanted {
    std::size_t Name = 0;
    Input To = Input::Out;
    std::vector<Column> Columns;
    logic::Cover On;
    logic::Cover DontCare;
};

struct Equations {
    std::vector<Name> Names;
    std::vector<Wanted> Functions;  // at most one a name and input
};

struct Finding {
    std::string Subject;  // the name
    std::string Text;     // "Q0.D, pin 19: the fuses give 1, the equations 0 at A=1 B=0"
};

struct Verdict {
    std::vector<Finding> Differences;
    std::vector<std::string> Open;  // functions that are too large to compare, or without a place: "Q0.D"
    std::size_t Compared = 0;       // functions that are the same

    bool Proved() const { return Differences.empty() && Open.empty(); }
};

// In cube operations, for each function: some milliseconds.
inline constexpr std::uint64_t kProofBound = 4'000'000;

// A register may be reset or preset without an equation where the device does it to all of them and another
// one asks for it; clocks are compared where the equations tell them. Between D and T registers the state
// makes the difference. JK and RS registers must have been made of these.
Verdict Prove(const Equations& design, const Chip& chip, std::uint64_t bound = kProofBound);

// The level that each node has in the macrocell, where nothing tells it: what leaves the fewest differences.
void SettleNodes(Equations& design, const Chip& chip);

// The verdict for a message list: 75..tc. `setsFuses`: FUSE statements have a say in the map.
std::vector<Message> Tell(const Verdict& verdict, const Chip& chip, bool setsFuses);

}  // namespace proof
