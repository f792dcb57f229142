#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "front/Design.h"

namespace front {

// A cell of the netlist: AND2, OR3, INV, BUF, TRI (I, OE, O), VCC, GND, and registers, whose names and ports
// tell what they have: DFF_CK_AR has D, CK, AR and Q.
struct NetCell {
    std::string Kind;
    std::string Name;
    std::vector<std::pair<std::string, std::string>> Inputs;  // port, net
    std::string OutputPort;
    std::string Output;  // net
};

enum class PortDirection { In, Out, InOut };
struct NetPort {
    std::string Name;
    std::string Net;
    PortDirection Direction = PortDirection::In;
    int Pin = 0;
};

struct Netlist {
    std::string Name;
    std::vector<NetPort> Ports;  // at pin level: what is active low is inverted inside
    std::vector<NetCell> Cells;
};

// The equations as gates and registers. With `onlyD` the registers are D flip-flops and latches, the others
// made of these and gates.
Netlist MakeNetlist(const Design& design, bool onlyD);

// A name that netlists take: letters, digits, "_", a letter first.
std::string IdentifierOf(std::string_view name);

}  // namespace front
