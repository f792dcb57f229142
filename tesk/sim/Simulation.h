#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "sim/AbsFile.h"
#include "sim/SiFile.h"
#include "sim/Streams.h"

// The whole of a simulation: what the simulator's kernel calls between reading and writing files.
namespace sim {

struct SimulationOptions {
    bool Listing = false;  // "l": the numbered .SI text with its messages stands in the .SO
    bool Append = false;   // "j": the vectors go into the .JED
};

// Letters that are no option are passed over.
SimulationOptions ParseOptions(std::string_view letters);

// What was read of a design and its vectors.
struct Checked {
    AbsResult Abs;
    SiResult Si;  // of a design that is not to be used the head alone
    bool Ok() const { return Abs.Ok() && Si.Ok(); }
};

// Takes any bytes. The steps of the vectors go to `steps`.
Checked Check(std::string_view abs, Source& si, Sink& steps);

// Where a simulation writes.
struct SimulationOutputs {
    Sink& So;      // always
    Sink& Vcd;     // nothing if nothing was simulated
    Spool& Aside;  // while it goes on
    // Told now and then: how many vectors are through.
    std::function<void(std::size_t vectors)> Progress;
};

struct SimulationResult {
    std::string Jed;                // empty: leave the file as it is
    std::vector<Message> Messages;  // in the order in which they came up; `FileExtension` tells their file
    std::size_t Errors = 0;
    std::size_t Warnings = 0;
    std::size_t Vectors = 0;
    std::size_t Mismatches = 0;
};

// Runs the steps that the check gave, one by one, unless it found errors. `si` is read for the listing alone.
// `jedec` is the text that the vectors are appended to, empty if there is none.
SimulationResult Simulate(const Checked& checked, Source& steps, Source& si, std::string_view jedec,
                          const SimulationOptions& options, const SimulationOutputs& outputs);

}  // namespace sim
