#pragma once

#include <vector>

#include "cpld/Macrocell.h"

namespace test {

// A programmed device: its configuration, the levels that are given to its pads, and the registers' states.
// It knows switches, cascades and foldbacks, and asks the macrocells for the rest.
class Chip {
  public:
    Chip(const cpld::Device& device, const cpld::Configuration& configuration);

    std::vector<bool> Given;   // of each pad, where no macrocell drives it
    std::vector<bool> States;  // of each macrocell

    // Lets all come to rest; false if that does not happen.
    bool Settle();
    bool Level(std::size_t pad) const;
    const cpld::CellOutputs& Of(std::size_t cell) const { return outputs_[cell]; }

  private:
    bool ValueOf(const cpld::Signal& signal) const;
    bool Holds(const cpld::Term& term, const cpld::Block& block, std::size_t index) const;
    cpld::CellInputs InputsOf(std::size_t cell) const;

    const cpld::Device& device_;
    const cpld::Configuration& configuration_;
    std::vector<cpld::CellOutputs> outputs_;
};

}  // namespace test
