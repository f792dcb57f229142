#pragma once

#include "model/Message.h"

namespace net {

using model::Message;
using model::MessageEntry;
using model::Severity;

// Families: 01 the call and its files, 02 the tools of the synthesis, 03 the source, 04 what became of it,
// 05 pins.
inline constexpr MessageEntry kMessages[] = {
    {"0100vh", Severity::Error, "Source can't be read", "There is no such file, or it is too large.",
     "VHDLTesk takes the .VHD of the project, or the .V where there is no .VHD; at most 16 megabytes."},
    {"0101vh", Severity::Error, "File is not written", "The disk or its rights refused an output.",
     "See the message for the reason."},
    {"0200vh", Severity::Error, "The tools of the synthesis are not installed",
     "VHDL wants the programs ghdl and yosys, Verilog yosys alone.",
     "Install the packages: apt install ghdl yosys"},
    {"0201vh", Severity::Error, "A tool of the synthesis is too old",
     "ghdl from version 2 and yosys from version 0.10 are taken.", "Install a newer package of it."},
    {"0202vh", Severity::Error, "A tool of the synthesis ended unexpectedly",
     "The tool crashed or gave no result. This is a fault of the tool.",
     "Look into the log file (option Create Log File); write the source in another way."},
    {"0203vh", Severity::Error, "A tool of the synthesis took too long and was stopped",
     "The source is too large, or the tool hangs.", "Make the design smaller; --seconds allows more time."},
    {"0300vh", Severity::Error, "Error in the source", "The text is not right.",
     "Correct the line and compile again."},
    {"0301vh", Severity::Warning, "Warning on the source", "The text may not mean what was wanted.",
     "Read the line again."},
    {"0302vh", Severity::Error, "The source can't be synthesized",
     "The text is right, but describes no gates and registers, such as waiting for a time.",
     "Leave the construct to the test bench, or write it as registers with a clock."},
    {"0303vh", Severity::Error, "The top of the design can't be told",
     "No unit with ports, or more than one, is used by no other.",
     "Name it: a line \"top NAME\" in the -PINS.TXT beside the source, or the option --top NAME."},
    {"0304vh", Severity::Information, "No unit with ports, nothing is elaborated",
     "The text was read without errors.", "Packages and test benches become no design."},
    {"0305vh", Severity::Information, "Analysed without errors", "The source can be compiled.",
     "For a design compile without Analyze Only."},
    {"0306vh", Severity::Error, "Latch that ghdl loses",
     "The signal keeps its value without a clock. ghdl takes latches at ports and in bits of vectors, but "
     "made this signal constant.",
     "Give it a value in every branch; a latch that is meant wants an entity of its own, with a port for "
     "it."},
    {"0307vh", Severity::Warning, "Signal is constant",
     "The signal always has its initial value. If a branch leaves it without a value, it is a latch that "
     "ghdl "
     "lost.",
     "Give it a value in every branch, or leave the initial value out to be sure."},
    {"0400vh", Severity::Error, "The netlist can't become a design",
     "The synthesis left something that the compiler has no words for.", "See the message for the reason."},
    {"0401vh", Severity::Warning, "Latch",
     "The signal keeps its value without a clock: a branch gives it none.",
     "Give the signal a value in every branch, unless a latch is meant. A device without latches gets it as "
     "logic that feeds back."},
    {"0402vh", Severity::Warning, "Output without a value", "Nothing drives the port; it is 0.",
     "Give the port a value or leave it out."},
    {"0403vh", Severity::Warning, "Two-way port that never drives", "The port is taken for an input.",
     "Declare it as an input."},
    {"0404vh", Severity::Information, "Name changed", "The compiler takes letters, digits and _ for a name.",
     "The design has the second name."},
    {"0405vh", Severity::Warning, "Power-up value 1 is left to the device",
     "The register has an initial value of 1.", "Use a reset: a device powers up as it is built."},
    {"0406vh", Severity::Information, "Node", "The sum behind it was split by the limit of product terms.",
     "A higher number of Maximum Product Terms splits less."},
    {"0407vh", Severity::Information, "Inferred", "What the source became.", "No action is needed."},
    {"0408vh", Severity::Information, "Product term wider than the limit of AND inputs",
     "A term reads more signals than Maximum AND Inputs.",
     "The devices of the library take it all the same."},
    {"0409vh", Severity::Information, "Design written", "The .PLD holds the design.",
     "Edit the source, not the .PLD: the next run replaces it."},
    {"0410vh", Severity::Information, "In the source", "What the names of the message above are there.",
     "No action is needed."},
    {"0500vh", Severity::Error, "Line of the pin file is not understood",
     "A line is \"top NAME\", \"device MNEMONIC\" or \"pin NAME NUMBER[,NUMBER...]\".",
     "Comments begin with #, -- or //."},
    {"0501vh", Severity::Error, "Pin for a port that the design has not",
     "The pin file or an attribute names another port.", "Correct the name."},
    {"0502vh", Severity::Error, "Pin numbers do not fit the port",
     "A vector wants a number for each bit, the left one first.",
     "Count the numbers; they go from 1 to 1024."},
};
using MessageCode = model::MessageCode<kMessages>;

inline Message Say(MessageCode code, std::string_view detail, model::Place at = {}) {
    return model::MakeMessage(code.Entry(), at, detail);
}

}  // namespace net
