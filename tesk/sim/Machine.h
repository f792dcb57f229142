#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "sim/AbsFile.h"

namespace sim {

// A signal's value. Z stands only at pins; it is unknown to whatever reads it.
enum class Value : std::uint8_t { Zero, One, Unknown, HighZ };

char Letter(Value value);  // 0 1 X Z

// The compiled design as a machine with three-valued logic: unknown inputs give unknown outputs only where
// they matter. Registers start in their power-up state.
//
//   * D, T, JK, RS registers take their next state at a rising edge of CK, from the values before the edge. R
//   and S
//     both 1 give an unknown state, so do AR and AP, and SR and SP. CE missing is 1; a missing data input is
//     0.
//   * A register without CK is clocked by the default clock, see `SetDefaultClock`.
//   * A latch follows L while LE is 1, or always if it has no LE.
//   * An output without OE is always enabled.
class Machine {
  public:
    // Settling gives up after as many rounds over the nets as there are nets, and this many more; clocking
    // gives up after as many edges in a row as there are registers, and this many more.
    static constexpr std::size_t ExtraRounds = 100;
    // What went wrong in the last `Apply`.
    struct Trouble {
        std::vector<std::size_t> NoFixedPoint;  // nets that go on changing; they are left unknown
        std::vector<std::size_t> Contention;    // pins driven from outside against their own output
        bool ClockFault = false;  // the nets of NoFixedPoint are registers that clock one another
    };

    // The design must be one that `ReadAbs` takes, and outlive the machine.
    explicit Machine(const AbsDesign& design);

    using Drive = std::pair<std::size_t, Value>;  // net, level at its pin; HighZ releases it

    // Changes what drives the pins from outside, lets the logic settle and clocks what sees an edge. Clocks
    // and latch enables change after all else, so that data set together with them are taken.
    Trouble Apply(const std::vector<Drive>& drives);

    // Loads registers (asserted states); call Apply afterwards.
    void Preload(const std::vector<Drive>& states);

    void SetDefaultClock(Value level) { defaultClock_ = level; }
    bool UsesDefaultClock() const { return usesDefaultClock_; }

    Value Level(std::size_t net) const;  // at the pin; of a node its state
    Value State(std::size_t net) const { return now_.Logic[net]; }

    // The work is bounded, in literals and terms looked at: the default takes some seconds. Once the bound is
    // reached nothing changes any more.
    static constexpr std::uint64_t DefaultWork = 1'000'000'000;
    void SetMostWork(std::uint64_t most) { mostWork_ = most; }
    bool Exhausted() const { return work_ > mostWork_; }

    // Called with a line of text for what happens inside, at levels 1 (registers clocked), 2 (nets changed),
    // 3 (rounds taken), 4 (each change of each round).
    std::function<void(int level, const std::string& line)> Trace;

  private:
    struct Snapshot {
        std::vector<Value> Logic;  // asserted: the function, or the register
        std::vector<Value> Pin;    // level
    };
    struct Parts {  // the functions of a net, null where it has none
        std::array<const Function*, 16> Of{};
        const Function* operator[](Input input) const { return Of[static_cast<std::size_t>(input)]; }
    };

    void FindOrder();
    void FindClockSupport();
    std::vector<std::size_t> SettleDependencies(std::size_t net) const;

    bool IsClocked(std::size_t net) const;
    Value Read(const Literal& literal, const Snapshot& from) const;
    Value Sum(const Function& function, const Snapshot& from) const;
    Value Part(std::size_t net, Input input, Value missing, const Snapshot& from) const;
    Value LogicOf(std::size_t net) const;
    Value PinOf(std::size_t net) const;
    Value ClockOf(std::size_t net) const;
    Value NextState(std::size_t net, const Snapshot& before) const;
    Value DataState(std::size_t net, const Snapshot& before) const;

    bool Update(std::size_t net);
    std::vector<std::size_t> SettleRounds();
    void Settle(Trouble& trouble);
    void ProbeLoops(Trouble& trouble);
    void MakeUnknown(const std::vector<std::size_t>& nets);
    void Clock(Snapshot before, Trouble& trouble);
    std::vector<Drive> Edges(const Snapshot& before);
    void Change(const std::vector<Drive>& drives, Trouble& trouble);
    void FindContention(Trouble& trouble) const;
    void TraceChanges(const Snapshot& before) const;

    const AbsDesign& design_;
    std::vector<Parts> parts_;
    std::vector<std::size_t> order_;    // driven nets, dependencies first where there is no loop
    std::vector<std::size_t> looping_;  // nets in loops of combinational logic
    std::vector<std::size_t> clocked_;  // nets with a clocked register
    std::vector<bool> clockSupport_;    // a net: clocks depend on it
    bool usesDefaultClock_ = false;
    Value defaultClock_ = Value::Zero;
    std::vector<Value> external_;  // what drives a pin from outside
    std::vector<Value> clocks_;    // CK of `clocked_` as last seen
    Snapshot now_;
    mutable std::uint64_t work_ = 0;
    std::uint64_t mostWork_ = DefaultWork;
};

}  // namespace sim
