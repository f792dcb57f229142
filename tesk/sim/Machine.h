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
#include "sim/Gates.h"
#include "sim/Marks.h"

namespace sim {

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

    void SetDefaultClock(Value level);
    bool UsesDefaultClock() const { return usesDefaultClock_; }

    Value Level(std::size_t net) const { return now_[net]; }  // at the pin; of a node its state
    Value State(std::size_t net) const { return now_[logic_ + net]; }

    // The work is bounded, in literals and terms looked at: the default takes half a minute. Once the bound
    // is reached nothing changes any more.
    static constexpr std::uint64_t DefaultWork = 10'000'000'000;
    void SetMostWork(std::uint64_t most) { mostWork_ = most; }
    bool Exhausted() const { return gates_.Work() > mostWork_; }

    // Called with a line of text for what happens inside, at levels 1 (registers clocked), 2 (nets changed),
    // 3 (rounds taken), 4 (each change of each round).
    std::function<void(int level, const std::string& line)> Trace;

  private:
    // For each net the places of what it decides on.
    struct Readers {
        std::vector<std::size_t> Begin;  // of each net in `Places`, and the end
        std::vector<std::size_t> Places;
    };

    static Readers ReadersOf(const std::vector<std::vector<std::size_t>>& read, std::size_t nets);
    void FindOrder();
    void FindReaders();
    void FindClockSupport();
    std::vector<std::size_t> SettleDependencies(std::size_t net) const;

    bool IsClocked(std::size_t net) const;
    Value LogicOf(std::size_t net) const;
    Value PinOf(std::size_t net) const;
    Value ClockOf(std::size_t net) const;
    Value NextState(std::size_t net, const Snapshot& before) const;
    Value DataState(std::size_t net, const Snapshot& before) const;

    void Touch(std::size_t net);
    void SetState(std::size_t net, Value state);
    void SetOutside(std::size_t net, Value level);
    bool Update(std::size_t net);
    std::vector<std::size_t> SettleRounds();
    void Settle(Trouble& trouble);
    void ProbeLoops(Trouble& trouble);
    void MakeUnknown(const std::vector<std::size_t>& nets);
    void Clock(Trouble& trouble);
    void FindEdges();
    void Change(const std::vector<Drive>& drives, Trouble& trouble);
    void FindContention(Trouble& trouble) const;
    void TraceChanges(const Snapshot& before) const;

    const AbsDesign& design_;
    const std::size_t logic_;  // where the states begin in a snapshot
    Gates gates_;
    std::vector<std::size_t> order_;     // driven nets, dependencies first where there is no loop
    std::vector<std::size_t> position_;  // of each net in `order_`; of an input Marks::None
    std::vector<std::size_t> looping_;   // nets in loops of combinational logic
    std::vector<std::size_t> clocked_;   // nets with a clocked register
    std::vector<bool> clockSupport_;     // a net: clocks depend on it
    Readers settles_;                    // the positions that a net decides on
    Readers clocksOf_;                   // the indices of `clocked_` whose CK a net decides on
    bool usesDefaultClock_ = false;
    Value defaultClock_ = Value::Zero;
    std::vector<Value> external_;  // what drives a pin from outside
    std::size_t opposed_ = 0;      // driven nets that something drives to 0 or 1 from outside
    std::vector<Value> clocks_;    // CK of `clocked_` as last seen
    Snapshot now_;
    Marks due_;                                  // positions to work out in this round of settling
    Marks next_;                                 // and in the next one
    std::size_t round_ = 0;                      // the first position that this round still comes to
    Marks clockDue_;                             // indices of `clocked_` whose CK may have changed
    Snapshot before_;                            // what data inputs see at an edge
    std::vector<Drive> edges_, first_, second_;  // kept, so that vectors make no memory
    std::uint64_t mostWork_ = DefaultWork;
};

}  // namespace sim
