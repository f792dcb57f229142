#pragma once

#include <vector>

#include "cpld/Configuration.h"
#include "proof/Chip.h"

// What a configuration makes of the device, as functions of pins and registers.
namespace cpld {

// A macrocell has up to three values that others can read; each that is read has a cell of its own in the
// chip.
enum class Part { Exclusive, Register, Foldback };  // behind the exclusive or; the state; the literal MCx_FLB

struct CellPart {
    Part Of = Part::Exclusive;
    std::size_t Macrocell = 0;
};

struct ChipOfParts {
    proof::Chip Chip;
    // What the chip's cells are: first the part of each macrocell that its pin shows, or that is fed back
    // where the pin is not driven, then those others that are read; these have no number (Node 0).
    std::vector<CellPart> Parts;
};

// The number of a macrocell whose pin is not driven, among the pins of the package.
int NodeOf(const Package& package, std::size_t cell);

// The pad without a pin has a number behind all of these, so that what reads it finds who drives it. Signals
// at ground are 0. Outputs with an open drain are told as others. A macrocell at a JTAG pin does not drive
// it. One whose PT5 would have no place (VCC_pt5, with pt5_func oe but pt5_mux sum) is told as not known.
ChipOfParts ReadBack(const Device& device, const Package& package, const Configuration& configuration);

}  // namespace cpld
