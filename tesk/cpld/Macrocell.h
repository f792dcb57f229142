#pragma once

#include <array>

#include "cpld/Configuration.h"

// What a macrocell does: one function from its options, its terms and its state.
namespace cpld {

struct CellInputs {
    std::array<bool, CellTerms> Terms{};  // PT1 to PT5
    bool Cascade = false;                 // of the macrocell before it in the block, false for the first
    bool State = false;                   // of the register
    bool Pad = false;                     // the level at its pad
    bool GlobalClear = false;             // as the inverters give them
    std::array<bool, ClockCount> Clocks{};
    std::array<bool, EnableCount> Enables{};
    bool ClockBefore = false;  // CellOutputs::Clock when the state was taken
};

struct CellOutputs {
    bool Sum = false;        // of the terms that go there, with the cascade
    bool Exclusive = false;  // behind the exclusive or and the inverter
    bool Cascade = false;
    bool Foldback = false;  // what the literal of its foldback is true of
    bool Data = false;      // of the register
    bool Clock = false;     // a flip-flop takes its rising edge, a latch is open while it is true
    bool ClockEnable = false;
    bool Reset = false, Set = false;
    bool Next = false;  // the state then; of a reset and a set the reset wins
    bool Output = false, OutputEnabled = false;
    bool Feedback = false;
};

CellOutputs Evaluate(const Cell& cell, const CellInputs& in);

// The state at power-up, which makes the pin of a complemented register begin as that of another one.
inline bool PowerUpState(const Cell& cell) { return cell.Invert == Switched::Off; }

}  // namespace cpld
