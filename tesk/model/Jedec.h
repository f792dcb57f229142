#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

// How a JEDEC file (JESD3-C) writes what fitter and simulator put into it.
namespace model {

inline constexpr char StartOfText = 2;
inline constexpr char EndOfText = 3;

std::string FuseNumber(std::size_t fuse);      // at least five digits
std::string VectorNumber(std::size_t vector);  // at least four
std::string Checksum(unsigned sum);            // four hexadecimal digits, modulo 65536

// A note of a JEDEC file (field N) on a name that the design does not place: "PIN 19 Q0", or "NODE 17 !STATE"
// for a node whose macrocell would have its pin low while it is asserted.
struct PlaceNote {
    int Place = 0;
    bool Node = false;
    bool Low = false;
    std::string Name;
};
std::string WritePlaceNote(const PlaceNote& note);
std::optional<PlaceNote> ReadPlaceNote(std::string_view text);  // nothing if it is another note

// The text from its start (STX) to its end (ETX), with the transmission checksum and a line end behind it.
std::string Transmission(std::string text);

}  // namespace model
