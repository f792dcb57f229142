#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "sim/Message.h"

// The whole of a simulation run on texts: what the simulator's kernel calls between reading and writing
// files.
namespace sim {

struct SimulationOptions {
    bool Listing = false;  // "l": the numbered .SI text with its messages stands in the .SO
    bool Append = false;   // "j": the vectors go into the .JED
};

// Letters that are no option are passed over.
SimulationOptions ParseOptions(std::string_view letters);

struct SimulationTexts {
    std::string Abs;  // in
    std::string Si;   // in
    std::string Jed;  // in: read only with Append; empty: there is none
};

struct SimulationResult {
    std::string So;                 // always written
    std::string Vcd;                // empty if nothing was simulated
    std::string Jed;                // empty: leave the file as it is
    std::vector<Message> Messages;  // in the order in which they came up; `FileExtension` tells their file
    std::size_t Errors = 0;
    std::size_t Warnings = 0;
    std::size_t Vectors = 0;
    std::size_t Mismatches = 0;
};

// Takes any bytes; never throws but for memory.
SimulationResult Simulate(const SimulationTexts& texts, const SimulationOptions& options);

}  // namespace sim
