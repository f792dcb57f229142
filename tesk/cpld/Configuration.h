#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "cpld/Device.h"

// A design in a device: what the fuses say, by name. The defaults are those of an empty device.
namespace cpld {

// A product of the literals whose bits are set, by column. All bits set: constantly 0, and so is an unused
// term; none set: constantly 1.
using Term = std::bitset<TermColumns>;
inline Term NeverTerm() { return Term().set(); }

// Where a term goes. A term that does not go to the sum is 0 there.
enum class Pt1Mux : std::uint8_t { Sum, Flb };    // Flb: to the foldback
enum class Pt2Mux : std::uint8_t { Sum, Xor };    // Xor: to the exclusive or
enum class Pt3Mux : std::uint8_t { Sum, Ar };     // Ar: resets the register
enum class Pt4Mux : std::uint8_t { Sum, ClkCe };  // ClkCe: what Pt4Func says
enum class Pt5Mux : std::uint8_t { Sum, AsOe };   // AsOe: what Pt5Func says
enum class Pt4Func : std::uint8_t { Clk, Ce };
enum class Pt5Func : std::uint8_t { As, Oe };
enum class XorA : std::uint8_t { Sum, VccPt2 };  // VccPt2: the sum goes on to the next macrocell's cascade
enum class XorB : std::uint8_t { VccPt12, FfQn };
enum class Clock : std::uint8_t { Gclk1, Gclk2, Gclk3 };
enum class Enable : std::uint8_t { Gnd, Goe1, Goe2, Goe3, Goe4, Goe5, Goe6, VccPt5 };
enum class Storage : std::uint8_t { Latch, Dff };
enum class Path : std::uint8_t { Comb, Sync };  // the exclusive or, or the register
enum class DMux : std::uint8_t { Comb, Fast };  // Fast: the pad where Output is Sync, else PT2
enum class Slew : std::uint8_t { Slow, Fast };
enum class Driver : std::uint8_t { PushPull, OpenDrain };
enum class Switched : std::uint8_t { Off, On };

struct Cell {
    std::array<Term, CellTerms> Terms{NeverTerm(), NeverTerm(), NeverTerm(), NeverTerm(), NeverTerm()};
    Switched TermPower = Switched::Off;  // off: all five terms are 0 and must be NeverTerm()
    Pt1Mux Pt1 = Pt1Mux::Sum;
    Pt2Mux Pt2 = Pt2Mux::Sum;
    Pt3Mux Pt3 = Pt3Mux::Sum;
    Pt4Mux Pt4 = Pt4Mux::Sum;
    Pt5Mux Pt5 = Pt5Mux::Sum;
    Pt4Func Func4 = Pt4Func::Clk;
    Pt5Func Func5 = Pt5Func::As;
    XorA A = XorA::Sum;
    XorB B = XorB::VccPt12;
    Switched Invert = Switched::On;  // off: the register powers up as 1
    Switched GlobalClear = Switched::Off;
    Clock GlobalClock = Clock::Gclk2;
    Storage Register = Storage::Latch;
    DMux Data = DMux::Comb;
    Path Output = Path::Comb;
    Path Feedback = Path::Comb;
    Enable OutputEnable = Enable::Gnd;
    Slew SlewRate = Slew::Slow;
    Driver OutputDriver = Driver::PushPull;
    Switched LowPower = Switched::Off;
    bool operator==(const Cell&) const = default;
};

inline constexpr int NoSignal = -1;

// A clock or an enable: index into its Signals in Device. A clock always has one; an enable without one is at
// ground.
struct GlobalUse {
    int Signal = NoSignal;
    bool Invert = false;
    bool operator==(const GlobalUse&) const = default;
};

enum class JtagPins : std::uint8_t { User, Jtag };
enum class Termination : std::uint8_t { BusKeeper, HighZ };
enum class PullUp : std::uint8_t { PullUp, HighZ };
enum class PowerDown : std::uint8_t { Pd, User };
enum class Hysteresis : std::uint8_t { Large, Small };
enum class Arming : std::uint8_t { Armed, Safe };

struct Settings {
    JtagPins Jtag = JtagPins::Jtag;
    Termination Pins = Termination::BusKeeper;
    PullUp Tms = PullUp::HighZ, Tdi = PullUp::HighZ;
    PowerDown Pd1 = PowerDown::User, Pd2 = PowerDown::User;
    Hysteresis Reset = Hysteresis::Small;
    Switched Wakeup1 = Switched::On, Wakeup2 = Switched::On, Wakeup3 = Switched::On;  // by CLK1, 2, 3
    Switched ReadProtection = Switched::Off;
    Arming Switch = Arming::Safe;
    bool operator==(const Settings&) const = default;
};

struct Configuration {
    std::vector<Cell> Cells;                 // one a macrocell
    std::vector<std::vector<int>> Switches;  // by block and switch: index into its Signals, or NoSignal
    bool InvertClear = false;
    std::array<GlobalUse, ClockCount> Clocks;
    std::array<GlobalUse, EnableCount> Enables;
    cpld::Settings Settings;
    std::uint16_t Signature = 0xFFFF;
    bool operator==(const Configuration&) const = default;
};

// The design's names, which the fuses don't hold; for reports and the pin list.
struct DesignNames {
    std::string Package;             // suffix
    std::vector<std::string> Pads;   // one a pad, empty: not used
    std::vector<std::string> Cells;  // one a macrocell, empty: not used
};

// An empty design: clocks at CLK1, CLK2 and CLK3.
Configuration EmptyConfiguration(const Device& device);

// An option of a macrocell or a setting of the device, under the name that the library knows it by.
template <typename Record>
struct OptionRow {
    std::string_view Name;
    std::span<const std::string_view> Values;  // by enumerator
    unsigned (*Get)(const Record&);
    void (*Set)(Record&, unsigned);
};
std::span<const OptionRow<Cell>> CellOptions();
std::span<const OptionRow<Settings>> DeviceSettings();

}  // namespace cpld
