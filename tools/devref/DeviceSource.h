#pragma once

#include <string>
#include <string_view>
#include <vector>

// The readable source of the device catalogue: lines of a keyword and what belongs to it. Blank lines and
// lines that begin with # are passed over.
//
//   PACKAGE DIP                                      a package type
//   MANUFACTURER TI Texas Instruments                a word for the lines below, the name
//   LIBRARY compiler The compiler's library          the same
//   MNEMONIC P16L8 20 compiler                       name, pins (- if not known), libraries that carry it
//   OPTIONS text                                     of the mnemonic before it, as all that follow
//   RELATED P16R4 P16R6                              mnemonics of this file
//   PINS 1-9 I, 10 GND                               numbers and function; all lines together name every pin
//   NOTE text                                        a line of the notes
//   DEVICE TI | DIP PLCC | TIBPAL16L8 | TIBPAL16L8-7C
//                                                    manufacturer, packages, name, alternate part numbers
namespace devref {

struct Pin {
    int Number;
    std::string Function;
};

struct Mnemonic {
    std::string Name;
    int Pins = -1;  // -1: not known
    std::string SpecialOptions;
    std::vector<int> Libraries;  // keys, as everywhere here: from 1 in the order of the file
    std::vector<std::string> Related;
    std::vector<Pin> PinList;
    std::string Notes;  // lines parted by CR LF
};

struct Device {
    std::string Name;
    int Manufacturer;
    int Package;
    int Mnemonic;
    std::vector<std::string> AlternatePartNumbers;
};

struct Catalogue {
    std::vector<std::string> Packages;
    std::vector<std::string> Manufacturers;
    std::vector<std::string> Libraries;
    std::vector<Mnemonic> Mnemonics;
    std::vector<Device> Devices;  // one for each package
};

// Throws std::runtime_error with the line's number for what it does not understand or what does not hold
// together.
Catalogue ReadCatalogue(std::string_view text);

}  // namespace devref
