#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "dis/MessageTable.h"
#include "fit/Device.h"
#include "proof/Chip.h"

namespace dis {

// A device with its fuses, and what of it has an effect.
struct Programmed {
    const fit::Device* Device = nullptr;
    const fit::Mode* Mode = nullptr;
    std::vector<bool> Fuses;
    proof::Chip Chip;
    std::vector<bool> Live;        // macrocells that drive a pin or are read by such; idle outputs are none
    std::size_t DisabledRows = 0;  // by fuses of their own; `Fuses` has them false

    const proof::Macrocell& At(std::size_t cell) const { return Chip.Cells[cell]; }
    // The macrocell of a pin, if it is live.
    std::optional<std::size_t> LiveAt(std::size_t pin) const;
    // The pin is low where the sum of the rows is true.
    bool ActiveLow(std::size_t cell) const { return At(cell).Inverted != At(cell).PinInverted; }
    bool IsInArray(std::size_t fuse) const;
};

// Nothing, with messages, if the fuses choose no mode of the device.
std::optional<Programmed> ReadProgrammed(const fit::Device& device, std::vector<bool> fuses,
                                         std::vector<Message>& messages);

// The sum of a macrocell with its terms in their rows: a false row before the last term repeats a term, which
// changes nothing. Terms that macrocells share are sorted, for the compiler gives them their rows. `second`:
// of its second sum.
proof::Sum InPlace(const Programmed& chip, std::size_t cell, bool second);

// Fuses that have an effect, or are told of nothing that has none, and are others in a compiled map: those of
// rows that are not false, and those that are in no row and choose no use of a macrocell. With their wanted
// values. `withFalse`: those of false rows, too.
std::vector<std::pair<std::size_t, bool>> Differences(const Programmed& chip,
                                                      const std::vector<bool>& compiled, bool withFalse);

// Rows that are connected and have no effect.
std::size_t RowsWithoutEffect(const Programmed& chip);

}  // namespace dis
