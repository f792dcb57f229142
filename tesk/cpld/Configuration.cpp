#include "cpld/Configuration.h"

namespace cpld {
namespace {

template <typename>
struct MemberOf;
template <typename Value, typename Owner>
struct MemberOf<Value Owner::*> {
    using Record = Owner;
    using Type = Value;
};

template <auto member, std::size_t count>
constexpr auto Row(std::string_view name, const std::string_view (&values)[count]) {
    using Record = typename MemberOf<decltype(member)>::Record;
    using Type = typename MemberOf<decltype(member)>::Type;
    return OptionRow<Record>{
        name, values, [](const Record& record) { return static_cast<unsigned>(record.*member); },
        [](Record& record, unsigned value) { record.*member = static_cast<Type>(value); }};
}

constexpr std::string_view sumFlb[] = {"sum", "flb"};
constexpr std::string_view sumXor[] = {"sum", "xor"};
constexpr std::string_view sumAr[] = {"sum", "ar"};
constexpr std::string_view sumClkCe[] = {"sum", "clk_ce"};
constexpr std::string_view sumAsOe[] = {"sum", "as_oe"};
constexpr std::string_view clkCe[] = {"clk", "ce"};
constexpr std::string_view asOe[] = {"as", "oe"};
constexpr std::string_view xorA[] = {"sum", "VCC_pt2"};
constexpr std::string_view xorB[] = {"VCC_pt12", "ff_qn"};
constexpr std::string_view offOn[] = {"off", "on"};
constexpr std::string_view clears[] = {"GND", "GCLR"};
constexpr std::string_view clocks[] = {"GCLK1", "GCLK2", "GCLK3"};
constexpr std::string_view storages[] = {"latch", "dff"};
constexpr std::string_view dMux[] = {"comb", "fast"};
constexpr std::string_view paths[] = {"comb", "sync"};
constexpr std::string_view enables[] = {"GND", "GOE1", "GOE2", "GOE3", "GOE4", "GOE5", "GOE6", "VCC_pt5"};
constexpr std::string_view slews[] = {"slow", "fast"};
constexpr std::string_view drivers[] = {"push_pull", "open_drain"};
constexpr std::string_view jtagPins[] = {"user", "jtag"};
constexpr std::string_view terminations[] = {"bus_keeper", "high_z"};
constexpr std::string_view pullUps[] = {"pull_up", "high_z"};
constexpr std::string_view powerDowns[] = {"pd", "user"};
constexpr std::string_view hystereses[] = {"large", "small"};
constexpr std::string_view armings[] = {"armed", "safe"};

constexpr OptionRow<Cell> cellOptions[] = {Row<&Cell::TermPower>("pt_power", offOn),
                                           Row<&Cell::Pt1>("pt1_mux", sumFlb),
                                           Row<&Cell::Pt2>("pt2_mux", sumXor),
                                           Row<&Cell::Pt3>("pt3_mux", sumAr),
                                           Row<&Cell::Pt4>("pt4_mux", sumClkCe),
                                           Row<&Cell::Pt5>("pt5_mux", sumAsOe),
                                           Row<&Cell::Func4>("pt4_func", clkCe),
                                           Row<&Cell::Func5>("pt5_func", asOe),
                                           Row<&Cell::A>("xor_a_mux", xorA),
                                           Row<&Cell::B>("xor_b_mux", xorB),
                                           Row<&Cell::Invert>("xor_invert", offOn),
                                           Row<&Cell::GlobalClear>("gclr_mux", clears),
                                           Row<&Cell::GlobalClock>("gclk_mux", clocks),
                                           Row<&Cell::Register>("storage", storages),
                                           Row<&Cell::Data>("d_mux", dMux),
                                           Row<&Cell::Output>("o_mux", paths),
                                           Row<&Cell::Feedback>("fb_mux", paths),
                                           Row<&Cell::OutputEnable>("oe_mux", enables),
                                           Row<&Cell::SlewRate>("slew_rate", slews),
                                           Row<&Cell::OutputDriver>("output_driver", drivers),
                                           Row<&Cell::LowPower>("low_power", offOn)};

constexpr OptionRow<Settings> deviceSettings[] = {Row<&Settings::Jtag>("jtag_pin_func", jtagPins),
                                                  Row<&Settings::Pins>("termination", terminations),
                                                  Row<&Settings::Tms>("TMS_termination", pullUps),
                                                  Row<&Settings::Tdi>("TDI_termination", pullUps),
                                                  Row<&Settings::Pd1>("pd1_pin_func", powerDowns),
                                                  Row<&Settings::Pd2>("pd2_pin_func", powerDowns),
                                                  Row<&Settings::Reset>("reset_hysteresis", hystereses),
                                                  Row<&Settings::Wakeup1>("CLK1_standby_wakeup", offOn),
                                                  Row<&Settings::Wakeup2>("CLK2_standby_wakeup", offOn),
                                                  Row<&Settings::Wakeup3>("CLK3_standby_wakeup", offOn),
                                                  Row<&Settings::ReadProtection>("read_protection", offOn),
                                                  Row<&Settings::Switch>("arming_switch", armings)};

}  // namespace

std::span<const OptionRow<Cell>> CellOptions() { return cellOptions; }
std::span<const OptionRow<Settings>> DeviceSettings() { return deviceSettings; }

Configuration EmptyConfiguration(const Device& device) {
    Configuration empty;
    empty.Cells.resize(device.CellCount());
    for (const Block& block : device.Blocks) empty.Switches.emplace_back(block.Switches.size(), NoSignal);
    for (std::size_t i = 0; i < ClockCount; ++i) {
        const auto& signals = device.Clocks[i].Signals;
        for (std::size_t k = 0; k < signals.size(); ++k)
            if (signals[k] == Signal{Signal::Kind::Pad, static_cast<std::uint16_t>(device.Special.Clocks[i])})
                empty.Clocks[i].Signal = static_cast<int>(k);
    }
    return empty;
}

}  // namespace cpld
