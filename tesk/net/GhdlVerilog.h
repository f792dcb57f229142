#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// What ghdl writes, mended so that it means what the source does.
namespace net {

// By signal the value for all other choices, in the VHDL that ghdl writes, as Verilog has it.
std::map<std::string, std::string> DefaultsOf(std::string_view vhdl);

struct GhdlVerilog {
    std::string Text;
    std::map<std::string, std::string> SignalNames;  // the signals behind ghdl's registers
    std::vector<std::string> Lost;                   // signals whose value is unknown at all times
    std::vector<std::string> Constant;               // signals that never leave their initial value
};

// The Verilog that ghdl writes lacks the value for all other choices of a case, which it gets back; gives
// signals that are no registers an initial value, which breaks their loops; and drives two-way ports that
// nothing drives. Nothing if the value for all other choices is not known.
std::optional<GhdlVerilog> AdaptedVerilog(std::string_view text,
                                          const std::map<std::string, std::string>& defaults);

// Whether a Verilog text has values that are off (1'bz), or may have in a file that it includes.
bool MayBeOff(std::string_view verilog);

}  // namespace net
