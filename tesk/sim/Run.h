#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "sim/Machine.h"
#include "sim/SiFile.h"

namespace sim {

// One vector as it went, repeats singly.
struct VectorRecord {
    std::size_t Number = 0;  // from 1
    bool Simulated = true;   // false between $SIMOFF and $SIMON
    std::string Given;       // test values, one a column
    std::string Found;       // the same with what the simulation computed for L H Z and *
    std::string Notes;       // lines that stand before it, $MSG texts and trace, each ended CR LF
};

struct RunResult {
    std::size_t Vectors = 0;
    std::string LastNotes;  // behind the last vector
    std::size_t Mismatches = 0;
    MessageLog Messages;
};

// Gives the next step; false at the end.
using Steps = std::function<bool(Step& step)>;

// Columns whose expected value was not found.
std::vector<std::size_t> MismatchesOf(const VectorRecord& record);

// What is told while the vectors run.
struct Observers {
    // After each step of a vector, with the time in nanoseconds; a vector takes 100.
    std::function<void(std::uint64_t time, const Machine& machine)> Waves;
    // After each vector.
    std::function<void(const VectorRecord& record)> Vector;
};

// Runs the vectors in order; `columns` are the nets of their test values. A vector sets its inputs (C to 0, K
// to 1), then pulses C and K, then compares. What a value does at a pin that can be driven: 0 1 drive it; X
// makes an input unknown; P and * leave an input as it is; all else releases the pin. A vector with P loads
// the registers at its 0 and 1 instead of driving them. `mostWork` bounds the work, see Machine.
RunResult RunVectors(const AbsDesign& design, const std::vector<std::size_t>& columns, const Steps& steps,
                     const Observers& observers, std::uint64_t mostWork = Machine::DefaultWork);

}  // namespace sim
