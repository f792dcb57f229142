#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "net/Blif.h"

// The cells that the flow leaves, by the letters of their names: "$_DFFE_PN0P_" is a register with enable,
// rising clock, reset to 0 at a low level, enabled by a high one.
namespace net {

enum class CellRole { Data, Output, Clock, Enable, Reset, Preset, SyncReset, SyncPreset };

struct CellPort {
    char Name;
    CellRole Role;
    bool Inverted = false;
};

struct CellPorts {
    bool IsDriver = false;
    bool IsLatch = false;
    std::vector<CellPort> Ports;

    const CellPort* Find(std::string_view name) const;
};

// Nothing for a cell that the flow does not leave.
std::optional<CellPorts> PortsOf(std::string_view cell);

// The control of a register for each role but data and output.
Control& ControlOf(CellRole role, Register& reg);

}  // namespace net
