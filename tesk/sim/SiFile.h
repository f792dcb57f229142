#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "sim/AbsFile.h"
#include "sim/MessageLog.h"
#include "sim/TextLines.h"

// The .SI file: header statements (`Name Counter;` …), then in this order
//
//   ORDER: CLK, %2, COUNT, [A3..0], !Y;      columns of a vector; %n is n blanks in the listing
//   BASE: octal | decimal | hex;             for quoted values; hexadecimal if left out
//   VECTORS:                                 then one vector or $ command a line, to the end of the file
//
// Comments /* … */ stand anywhere. Keywords are the same in any case.
namespace sim {

// One entry of ORDER: blanks, or nets (most significant first) with the caption that the listing shows.
struct OrderItem {
    std::string Caption;
    std::size_t Blanks = 0;
    std::vector<std::size_t> Nets;
};

enum class StepKind { Vector, Message, Trace, SimulationOn, SimulationOff };

struct Step {
    StepKind Kind = StepKind::Vector;
    int Line = 0;      // in the .SI file
    std::string Text;  // a vector: one test value a column, quoted values made single; a message: its text
    int Number = 1;    // a vector: how often it is run; $TRACE: the level, 0 to 4
};

// What stands before the vectors.
struct SiHead {
    std::vector<OrderItem> Order;
    std::vector<std::size_t> Columns;  // the nets of ORDER, one a column
    unsigned Base = 16;
};

// What the reader takes; more is an error.
struct SiLimits {
    static constexpr std::size_t FileBytes = 1u << 30;
    static constexpr std::size_t LineBytes = TextLines::MostBytes;  // and of all lines of one statement
    static constexpr int Blanks = 80;                               // of one %n
    static constexpr int Repeat = 1'000'000;
    static constexpr std::size_t Vectors = 10'000'000;    // repeats counted
    static constexpr std::size_t Values = 1'000'000'000;  // vectors times columns
};

// The vectors that a file holds, and what is wrong in it.
struct SiResult {
    SiHead Head;
    std::size_t Vectors = 0;  // repeats counted
    MessageLog Messages;
    bool Ok() const { return Messages.Errors() == 0; }
};

// Takes any bytes. Faults are messages with their line (codes 02..va); with errors the file is not to be run.
//
// A quoted value stands for one entry of ORDER: a number in the base (X is a digit of don't-cares), or one of
// the letters C K L H Z N P * for each member (C only where it is no digit), at most 100 digits. A number
// drives inputs (0, 1) and is expected at outputs (L, H); at bidirectional members 'value' drives and "value"
// is expected.
// The steps of a file without errors go to `steps`.
SiResult CheckSi(Source& source, const AbsDesign& design, Sink& steps);

}  // namespace sim
