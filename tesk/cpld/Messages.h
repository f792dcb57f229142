#pragma once

#include "model/Message.h"

namespace cpld {

using model::Message;
using model::MessageEntry;
using model::Severity;

// Family 78: fitting into complex devices.
inline constexpr MessageEntry kMessages[] = {
    {"7800tc", Severity::Error, "Design does not fit the device",
     "No arrangement of the macrocells was found.",
     "The message tells what ran out. Leave pins to the fitter, or choose the larger device."},
    {"7801tc", Severity::Error, "Too many macrocells",
     "The equations need more macrocells than the device has.",
     "Each macrocell has five product terms; larger equations take several. Reduce them or choose the larger "
     "device."},
    {"7802tc", Severity::Error, "Too many pins", "More names are at pins than the package has for signals.",
     "Choose a larger package, or make outputs that are not needed outside nodes."},
    {"7803tc", Severity::Error, "Pin can't be used so",
     "The package has no such pin for signals, or it can't do what the design asks.",
     "See the chip diagram of the device. The JTAG pins stay free so that the device can be programmed "
     "again."},
    {"7804tc", Severity::Error, "Two names at one place", "A pin and a macrocell carry one name each.",
     "Change one of the numbers."},
    {"7805tc", Severity::Error, "Name is never set",
     "An output, node or register has no equation of its own.",
     "Add the equation, or declare the name as an input by leaving its extensions out."},
    {"7806tc", Severity::Error, "Register has no clock",
     "It has no .CK or .LE equation, and no input is declared at the pin CLK1.",
     "Add the equation, or declare the clock at the pin that the message names."},
    {"7808tc", Severity::Error, "Equation is too large",
     "Its complement or exclusive or takes too many terms.", "Split the equation by a node."},
    {"7809tc", Severity::Error, "Extension that the device lacks", "The macrocells have no such function.",
     "Choose a device that has it, or write the function into the equations."},
    {"7810tc", Severity::Error, "Too few switches",
     "A block brings 40 signals in, each by one of a few switches; the equations of one block read more.",
     "Leave pins to the fitter, or choose the larger device."},
    {"7811tc", Severity::Error, "No such package", "The device is not made in it.",
     "The message tells the packages of the device."},
    {"7812tc", Severity::Error, "Fuses can't be forced", "FUSE statements hold for simple devices only.",
     "Remove the statement."},
};
using MessageCode = model::MessageCode<kMessages>;

}  // namespace cpld
