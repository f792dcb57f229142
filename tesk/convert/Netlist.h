#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "convert/Tokens.h"

// Schematic netlists of standard gates and flip-flops.
namespace convert {

struct Part {
    std::string Reference;  // "U1"
    std::string Type;       // "74LS00"
    int Line = 0;
    std::map<std::string, std::string> Nets;  // by pin number or name, upper case
};

struct Netlist {
    std::string Name;
    std::vector<Part> Parts;
    std::set<std::string> Ports;  // nets that lead out of the design
};

// Both throw Failure.
Netlist ReadEdif(std::string_view text);
Netlist ReadProtel(std::string_view text);

// A cell of the library: pins by number, and equations between their names as the design language writes
// them.
struct CellEquation {
    std::string Target;     // a pin's name, or a word for inside the cell
    std::string Extension;  // "D", "CK"; empty: combinational
    std::vector<Token> Value;
};
struct Cell {
    std::map<std::string, std::string> Pins;  // number to name
    std::vector<CellEquation> Equations;
};

// Views go into the text. Throws Failure.
class CellLibrary {
  public:
    explicit CellLibrary(std::string_view text);

    // By the part's type, its maker's letters, family, speed and package left out; null if there is none.
    const Cell* Find(std::string_view type) const;

  private:
    std::map<std::string, Cell> cells_;
};

// Reads the formulas of cells.
const Language& CellLanguage();

}  // namespace convert
