#pragma once

#include "model/Message.h"

namespace dis {

using model::Message;
using model::MessageEntry;
using model::Severity;

// Family 76: source out of a fuse map.
inline constexpr MessageEntry kMessages[] = {
    {"7600tc", Severity::Error, "Device unknown", "The device library has no fuse map of this device.",
     "Name a mnemonic of docs/devices.md."},
    {"7601tc", Severity::Error, "No device has as many fuses",
     "The fuse map is of a device that the library lacks, or not whole.", "Check where the file comes from."},
    {"7602tc", Severity::Error, "Several devices have as many fuses",
     "The file does not say which of them the fuse map is for.", "Name the device with -d."},
    {"7603tc", Severity::Error, "File of names not understood",
     "A line has not one pin number and one name, a number or a name stands twice, or the design has errors.",
     "Mend the file; the form of its lines is told by teskdis --help."},
    {"7604tc", Severity::Warning, "Text does not give the same fuses",
     "The language has no words for what these fuses do.",
     "Compare the equations with the fuse map before you use them."},
    {"7605tc", Severity::Information, "Security fuse is set", "A design cannot say that.",
     "Compile with option g to set it again."},
    {"7606tc", Severity::Information, "Rows without effect are left out",
     "They are false, disabled, or feed a macrocell that neither drives its pin nor is read.",
     "The design does the same without them."},
    {"7607tc", Severity::Warning, "Test conditions left out", "The simulator has no words for them.",
     "Complete the vectors in the .SI."},
    {"7608tc", Severity::Warning, "Macrocell not understood",
     "The fuses that choose its use have values that the device does not know; it is left out.",
     "Check that the fuse map is for this device."},
    {"7609tc", Severity::Information, "Written", "The files that came out, and the device.",
     "Without -o they stand beside the fuse map."},
    {"7610tc", Severity::Error, "File cannot be read or written", "It is missing, protected, or too large.",
     "Check its name and rights."},
    {"7611tc", Severity::Error, "The result would replace a file", "It may be the design that you look for.",
     "Name the result with -o."},
    {"7612tc", Severity::Warning, "Rows are completed by FUSE statements",
     "No equation gives these fuses: a sum beside a term that is always true, or a line that the device "
     "library does not know. The simulation knows nothing of them.",
     "Look whether they matter; without the statements the rows are those of the equations."},
};
using MessageCode = model::MessageCode<kMessages>;

}  // namespace dis
