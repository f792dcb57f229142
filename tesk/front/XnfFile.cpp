#include <array>

#include "front/Netlist.h"
#include "front/Outputs.h"

namespace front {

namespace {

// Ports of the netlist's cells and of the format's symbols.
struct PortName {
    std::string_view Ours;
    std::string_view Theirs;
};
constexpr std::array kPorts{PortName{"CK", "C"}, PortName{"LE", "G"}, PortName{"AR", "RD"},
                            PortName{"AP", "SD"}};

// "AND3" is an AND, "DFF_CK_AR" a DFF; the pins tell the rest.
std::string SymbolOf(const std::string& kind) {
    if (kind.starts_with("DFF")) return "DFF";
    if (kind.starts_with("LATCH")) return "DLAT";
    if (kind == "TRI") return "TBUF";
    return kind.substr(0, kind.find_first_of("0123456789"));
}

std::string_view PortOf(std::string_view port) {
    for (const PortName& entry : kPorts)
        if (entry.Ours == port) return entry.Theirs;
    return port;
}

std::string CellText(const NetCell& cell) {
    if (cell.Kind == "VCC" || cell.Kind == "GND")
        return "PWR, " + std::string(cell.Kind == "VCC" ? "1" : "0") + ", " + cell.Output + "\r\n";
    std::string text = "SYM, " + cell.Name + ", " + SymbolOf(cell.Kind) + "\r\n";
    for (const auto& [port, net] : cell.Inputs) {
        // The enable of the format's three-state buffer is low when it drives.
        const bool enable = cell.Kind == "TRI" && port == "OE";
        text += "PIN, " + std::string(enable ? "T" : PortOf(port)) + ", I, " + net +
                (enable ? ",, INV" : "") + "\r\n";
    }
    return text + "PIN, " + cell.OutputPort + ", O, " + cell.Output + "\r\nEND\r\n";
}

}  // namespace

std::optional<std::string> XnfText(const Design& design) {
    for (const Equation& equation : design.Equations)
        if (equation.To == Extension::SR || equation.To == Extension::SP) return std::nullopt;
    const Netlist netlist = MakeNetlist(design, true);
    std::string text = "LCANET, 4\r\nPROG, Tesk, 5.0\r\n";
    for (const NetCell& cell : netlist.Cells) text += CellText(cell);
    for (const NetPort& port : netlist.Ports) {
        const std::string_view direction = port.Direction == PortDirection::In    ? "I"
                                           : port.Direction == PortDirection::Out ? "O"
                                                                                  : "B";
        text += "EXT, " + port.Net + ", " + std::string(direction) +
                (port.Pin > 0 ? ",, LOC=P" + std::to_string(port.Pin) : "") + "\r\n";
    }
    return text + "EOF\r\n";
}

}  // namespace front
