#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// clang-format off
// The library of complex devices (Cplds.dl): a text, words parted by blanks, ";" begins a comment. Fuses and pads
// are numbered as in the device's JEDEC map and on its die, macrocells from MC1.
//
//   TESK-CPLD 1                        the first line: format and version
//   DEVICE C1502 16808 0150203F        name, fuses, JTAG identification; its record goes on to the next DEVICE
//   BLOCK A MC1 0 0                    a block: name, first of its 16 macrocells, what is added to the first fuse of
//                                      each term and of each option
//   PADS R C1 C2 E1                    pads without a macrocell; M1 and so on belong to MC1 and so on
//   SPECIAL CLK1 C1                    a special function and its pad
//   PACKAGE T44 44 42 43 -             suffix, number of pins, the pin of each pad in order, "-": it has none
//   TERM PT1 384 96 864                first fuse for the block's first macrocell, steps to the next one, by turns
//   OPTION gclk_mux 15646,-1,-3 15647,-3,-1 GCLK2 GCLK3 - GCLK1
//                                      each fuse as in TERM; the values 0, 1, 2 … of these fuses, fuse k is bit k
//   SWITCHES 16320                     first fuse of the switches that follow
//   SWITCH A95 B95 MC1 MC4 MC19 GND C2 one in each of these blocks: column of its true literal (the complement has
//                                      the other one of the even and odd pair); the signals, each chosen by its own
//                                      fuse as the only one that is 0. All fuses 1: ground
//   CLEAR 16760=0 R                    a global: its inverter is on when the fuse has this state; its pad
//   CLOCK 16761=1 16762 2 M17 C2 - C1  the next clock: inverter, first fuse and number of fuses, the values' signals
//   ENABLE 16754=0 16720 M23 M7 GND    the enable GOE1 and so on: inverter, first fuse, signals as in SWITCH
//   SETTING pd1_pin_func 16752 pd user of the whole device: fuse, the values 0 and 1
//   SIGNATURE 16786                    first of the 16 fuses, the most significant bit first
//   ZEROS 16802 6                      reserved fuses that are 0: the first, how many. Other fuses that no line names
//                                      are reserved and 1
//   AREA 256 32                        JTAG addresses from a multiple of 256 on, and the bits of their words
//   DOWN 0 7680 96 12 79               where fuses are programmed: the first, how many; fuse i of them has the address
//                                      12 + i mod 96 and the bit 79 - i div 96
//   ALONG 15360 960 80 0 79            the same, address 0 + i div 80 and bit 79 - i mod 80
//   END                                the last line
// clang-format on
namespace cpld {

inline constexpr std::size_t BlockCells = 16;
inline constexpr std::size_t CellTerms = 5;
inline constexpr std::size_t BlockSwitches = 40;
inline constexpr std::size_t TermColumns = BlockCells + 2 * BlockSwitches;
inline constexpr std::size_t ClockCount = 3;
inline constexpr std::size_t EnableCount = 6;

// What a switch or a global can bring. A constant 0 is Ground.
struct Signal {
    enum class Kind : std::uint8_t { Ground, Pad, Feedback };
    Kind Is = Kind::Ground;
    std::uint16_t Index = 0;  // into Device::Pads, or the macrocell from 0
    bool operator==(const Signal&) const = default;
};

// A column of a term's fuses: 0 to 15 are the foldbacks of the block's macrocells in order, then two a
// switch.
struct Switch {
    std::size_t FirstFuse = 0;
    std::size_t TrueColumn = 0;
    std::vector<Signal> Signals;  // the k-th is chosen by fuse FirstFuse + k

    std::size_t ComplementColumn() const { return TrueColumn ^ 1u; }
};

struct Block {
    char Name = 'A';
    std::size_t FirstCell = 0;
    std::size_t TermShift = 0, OptionShift = 0;
    std::vector<Switch> Switches;  // BlockSwitches of them, in the order of their columns
};

struct Inverter {
    std::size_t Fuse = 0;
    bool On = true;  // the state of the fuse that inverts
};

// GCLK1..3 choose by the value of their fuses (an entry may be Ground: no such value), GOE1..6 as a switch
// does.
struct Global {
    Inverter Invert;
    std::size_t FirstFuse = 0;
    std::size_t Fuses = 0;
    std::vector<Signal> Signals;
};

struct Package {
    std::string Suffix;  // "T44"
    int PinCount = 0;
    std::vector<int> Pins;  // of each pad; 0: the package has no pin for it

    int PadAt(int pin) const;  // -1 if the pin is supply or unconnected
};

// A fuse of the block's macrocells in order: the first one's, and the steps to the next, by turns.
struct FuseRow {
    std::size_t First = 0;
    int Steps[2] = {0, 0};

    std::size_t Of(std::size_t cellOfBlock) const;
};

// An option of a macrocell or a setting of the device: its fuses, and for each value of the enumeration in
// Configuration.h the value of these fuses.
struct Choice {
    std::vector<FuseRow> Fuses;
    std::vector<unsigned> Values;
};

// Where fuses are programmed by JTAG.
struct ProgramRun {
    std::size_t FirstFuse = 0, Count = 0;
    bool Along = false;  // an address holds fuses that follow one another
    std::size_t Length = 1;
    std::size_t Address = 0, Bit = 0;
};

struct WordPlace {
    static constexpr std::size_t Nowhere = static_cast<std::size_t>(-1);
    std::size_t Address = Nowhere;
    std::size_t Bit = 0;  // 0 is shifted first
};

struct ProgramArea {
    std::size_t Address = 0;  // a multiple of 256
    std::size_t Width = 0;    // bits of a word
};

// Pads with a special function, indices into Device::Pads.
struct SpecialPads {
    std::array<std::size_t, ClockCount> Clocks{};
    std::array<std::size_t, 2> Enables{};
    std::array<std::size_t, 2> PowerDown{};
    std::size_t Clear = 0, Tdi = 0, Tms = 0, Tck = 0, Tdo = 0;
};

struct Device {
    std::string Name;  // "C1502"
    std::size_t Fuses = 0;
    std::uint32_t IdCode = 0;
    std::vector<Block> Blocks;
    std::vector<std::string> Pads;  // pad k < CellCount() belongs to macrocell k, the others are inputs only
    SpecialPads Special;
    std::vector<Package> Packages;  // the first one is taken where none is named
    std::array<FuseRow, CellTerms> Terms{};
    std::vector<Choice> Options;   // in the order of CellOptions()
    std::vector<Choice> Settings;  // in the order of DeviceSettings()
    Inverter ClearInvert;
    std::array<Global, ClockCount> Clocks;
    std::array<Global, EnableCount> Enables;
    std::size_t SignatureFuse = 0;
    std::vector<std::size_t> Reserved;  // ascending
    std::vector<bool> ReservedStates;   // of the fuses of Reserved
    std::vector<ProgramArea> Areas;
    std::vector<ProgramRun> Program;

    std::size_t CellCount() const { return Blocks.size() * BlockCells; }
    const Block& BlockOf(std::size_t cell) const { return Blocks[cell / BlockCells]; }
    const Package* FindPackage(std::string_view suffix) const;  // in any case; empty: the first. Null: none
    bool IsJtagPad(std::size_t pad) const;
    std::vector<WordPlace> ProgramPlaces() const;      // of each fuse; Nowhere: it is not programmed
    std::size_t WordWidth(std::size_t address) const;  // 0: no such address
    std::string NameOf(Signal signal) const;           // "M4", "MC4", "GND"
};

// Takes the text of a library. Throws base::RunTimeError with the line and what is wrong with it; devices
// that come back hold together: fuses in range and named once, columns complete, every fuse programmed once.
std::vector<Device> ReadDevices(std::string_view text);

const Device* FindDevice(const std::vector<Device>& devices, std::string_view name);  // null: none

}  // namespace cpld
