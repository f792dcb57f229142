#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

// The VHDL option string VhdlFlags: flags of "-" and a letter without blanks between them, some with a
// number. One table drives parser, writer, record and window.
namespace toolchain {

// The option record: it outlives the window frmVhdl, but for the numbers, which start anew at each parsing.
struct VhdlOptions {
    std::int16_t Analyze = 0;
    std::int16_t Pinnodes = 0;
    std::int16_t Sync = 0;
    std::int16_t Clock = 0;
    std::int16_t Force = 0;
    std::int16_t Product = 0;
    std::int16_t And = 0;
    std::int16_t Optimize = 0;
    std::int16_t CreateLog = 0;
    std::int16_t Display = 0;
    std::int16_t CloseWindow = 0;  // row of CloseWindowTable
};

enum class VhdlTab { Synthesis, Debug };

// How the value of a flag is read and shown.
enum class VhdlKind {
    Box,     // on or off
    Number,  // of at most two digits when it is read; a text box with arrows
    Level,   // one digit; a text box whose arrows go through 0, 3 and 5
    Choice,  // one digit; option buttons
};

// One flag, in the order of writing.
struct VhdlOption {
    std::string_view Flag;
    VhdlKind Kind;
    std::int16_t VhdlOptions::*Field;
    VhdlTab Tab;
    const char* Control;
    const char* UpDown;  // the arrows of a number, empty for none
    const char* Caption;
    const char* Tip;
    std::int16_t Start;  // of a number or choice
};

std::span<const VhdlOption> VhdlOptionTable();

struct CloseWindowOption {
    const char* Control;
    const char* Caption;
    const char* Tip;
};

inline constexpr CloseWindowOption CloseWindowTable[] = {
    {"optNever", "Never Close", "User must close the VHDL window"},
    {"optSuccess", "Close On Success", "Close VHDL window if no errors are found"},
    {"OptAlways", "Always Close", "Close VHDL compiler window in all cases"},
};

// Gives the numbers their start values, then sets the fields of the flags found; a field of a box is never
// cleared. Passes over what it doesn't know. A number that is none is error 13.
void ParseVhdlFlags(std::string_view flags, VhdlOptions& options);

std::string WriteVhdlFlags(const VhdlOptions& options);

// The text of a number after a step of its arrows, `step` 1 or -1. A text that is no number is error 13.
std::string StepVhdlNumber(VhdlKind kind, const std::string& text, int step);

}  // namespace toolchain
