#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "convert/PldFile.h"
#include "dis/Names.h"
#include "dis/Programmed.h"

namespace dis {

using FuseList = std::vector<std::pair<std::size_t, bool>>;

// The names of a design made from a programmed device.
class Naming {
  public:
    // Pins without a name of their own are called P and their number.
    Naming(const Programmed& chip, const PinNames& names);

    struct Pin {
        std::string Name;
        bool ActiveLow = false;
    };
    const Pin& At(int pin) const { return pins_.at(pin); }
    const std::string& OfCell(std::size_t cell) const { return cells_.at(cell); }
    const std::map<int, Pin>& Pins() const { return pins_; }  // all that the design declares

  private:
    std::map<int, Pin> pins_;
    std::map<std::size_t, std::string> cells_;  // live ones
};

struct TextOptions {
    bool Minimize = false;
    FuseList Fuses;
};

// Completes a design, whose header is given, with declarations, equations and FUSE statements. Sums are
// those of the rows, term by term, and the compiler is told to leave them so; with `Minimize` as short as
// they can be.
std::string DesignText(convert::PldFile file, const Programmed& chip, const Naming& naming,
                       const TextOptions& options);

}  // namespace dis
