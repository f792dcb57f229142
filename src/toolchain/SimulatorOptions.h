#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

// The simulator option string SimulatorFlags: single letters. One table drives parser, writer and window.
namespace toolchain {

struct SimulatorOptions {  // 0 off, 1 on
    std::int16_t Listing = 0;
    std::int16_t Append = 0;
    std::int16_t Display = 0;
};

// One letter, in the order of writing.
struct SimulatorOption {
    char Token;
    std::int16_t SimulatorOptions::*Field;
    const char* Control;
    const char* Caption;
    const char* Tip;
};

std::span<const SimulatorOption> SimulatorOptionTable();

// Passes over letters that it doesn't know.
SimulatorOptions ParseSimulatorFlags(std::string_view flags);

std::string WriteSimulatorFlags(const SimulatorOptions& options);

}  // namespace toolchain
