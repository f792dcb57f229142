#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "model/Header.h"
#include "model/Register.h"
#include "sim/MessageLog.h"

// The .ABS file: a compiled design as the simulator takes it. Text, lines end CR LF (LF is read as well), one
// record a line, words parted by blanks, keywords in upper case:
//
//   TESK-ABS 1                                       the first line: format and version
//   HEADER Name Counter                              keyword of the design header, its text
//   DEVICE G16V8 20                                  mnemonic, pins of the package (0: none, no limits)
//   NET CLK 1 INPUT HIGH NONE 0                      name, pin (0: none), kind, level, register, power-up
//   NET Q0 19 OUTPUT LOW D 0
//   FIELD COUNT Q3 Q2 Q1 Q0                          name, members, most significant first
//   FUNCTION Q0 D POSITIVE                           net, input (OUT: combinational), sense of the sum
//   TERM !Q0 UP                                      a product of literals of the function above
//   TERM Q1.IO                                       .IO the pin, .DQ the register, else see `Feedback`
//   END                                              the last line; what follows is not read
//
// Kinds: INPUT OUTPUT BIDIRECTIONAL NODE. Levels: HIGH, or LOW for a name declared with "!". Registers: NONE
// D T JK RS LATCH. A TERM without literals is always true; a FUNCTION without TERM is constant 0 (POSITIVE)
// or 1 (NEGATIVE: the net gets the complement of the sum).
//
// All functions and literals are in asserted states, as in the equations: a name declared with "!" is 1 while
// its pin is low. Only the pin itself carries the complement.
namespace sim {

using model::Input;
using model::RegisterKind;

enum class NetKind { Input, Output, Bidirectional, Node };

// Which value of the net a literal stands for.
enum class Feedback {
    Default,   // the register of a registered net; else the pin if there is one, else the function
    Pin,       // .IO
    Register,  // .DQ; part of the format, though the compiler writes none
};

struct Literal {
    std::size_t Net = 0;  // index into AbsDesign::Nets
    Feedback From = Feedback::Default;
    bool Negated = false;
    bool operator==(const Literal&) const = default;
};

using Term = std::vector<Literal>;  // the product; empty: always true

struct Function {
    std::size_t Net = 0;
    Input To = Input::Out;
    bool Negative = false;    // the net gets the complement of the sum
    std::vector<Term> Terms;  // the sum; empty: constant 0
    bool operator==(const Function&) const = default;
};

struct Net {
    std::string Name;  // letters, digits, "_"; 1 to 63 characters
    int Pin = 0;       // from 1; 0: no pin
    NetKind Kind = NetKind::Input;
    bool ActiveLow = false;
    RegisterKind Register = RegisterKind::None;
    char PowerUp = '0';  // the register's asserted state at power-up: '0', '1' or 'X'
    bool operator==(const Net&) const = default;
};

struct Field {
    std::string Name;
    std::vector<std::size_t> Members;  // most significant first
    bool operator==(const Field&) const = default;
};

struct AbsDesign {
    // Header keywords as in model::headerWords, and their texts.
    std::map<std::string, std::string> Header;
    std::string Device;  // mnemonic, "virtual" for none
    int PinCount = 0;    // of the package; 0 if it has none
    std::vector<Net> Nets;
    std::vector<Field> Fields;
    std::vector<Function> Functions;
    bool operator==(const AbsDesign&) const = default;
};

// What a reader takes; more is an error.
struct AbsLimits {
    static constexpr std::size_t Nets = 4096;
    static constexpr std::size_t Fields = 1024;
    static constexpr std::size_t Functions = 16384;
    static constexpr std::size_t Terms = 100'000;
    static constexpr std::size_t Literals = 1'000'000;
    static constexpr std::size_t FileBytes = 32u << 20;
    static constexpr int Pin = 1024;
};

// The same text for the same design. Line ends and other control characters of header texts become blanks.
std::string WriteAbs(const AbsDesign& design);

struct AbsResult {
    AbsDesign Design;
    MessageLog Messages;
    bool Ok() const { return Messages.Errors() == 0; }
};

// Takes any bytes. Every fault is an error with its line (codes 01..va); the design is then not to be used.
// A design that comes back without errors holds together: indices in range, names and functions unique, each
// function one that its net's kind and register can have.
AbsResult ReadAbs(std::string_view text);

}  // namespace sim
