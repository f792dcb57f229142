#include <map>

#include "front/Netlist.h"
#include "front/Outputs.h"

namespace front {

namespace {

std::string_view DirectionName(PortDirection direction) {
    switch (direction) {
        case PortDirection::In:
            return "INPUT";
        case PortDirection::Out:
            return "OUTPUT";
        default:
            return "INOUT";
    }
}

std::string Port(std::string_view name, PortDirection direction) {
    return " (port " + std::string(name) + " (direction " + std::string(DirectionName(direction)) + "))";
}

// One cell for each kind that the design uses.
std::string Primitives(const Netlist& netlist) {
    std::map<std::string, const NetCell*> kinds;
    for (const NetCell& cell : netlist.Cells) kinds.emplace(cell.Kind, &cell);
    std::string text = "  (external PRIMITIVES (edifLevel 0) (technology (numberDefinition))\r\n";
    for (const auto& [kind, cell] : kinds) {
        text += "    (cell " + kind + " (cellType GENERIC) (view NETLIST (viewType NETLIST) (interface";
        for (const auto& [port, net] : cell->Inputs) text += Port(port, PortDirection::In);
        text += Port(cell->OutputPort, PortDirection::Out) + ")))\r\n";
    }
    return text + "  )\r\n";
}

std::string Nets(const Netlist& netlist) {
    std::map<std::string, std::string> joined;
    for (const NetPort& port : netlist.Ports) joined[port.Net] += " (portRef " + port.Name + ")";
    for (const NetCell& cell : netlist.Cells) {
        joined[cell.Output] += " (portRef " + cell.OutputPort + " (instanceRef " + cell.Name + "))";
        for (const auto& [port, net] : cell.Inputs)
            joined[net] += " (portRef " + port + " (instanceRef " + cell.Name + "))";
    }
    std::string text;
    for (const auto& [net, ports] : joined) text += "        (net " + net + " (joined" + ports + "))\r\n";
    return text;
}

}  // namespace

std::string EdifText(const Design& design) {
    const Netlist netlist = MakeNetlist(design, false);
    std::string text =
        "(edif " + netlist.Name + " (edifVersion 2 0 0) (edifLevel 0) (keywordMap (keywordLevel 0))\r\n";
    text += Primitives(netlist);
    text += "  (library DESIGNS (edifLevel 0) (technology (numberDefinition))\r\n    (cell " + netlist.Name +
            " (cellType GENERIC) (view NETLIST (viewType NETLIST)\r\n      (interface\r\n";
    for (const NetPort& port : netlist.Ports) text += "       " + Port(port.Name, port.Direction) + "\r\n";
    text += "      )\r\n      (contents\r\n";
    for (const NetCell& cell : netlist.Cells)
        text += "        (instance " + cell.Name + " (viewRef NETLIST (cellRef " + cell.Kind +
                " (libraryRef PRIMITIVES))))\r\n";
    text += Nets(netlist) + "      )))\r\n  )\r\n";
    return text + "  (design " + netlist.Name + " (cellRef " + netlist.Name +
           " (libraryRef DESIGNS)))\r\n)\r\n";
}

}  // namespace front
