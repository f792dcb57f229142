#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "proof/MessageTable.h"

// JEDEC fuse files (JESD3-C) as they are found. A transmission is STX, the design specification up to its
// first "*", fields each ended by "*", ETX, four digits of its checksum.
namespace proof {

// A field as it stands in the text, from behind the "*" before it to its own, blanks around it taken off.
struct JedecField {
    std::size_t At = 0;     // where it begins in the text, blanks included
    std::string_view Text;  // without its "*"
    std::int32_t Line = 1;  // of its first character
};

struct JedecVector {
    std::size_t Number = 0;
    // A condition a pin, in the order of P, else from pin 1 on: digits, B C D F H K L N P U X Z (R, S and T
    // vectors are left out).
    std::string Conditions;
    std::int32_t Line = 0;
};

struct JedecLimits {
    static constexpr std::size_t FileBytes = 32u << 20;
    static constexpr std::size_t Fuses = 4u << 20;
    static constexpr std::size_t Vectors = 65'535;
    static constexpr std::size_t Pins = 1024;
    static constexpr std::size_t Messages = 50;
};

struct JedecFile {
    std::string Specification;       // the free text before the first field, bytes as found; may be empty
    std::vector<std::string> Notes;  // texts of the N fields, bytes as found, without the N
    std::size_t Pins = 0;            // QP; 0: not told
    // QF; 0: not told, and `Fuses` goes as far as the L fields. See `FuseMap`.
    std::size_t FuseCount = 0;
    std::vector<bool> Fuses;            // what no L field tells is `Default`
    bool Default = false;               // F
    std::size_t Told = 0;               // fuses that L fields tell
    std::optional<bool> Secure;         // G
    std::string Electrical;             // text behind E
    std::string UserData;               // text behind U
    std::string Identification;         // text behind J
    std::vector<std::size_t> PinOrder;  // P: the pin of each place in a vector; empty: 1, 2, 3 …
    char OpenCondition = '\0';          // X: '0' or '1', of inputs that a vector leaves open; 0: not told
    std::vector<JedecVector> Vectors;   // ascending numbers; of equal ones the last
    std::vector<Message> Messages;      // codes 73..tc, with their lines

    bool Ok() const { return !model::HasErrors(Messages); }
    // The fuses for a device of so many: a map without QF is filled up with `Default`. One that tells another
    // number stays as it is.
    std::vector<bool> FuseMap(std::size_t count) const;
};

// The fields of a text and its specification, without a look into them.
struct JedecFrame {
    std::size_t Start = 0;  // behind STX; 0 without one
    std::size_t End = 0;    // of ETX; the size of the text without one
    bool HasStart = false;
    bool HasEnd = false;
    std::string_view Specification;  // empty if the first field follows at once
    std::vector<JedecField> Fields;
    std::string_view Rest;      // behind the last "*", before the end: blanks, or a field that is cut
    std::int32_t RestLine = 1;  // where it begins behind blanks
};
JedecFrame FrameOf(std::string_view text);

// Takes any bytes. Errors (the file is not to be used): no fields, cut, fields that are not valid, limits.
// Warnings: checksums that are missing or differ, a missing frame or QF, fields that are not known.
JedecFile ReadJedec(std::string_view text);

}  // namespace proof
