#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// What the front end itself wants to know of a source: its units, and the pins that attributes give.
namespace net {

enum class Tongue { Vhdl, Verilog };

struct Unit {
    std::string Name;  // as written; VHDL in lower case
    bool HasPorts = false;
    bool IsUsed = false;  // by another unit of the text
};

// Entities or modules, in their order. The text may be wrong: what is no unit is passed over.
std::vector<Unit> UnitsOf(std::string_view text, Tongue tongue);

// The unit to start from: the only one with ports that no other uses, else the one with the file's name.
// Nothing if that does not tell; `candidates` are the ones to choose from.
std::optional<std::string> TopOf(const std::vector<Unit>& units, std::string_view fileName,
                                 std::vector<std::string>& candidates);

using Pins = std::map<std::string, std::vector<int>>;  // by port, lower case; a bit as "q(3)"

// Numbers as attributes and pin files write them: "14", "P14", "14, 15,16". Empty if it is none, or if one
// is not from 1 to 1024.
std::vector<int> PinNumbers(std::string_view text);

// Of the attributes chip_pin, loc and pinnum.
Pins AttributePins(std::string_view text, Tongue tongue);

// The VHDL text with blanks for what gives attributes to something: synthesis can't take all of them. Every
// other character keeps its place.
std::string WithoutAttributes(std::string text);

// The file beside the source, NAME-PINS.TXT.
struct PinFile {
    std::string Top, Device;
    net::Pins Pins;
    std::vector<int> BadLines;  // from 1
};
PinFile ReadPinFile(std::string_view text);

}  // namespace net
