#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// How a JEDEC file (JESD3-C) writes what fitter and simulator put into it.
namespace model {

inline constexpr char StartOfText = 2;
inline constexpr char EndOfText = 3;

std::string FuseNumber(std::size_t fuse);      // at least five digits
std::string VectorNumber(std::size_t vector);  // at least four
std::string Checksum(unsigned sum);            // four hexadecimal digits, modulo 65536

// The text from its start (STX) to its end (ETX), with the transmission checksum and a line end behind it.
std::string Transmission(std::string text);

}  // namespace model
