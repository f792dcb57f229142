#pragma once

#include "model/Message.h"

namespace proof {

using model::Message;
using model::MessageEntry;
using model::Severity;

// Families: 73 reading a fuse file, 74 the fuses in their device, 75 the proof.
inline constexpr MessageEntry kMessages[] = {
    {"7300tc", Severity::Error, "Not a fuse file", "The file holds no fields of a JEDEC file.",
     "Choose the .JED file that the compiler or another tool wrote."},
    {"7301tc", Severity::Error, "Fuse file is cut", "It ends within a field, or before its end of text.",
     "Get the whole file."},
    {"7302tc", Severity::Error, "Field of the fuse file is not valid",
     "The field has a wrong form, or a number beyond what the file tells.", "Write the fuse file anew."},
    {"7303tc", Severity::Error, "Fuse file beyond its limits", "There are too many fuses, vectors or fields.",
     "Check that it is the fuse file of one device."},
    {"7304tc", Severity::Warning, "Checksum of the fuse file differs",
     "The file was changed after it was written, or copied with other line ends.",
     "Get the file anew, or compare its fuses with the device's."},
    {"7305tc", Severity::Warning, "Fuse file lacks a part", "The reader goes on without it.",
     "Write the fuse file anew if there is doubt about it."},
    {"7306tc", Severity::Warning, "Field of the fuse file is left out", "The reader does not know it.",
     "Fields of other tools tell nothing of the fuses."},
    {"7400tc", Severity::Error, "Fuse map is not of this device", "The number of fuses differs.",
     "Name the device that the fuse map was made for."},
    {"7401tc", Severity::Error, "Fuses fit no mode of the device",
     "The fuses that choose the mode have values that the device does not know.",
     "Name the device that the fuse map was made for."},
    {"7500tc", Severity::Information, "Fuse map proved",
     "The fuses do what the equations say, for all values.", "Vectors test the programmed device itself."},
    {"7501tc", Severity::Error, "Fuse map is not the design", "The fuses do something else.",
     "Compile the design anew. If the compiler itself says so, tell its makers; no fuse map is left."},
    {"7502tc", Severity::Warning, "Not proved within the bound", "The equations are too large to compare.",
     "Simulate the design with vectors."},
    {"7503tc", Severity::Warning, "FUSE statements change what the design does",
     "The fuses that they set are not those of the equations.", "Check the numbers and values."},
};
using MessageCode = model::MessageCode<kMessages>;

}  // namespace proof
