#pragma once

#include "model/Message.h"

namespace fit {

using model::Message;
using model::MessageEntry;
using model::Severity;

// Families: 71 the device library, 72 fitting.
inline constexpr MessageEntry kMessages[] = {
    {"7100tc", Severity::Error, "Error in the device library", "The library can't be used.",
     "Install the device library again."},
    {"7101tc", Severity::Error, "Not a device library of this version",
     "The first line names another format.", "Install the device library again."},
    {"7102tc", Severity::Error, "Record of the device library is not valid",
     "The library was changed or cut.", "Correct the line, or install the device library again."},
    {"7103tc", Severity::Error, "Device library beyond its limits",
     "There are too many records, or numbers too high.",
     "Correct the line, or install the device library again."},
    {"7104tc", Severity::Error, "Device library without its end", "The file was cut.",
     "Install the device library again."},
    {"7200tc", Severity::Error, "Design does not fit the device", "A name can't be placed.",
     "Choose another pin or device, or change the equations."},
    {"7201tc", Severity::Error, "Too many product terms", "The macrocell has fewer than the equation needs.",
     "The message tells which reduction fits: m2, m4, MIN or kb. Else take another pin or split the "
     "equation."},
    {"7202tc", Severity::Error, "Pin can't be used so",
     "The device has no such pin, or it can't do what the design asks.",
     "See the chip diagram of the device for its inputs, outputs and special pins."},
    {"7203tc", Severity::Error, "Extension that the device lacks", "The macrocells have no such function.",
     "Choose a device that has it, or write the function into the equations."},
    {"7204tc", Severity::Error, "Two names at one pin", "A pin carries one name.",
     "Change one of the pin numbers."},
    {"7205tc", Severity::Error, "No pin left", "All pins that could take the name are used.",
     "Free a pin, or choose a larger device."},
    {"7206tc", Severity::Error, "No feedback",
     "The equations read a name whose macrocell does not lead back to the array.",
     "Move the name to a macrocell with feedback."},
    {"7207tc", Severity::Error, "Clock does not fit", "All registers of the device are clocked by one pin.",
     "Give the clock the pin that clocks the registers, or leave the extension out."},
    {"7208tc", Severity::Error, "Output enable does not fit",
     "The output enable is more than the device can do.",
     "A macrocell has one product term, the enable pin, or no output enable at all."},
    {"7209tc", Severity::Error, "Reset or preset does not fit",
     "All registers of the device share one product term for it.",
     "Give all registers the same reset and preset of one product term."},
    {"7210tc", Severity::Error, "No such fuse", "The device has fewer fuses.", "Correct the FUSE statement."},
    {"7211tc", Severity::Warning, "Register shares the reset or preset of the others",
     "The device has one product term for all registers.",
     "Give the register the same equation, or expect that it changes with the others."},
    {"7212tc", Severity::Error, "Equation is too large to complement", "The output is active-low by nature.",
     "Minimise the equation, or declare the output with the other polarity."},
    {"7213tc", Severity::Error, "Name is never set", "An output or register has no equation of its own.",
     "Add the equation, or declare the name as an input by leaving its extensions out."},
    {"7214tc", Severity::Warning, "Reset and preset may meet",
     "While both are true the register of this device is none: its D input goes through.",
     "Keep one of the terms false while the other is true."},
    {"7215tc", Severity::Error, "Too many product terms together",
     "All outputs of the device take theirs from the same ones; equal terms count once.",
     "Reduce with ks, so that outputs have terms in common, or with kb. Else split the design."},
    {"7216tc", Severity::Error, "Two functions for one sum",
     "The pins share a sum: one carries it, the other one its complement.",
     "Give both names the same equation, one of them complemented, or choose a device with a sum for each."},
};
using MessageCode = model::MessageCode<kMessages>;

}  // namespace fit
