#pragma once

#include "cpld/Configuration.h"
#include "cpld/Messages.h"
#include "fit/Fitter.h"

// Fits a design into a complex device: macrocells, terms, switches and globals for its equations.
namespace cpld {

struct FitOptions {
    bool JtagPins =
        false;  // the JTAG pins are ordinary ones; the device can't be programmed in circuit again
    std::vector<std::size_t> OpenDrain;  // signals that drive low alone: their pins are read as pins
    // About so many changes of the arrangement are tried before it is given up.
    std::size_t Steps = 240'000;
    // Told where the design does not fit; they take as long again.
    bool Hints = true;
    const Device* Larger = nullptr;
};

// A macrocell at work.
struct Occupied {
    std::size_t Cell = 0;   // from 0
    std::string Name;       // of the signal; of a buried part of one "Q0.1"
    std::size_t Terms = 0;  // of its sum
    std::size_t Own = 0;    // of them in the macrocell; the others come by cascade
    std::size_t Rows = 1;   // macrocells with those of the cascade, which end with Cell
    bool Low = false;       // it gives the complement of the name's asserted state
};

// Where a signal of the design went.
struct Place {
    int Pin = 0;                      // 0: none
    std::optional<std::size_t> Cell;  // of its function, from 0
    char PowerUp = 'X';               // asserted state of its register, 'X' if it has none
};

struct Fit {
    Configuration Result;
    DesignNames Names;
    std::vector<Place> Places;  // one a signal
    std::vector<Occupied> Cells;
    // What the device adds to the equations: clocks by the pin CLK1 where the design names none.
    std::vector<fit::Function> Implied;
    std::vector<Message> Messages;  // codes 78..tc
    std::size_t Steps = 0;          // that the search took

    bool Ok() const { return !model::HasErrors(Messages); }
};

// `package` is a suffix ("P44"), empty: the device's first. The same on every run.
Fit FitDesign(const Device& device, const std::string& package, const fit::Design& design,
              const FitOptions& options);

}  // namespace cpld
