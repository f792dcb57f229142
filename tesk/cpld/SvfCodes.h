#pragma once

#include <cstddef>

// What the devices understand through their JTAG port.
namespace cpld {

inline constexpr std::size_t instructionBits = 10, identificationBits = 32, configBits = 10, addressBits = 11;

enum Instruction : unsigned {
    instIdCode = 0x059,
    instConfig = 0x280,
    instRead = 0x28C,
    instData = 0x290,  // and the area, address / 256
    instProgramErase = 0x29E,
    instAddress = 0x2A1,
    instLatchErase = 0x2B3,
};

inline constexpr unsigned configEnable = 0x1B9, configDisable = 0;

// What is programmed last, in this order: the word of the arming switch, that of JTAG pins and read
// protection.
inline constexpr std::size_t armingAddress = 256, protectionAddress = 512;

}  // namespace cpld
