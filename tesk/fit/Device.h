#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fit/MessageTable.h"

// clang-format off
// The device library (Fullset.dl, tesk.dl): a text, words parted by blanks, ";" begins a comment.
//
//   TESK-DL 1                   the first line: format and version
//   DEVICE G16V8 20 2194        mnemonic, pins, fuses; its record goes on to the next DEVICE
//   POWER 10 20                 ground and supply pin
//   SIGNATURE 2056 64           first fuse and number of user signature fuses
//   MODE complex 32             a way to use the device: name, columns of the AND array
//   TERMS 48 40                 terms that outputs share: number, fuses of each with those of the outputs behind it
//   SET 2192 1 2                fuses that the mode fixes: first, value, number (1 if left out)
//   ROWS 2128                   fuse of row 0 of the array, those of the other rows behind it: 0 takes a row out
//   INPUT 2 0                   an input pin and the column of its true line; the next one is its complement
//   CLOCK 1                     pin that clocks the registers at its rising edge
//   ENABLE 11                   pin that enables registered outputs while it is low
//   RESET 0                     row of the asynchronous reset of all registers
//   PRESET 131                  row of their synchronous preset
//   PRELOAD 1                   pin that loads the registers from outside; no input of the array
//   CELL 18 6 2049              a macrocell: pin, column of its feedback or -, polarity fuse or low or high; with
//                               !2049 the fuse has the other sense. A number above the pins is a buried one,
//                               for nodes
//   USE input 2121=1            a use of the macrocell, and the fuses that choose it
//   USE output 9 7 8 pin 2121=1     first row, product terms, enable, feedback, fuses
//   USE register 8 8 pin level      the same of a use with its register
//   USE register 0 2 pin level xor=2*2    of one that takes the exclusive or of two sums: first row and terms of
//                               the second one
//   USE register 4 4 0&pin pin clock=1 reset=2 preset=3    rows of the register's own
//   USE output 0 48 pin none or=32     of the rows those whose fuse 32, counted in the row, is 0
//   DEVICE G16V8MA LIKE G16V8 complex   the modes named of a device before it; without names all of them
//   END                         the last line
//
// Enable is the row of the output enable, `always`, `pin` for that of ENABLE, or a row and that pin: `0&pin`.
// Feedback is none, pin, level, notsum or sum, see FeedbackKind. A run of fuses is `80=1*40`. Fuses are numbered as
// in the device's JEDEC map; row r of the array begins at r times the columns. A fuse of value 0 connects. A row
// whose fuses all are 0 is false, one whose fuses all are 1 is true. With a polarity fuse of 1 (or `high`) a pin
// carries the sum, with 0 (or `low`) its complement. Macrocells may share the rows of their sum, all of them or
// none: each pin has its own polarity. A buried one is always enabled and leads back its level or `notsum`.
// clang-format on
namespace fit {

enum class UseKind { Input, Output, Register };
enum class EnableKind { None, Always, Pin, Row };

enum class FeedbackKind {
    None,
    Pin,     // what is at the pin
    Level,   // the register, as the level that it gives to the pin; the register's state 0 is pin high. Of a
             // buried output its level
    NotSum,  // the complement of the register, which takes the sum itself: polarity comes behind it
    Sum,     // the register, which takes the sum itself
};

struct FuseRun {
    std::size_t First = 0;
    bool Value = false;
    std::size_t Count = 1;
};

struct CellUse {
    UseKind Kind = UseKind::Input;
    std::size_t FirstRow = 0;
    std::size_t Terms = 0;
    std::size_t XorRow = 0;    // the second sum of an exclusive or,
    std::size_t XorTerms = 0;  // 0: the use has none
    EnableKind Enable = EnableKind::None;
    std::size_t EnableRow = 0;
    bool EnableAndPin = false;  // with Row: the mode's enable pin must be low, too
    FeedbackKind Feedback = FeedbackKind::None;
    bool StoresSum = false;  // the register takes the sum itself; else its state 0 is pin high
    std::vector<FuseRun> Fuses;
    // The register's own, -1: none. It is clocked by the rising edge of the row; reset makes it 0, preset 1,
    // both asynchronous; while both are true its D input goes through. Its state 0 is pin high.
    int ClockRow = -1;
    int ResetRow = -1;
    int PresetRow = -1;
    // Of a use of shared terms: the fuse, counted from the first one of a row, that leads the row to the
    // macrocell while it is 0. -1: all its rows are its own.
    int OrFuse = -1;

    bool HasOwnRows() const { return ClockRow >= 0; }
    // Of its sums, the row behind the last one.
    std::size_t EndRow() const { return std::max(FirstRow + Terms, XorRow + XorTerms); }
    // Whether two uses of different macrocells have the same sum, and whether their rows get into each
    // other's way. Rows that a fuse each leads to macrocells are no one's.
    bool SharesSum(const CellUse& other) const;
    bool Collides(const CellUse& other) const;
};

enum class PolarityKind { Fuse, Low, High };

struct Cell {
    int Pin = 0;      // above the device's pins: buried
    int Column = -1;  // -1: no feedback
    PolarityKind Polarity = PolarityKind::Fuse;
    std::size_t PolarityFuse = 0;
    bool HighFuse = true;  // its value with which the pin carries the sum
    std::vector<CellUse> Uses;
};

struct Mode {
    std::string Name;
    std::size_t Columns = 0;
    std::size_t SharedTerms = 0;  // the first rows; macrocells choose of them, see CellUse::OrFuse
    std::size_t TermFuses = 0;    // of a shared term: its columns, and a fuse for each macrocell
    std::vector<FuseRun> Fuses;
    std::optional<std::size_t> RowSwitch;     // fuse of row 0; none: rows can't be taken out
    std::vector<std::pair<int, int>> Inputs;  // pin, column
    int ClockPin = 0;                         // 0: none
    int EnablePin = 0;                        // 0: none
    int ResetRow = -1;
    int PresetRow = -1;
    int PreloadPin = 0;  // 0: none
    std::vector<Cell> Cells;

    std::size_t RowFuses(std::size_t row) const { return row < SharedTerms ? TermFuses : Columns; }
    std::size_t FirstFuse(std::size_t row) const;
    std::size_t RowCount(std::size_t fuses) const;  // of a device with as many fuses
    bool PinEnables(UseKind kind) const;            // the enable pin has a part in the enable of such uses
    // Whether some use has what is asked for.
    template <class Test>
    bool AnyUse(const Test& test) const {
        return std::any_of(Cells.begin(), Cells.end(), [&](const Cell& cell) {
            return std::any_of(cell.Uses.begin(), cell.Uses.end(), test);
        });
    }
    bool IsRowSwitch(std::size_t fuse) const {
        return RowSwitch && fuse >= *RowSwitch && fuse - *RowSwitch < Rows();
    }
    std::size_t Rows() const;           // of the array
    const Cell* CellAt(int pin) const;  // null if the pin has none
    int InputColumn(int pin) const;     // -1 if the pin is no dedicated input
};

struct Device {
    std::string Mnemonic;
    int Pins = 0;  // 0: a device without limits (`virtual`)
    std::size_t Fuses = 0;
    int GroundPin = 0;
    int SupplyPin = 0;
    FuseRun Signature;
    std::vector<Mode> Modes;  // in the order in which they are tried

    bool IsVirtual() const { return Modes.empty(); }
};

struct Library {
    std::vector<Device> Devices;
    std::vector<Message> Messages;  // faults, codes 71..tc

    bool Ok() const { return !model::HasErrors(Messages); }
    const Device* Find(std::string_view mnemonic) const;  // in any case of letters; null if it is not there
};

// What the reader takes; more is an error.
struct LibraryLimits {
    static constexpr std::size_t FileBytes = 8u << 20;
    static constexpr std::size_t Devices = 2000;
    static constexpr std::size_t Modes = 8;    // of a device
    static constexpr std::size_t Cells = 256;  // of a mode
    static constexpr std::size_t Uses = 8;     // of a macrocell
    static constexpr int Pins = 512;
    static constexpr std::size_t Fuses = 262'144;
    static constexpr std::size_t Messages = 50;
};

// Takes any bytes. A library without errors holds together: pins, rows, columns and fuses in range.
Library ReadLibrary(std::string_view text);

}  // namespace fit
