#include "fit/Message.h"

#include <algorithm>

namespace fit {

const std::vector<MessageEntry>& MessageTable() {
    constexpr auto error = Severity::Error;
    constexpr auto warning = Severity::Warning;
    static const std::vector<MessageEntry> table{
        {"7100tc", error, "Error in the device library", "The library can't be used.",
         "Install the device library again."},
        {"7101tc", error, "Not a device library of this version", "The first line names another format.",
         "Install the device library again."},
        {"7102tc", error, "Record of the device library is not valid", "The library was changed or cut.",
         "Correct the line, or install the device library again."},
        {"7103tc", error, "Device library beyond its limits",
         "There are too many records, or numbers too high.",
         "Correct the line, or install the device library again."},
        {"7104tc", error, "Device library without its end", "The file was cut.",
         "Install the device library again."},
        {"7200tc", error, "Design does not fit the device", "A name can't be placed.",
         "Choose another pin or device, or change the equations."},
        {"7201tc", error, "Too many product terms", "The macrocell has fewer than the equation needs.",
         "The message tells which reduction fits: m2, m4, MIN or kb. Else take another pin or split the "
         "equation."},
        {"7202tc", error, "Pin can't be used so",
         "The device has no such pin, or it can't do what the design asks.",
         "See the chip diagram of the device for its inputs, outputs and special pins."},
        {"7203tc", error, "Extension that the device lacks", "The macrocells have no such function.",
         "Choose a device that has it, or write the function into the equations."},
        {"7204tc", error, "Two names at one pin", "A pin carries one name.",
         "Change one of the pin numbers."},
        {"7205tc", error, "No pin left", "All pins that could take the name are used.",
         "Free a pin, or choose a larger device."},
        {"7206tc", error, "No feedback",
         "The equations read a name whose macrocell does not lead back to the array.",
         "Move the name to a macrocell with feedback."},
        {"7207tc", error, "Clock does not fit", "All registers of the device are clocked by one pin.",
         "Give the clock the pin that clocks the registers, or leave the extension out."},
        {"7208tc", error, "Output enable does not fit", "The output enable is more than the device can do.",
         "A macrocell has one product term, the enable pin, or no output enable at all."},
        {"7209tc", error, "Reset or preset does not fit",
         "All registers of the device share one product term for it.",
         "Give all registers the same reset and preset of one product term."},
        {"7210tc", error, "No such fuse", "The device has fewer fuses.", "Correct the FUSE statement."},
        {"7211tc", warning, "Register shares the reset or preset of the others",
         "The device has one product term for all registers.",
         "Give the register the same equation, or expect that it changes with the others."},
        {"7212tc", error, "Equation is too large to complement", "The output is active-low by nature.",
         "Minimise the equation, or declare the output with the other polarity."},
        {"7213tc", error, "Name is never set", "An output or register has no equation of its own.",
         "Add the equation, or declare the name as an input by leaving its extensions out."},
    };
    return table;
}

std::string MessageData() {
    std::string text;
    for (const auto& entry : MessageTable()) {
        text += std::string(entry.Code) + " " + std::string(entry.Message) + "\r\n";
        text += entry.Level == Severity::Error ? "Error. " : "Warning. ";
        text += std::string(entry.Description) + "\r\n" + std::string(entry.Information) + "\r\n";
    }
    return text;
}

Message MakeMessage(std::string_view code, std::string_view subject, std::string_view detail, int line) {
    const auto& table = MessageTable();
    const auto found =
        std::find_if(table.begin(), table.end(), [&](const auto& e) { return e.Code == code; });
    const auto& entry = found == table.end() ? table[5] : *found;
    std::string text(entry.Message);
    if (!detail.empty()) text += ": " + std::string(detail);
    return {std::string(entry.Code), entry.Level, line, std::string(subject), text};
}

bool HasErrors(const std::vector<Message>& messages) {
    return std::any_of(messages.begin(), messages.end(),
                       [](const auto& m) { return m.Level == Severity::Error; });
}

}  // namespace fit
