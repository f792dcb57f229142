#include "sim/Message.h"

namespace sim {

// Families: 00 any stage, 01 the .ABS file, 02 the .SI file, 03 the simulation, 04 the vectors for the fuse
// file.
const std::vector<MessageEntry>& MessageTable() {
    constexpr auto error = Severity::Error;
    static const std::vector<MessageEntry> table{
        {"0001vs", Severity::Information, "Further messages are left out", "The list of messages is full.",
         "Correct the messages above first; the counts go on to the end."},
        {"0100va", error, "Error in the absolute file", "The .ABS file can't be used.",
         "Compile the design again with the option Absolute."},
        {"0101va", error, "Not an absolute file of this version", "The first line names another format.",
         "Compile the design again with the option Absolute."},
        {"0102va", error, "Unknown or malformed record in the absolute file",
         "The .ABS file was changed or cut.", "Compile the design again with the option Absolute."},
        {"0103va", error, "Name not known or not valid in the absolute file",
         "The .ABS file was changed or cut.", "Compile the design again with the option Absolute."},
        {"0104va", error, "Name given twice in the absolute file", "The .ABS file was changed or cut.",
         "Compile the design again with the option Absolute."},
        {"0105va", error, "Function that its net can't have in the absolute file",
         "Kind or register of the net do not take this function.",
         "Compile the design again with the option Absolute."},
        {"0106va", error, "Absolute file beyond the limits of the simulator",
         "The design is too large to simulate.",
         "At most 4096 nets, 1024 fields, 16384 functions, 100000 terms and 1000000 literals."},
        {"0107va", error, "Absolute file without its end", "The file was cut.",
         "Compile the design again with the option Absolute."},
    };
    return table;
}

}  // namespace sim
