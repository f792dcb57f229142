#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

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

// Sum of the fuses in groups of eight, the first one the least significant bit; modulo 65536.
std::uint16_t FuseChecksum(const std::vector<bool>& fuses);

// A fuse map on its way to a file. Characters of its texts that the format reserves or does not have ("*",
// codes below 32 and above 126) become "?".
struct JedecMap {
    std::string Device;  // "Fitted to": with what is to be said of its use
    std::vector<std::pair<std::string, std::string>> Header;  // keyword and text of the design's, in order
    std::vector<std::string> Notes;                           // N fields
    int Pins = 0;
    bool Secure = false;  // G1: the security fuse is to be programmed
    std::vector<bool> Fuses;
    // The fuses before the first number stand in lines of as many as the second says, and so on; those behind
    // the last one in lines of 64.
    std::vector<std::pair<std::size_t, std::size_t>> Lines;
};

// The map as JESD3-C: STX, design specification with the header, QP, QF, N, G, F0, L fields (rows that hold a
// 1), C fuse checksum, ETX, transmission checksum. Lines end CR LF.
std::string WriteJedec(const JedecMap& map);

}  // namespace model
