#include "cpld/Macrocell.h"

namespace cpld {
namespace {

// The terms by where they go: true is what a place has of a term that goes elsewhere, unless it is a sum.
struct Places {
    Places(const Cell& cell, const CellInputs& in) {
        const auto& pt = in.Terms;
        const bool first = cell.Pt1 == Pt1Mux::Sum, second = cell.Pt2 == Pt2Mux::Sum;
        Xor1 = first || pt[0];
        Fold = !first && pt[0];
        Xor2 = second || pt[1];
        Sum = in.Cascade || (first && pt[0]) || (second && pt[1]) || (cell.Pt3 == Pt3Mux::Sum && pt[2]) ||
              (cell.Pt4 == Pt4Mux::Sum && pt[3]) || (cell.Pt5 == Pt5Mux::Sum && pt[4]);
    }
    bool Xor1, Xor2, Fold, Sum;
};

bool SecondOperand(const Cell& cell, const Places& places, bool state) {
    if (cell.B == XorB::FfQn) return !state;
    if (cell.Invert == Switched::On) return true;
    return cell.A == XorA::Sum ? places.Xor2 : places.Xor1;
}

void EvaluateClock(const Cell& cell, const CellInputs& in, CellOutputs& out) {
    const bool global = in.Clocks[static_cast<std::size_t>(cell.GlobalClock)];
    const bool clocks = cell.Func4 == Pt4Func::Clk;
    if (cell.Pt4 == Pt4Mux::ClkCe) {
        out.Clock = clocks ? in.Terms[3] : global;
        out.ClockEnable = clocks || in.Terms[3];
    } else {
        out.Clock = clocks || global;
        out.ClockEnable = true;
    }
}

void EvaluateRegister(const Cell& cell, const CellInputs& in, CellOutputs& out) {
    const bool fast = cell.Output == Path::Sync ? in.Pad : in.Terms[1];
    out.Data = cell.Data == DMux::Comb ? out.Exclusive : fast;
    out.Reset =
        (cell.Pt3 == Pt3Mux::Ar && in.Terms[2]) || (cell.GlobalClear == Switched::On && in.GlobalClear);
    out.Set = cell.Pt5 == Pt5Mux::AsOe && cell.Func5 == Pt5Func::As && in.Terms[4];
    const bool opens = out.Clock && (cell.Register == Storage::Latch || !in.ClockBefore);
    out.Next = opens && out.ClockEnable ? out.Data : in.State;
    if (out.Set) out.Next = true;
    if (out.Reset) out.Next = false;
}

bool OutputEnabled(const Cell& cell, const CellInputs& in) {
    if (cell.OutputEnable == Enable::Gnd) return false;
    if (cell.OutputEnable == Enable::VccPt5)
        return cell.Pt5 != Pt5Mux::AsOe || cell.Func5 != Pt5Func::Oe || in.Terms[4];
    return in.Enables[static_cast<std::size_t>(cell.OutputEnable) - static_cast<std::size_t>(Enable::Goe1)];
}

}  // namespace

CellOutputs Evaluate(const Cell& cell, const CellInputs& in) {
    const Places places(cell, in);
    const bool invert = cell.Invert == Switched::On, second = cell.A == XorA::VccPt2;
    CellOutputs out;
    out.Sum = places.Sum;
    out.Exclusive = (second ? places.Xor2 : out.Sum) != (SecondOperand(cell, places, in.State) != invert);
    out.Cascade = second && out.Sum;
    out.Foldback = !places.Fold || (second && cell.B == XorB::VccPt12 && !invert);
    EvaluateClock(cell, in, out);
    EvaluateRegister(cell, in, out);
    out.OutputEnabled = OutputEnabled(cell, in);
    out.Output = cell.Output == Path::Comb ? out.Exclusive : in.State;
    out.Feedback = cell.Feedback == Path::Comb ? out.Exclusive : in.State;
    return out;
}

}  // namespace cpld
