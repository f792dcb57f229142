#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// The netlist that synthesis leaves: gates and registers between nets, the hierarchy flattened.
namespace net {

// At most so much is read; more is refused.
inline constexpr std::size_t MaxNetlistBytes = 256u << 20;
inline constexpr std::size_t MaxNets = 4'000'000;
inline constexpr std::size_t MaxGateInputs = 64;

constexpr int NoNet = -1;

// A net that steers a register or a driver.
struct Control {
    int Net = NoNet;
    bool Inverted = false;
    bool IsThere() const { return Net != NoNet; }
};

// A sum of products: a row has '0', '1' or '-' for each input. Value: what the output is where a row holds.
struct Gate {
    int Output = NoNet;
    std::vector<int> Inputs;
    std::string Rows;  // one behind the other; those of a gate without inputs leave one character, '1'
    bool Value = true;
    int Line = 0;
};

struct Register {
    int Output = NoNet;
    int Data = NoNet;
    bool IsLatch = false;
    Control Clock;  // rising edge; of a latch its enable
    Control Enable;
    Control Reset, Preset;          // at once
    Control SyncReset, SyncPreset;  // with the clock
    bool StartsAtOne = false;
    int Line = 0;
};

struct Driver {
    int Output = NoNet;
    int Data = NoNet;
    Control Enable;
    int Line = 0;
};

struct Netlist {
    std::string Model;
    std::vector<std::string> Names;    // by net
    std::vector<int> Inputs, Outputs;  // the ports, bit 0 of a vector first; a port in both goes both ways
    std::vector<Gate> Gates;
    std::vector<Register> Registers;
    std::vector<Driver> Drivers;
};

// Reads one flat model of the Berkeley interchange format: .names, .latch, .conn and the register and driver
// cells of the synthesis as .subckt. Throws convert::Failure with the line for all else, and for a net that
// two things drive.
Netlist ReadBlif(std::string_view text);

}  // namespace net
