#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "front/Extension.h"
#include "front/Place.h"
#include "front/Property.h"
#include "front/Syntax.h"
#include "logic/Cover.h"

// The design as the later stages and the outputs take it: variables, and an equation for each variable and
// extension as a cover. All of it is in asserted states: a variable declared with "!" is 1 while its pin is
// low.
namespace front {

struct Variable {
    std::string Name;
    VariableKind Kind = VariableKind::Intermediate;
    int Number = 0;  // pin or macrocell; 0: none, the fitter chooses
    bool ActiveLow = false;
    // None: combinational. D, T, J (JK), R (RS) or L: what kind of register its equations ask for.
    Extension Register = Extension::None;
    std::vector<Extension>
        BuiltFrom;          // of a D register: the inputs of the design that its D input stands for
    bool Assigned = false;  // has an equation for the bare name or a register input
    char PowerUp = '0';     // asserted state of the register at power-up: '0', '1' or 'X'
    int Minimization = -1;  // level that MIN asks for, -1: the run's
    Place At;
};

// A column of covers: the value of a variable where it is used. `Pin` marks .IO of a registered variable;
// else it is the register, or for a combinational variable and an input the pin.
struct Signal {
    int Variable = 0;
    bool Pin = false;
    bool operator==(const Signal&) const = default;
};

struct Equation {
    int Variable = 0;
    Extension To = Extension::None;  // None: the combinational output
    std::vector<int> Inputs;         // the columns: indices into Design::Signals, ascending
    logic::Cover On;                 // one output
    logic::Cover DontCare;           // of the same layout, disjoint from On
    logic::Cover Off;                // the reduced complement, if HasOff
    bool HasOff = false;             // for real devices and where polarities were to be chosen
    bool Inverted = false;           // Off is the cover to realize, inverted behind it
    std::vector<Equation> Sides;     // the same as an exclusive or: its two sides; empty: not known as one
    int Level = 1;                   // minimization asked for
    int Available = -1;              // product terms that the macrocell has, -1: no limit
    Place At;

    const logic::Cover& Chosen() const { return Inverted ? Off : On; }
    // Product terms that a macrocell needs for it.
    std::size_t Terms() const {
        return Sides.empty() ? Chosen().Size() : Sides[0].Chosen().Size() + Sides[1].Chosen().Size();
    }
};

struct Field {
    std::string Name;
    std::vector<int> Members;  // variables, most significant first
};

struct Fuse {
    int Number = 0;
    int Value = 0;
    Place At;
};

struct Property {
    PropertyKind Kind = PropertyKind::Slew;
    int Value = 0;
    std::vector<int> Variables;  // empty: all, or the device
    Place At;
};

struct Design {
    front::Header Head;
    std::string Device;               // mnemonic; "virtual" has no limits
    int PinCount = 0;                 // of the package, 0 for `virtual`
    std::vector<Variable> Variables;  // in the order of declaration
    std::vector<Signal> Signals;
    std::vector<Equation> Equations;  // by variable, then by extension
    std::vector<Equation> Written;    // the same before reduction; empty for `virtual`
    std::vector<Field> Fields;
    std::vector<Fuse> Fuses;
    std::vector<Property> Properties;

    const Variable& Of(const Signal& signal) const {
        return Variables[static_cast<std::size_t>(signal.Variable)];
    }
    const Variable& Of(const Equation& equation) const {
        return Variables[static_cast<std::size_t>(equation.Variable)];
    }
    std::string SignalName(int signal) const;                  // "Q0", "Q0.IO"
    std::string EquationName(const Equation& equation) const;  // "Q0", "Q0.D"
};

}  // namespace front
