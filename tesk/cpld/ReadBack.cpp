#include "cpld/ReadBack.h"

#include <map>

namespace cpld {
namespace {

using proof::Always;
using proof::Control;
using proof::Literal;
using proof::Sum;

class Decoder {
  public:
    Decoder(const Device& device, const Package& package, const Configuration& from)
        : device_(device), package_(package), from_(from) {}

    ChipOfParts Decode() {
        chip_.Chip.Device = device_.Name + package_.Suffix;
        chip_.Chip.Pins = package_.PinCount;
        for (std::size_t cell = 0; cell < from_.Cells.size(); ++cell) {
            const Cell& options = from_.Cells[cell];
            const Path path = ReachesPin(cell) ? options.Output : options.Feedback;
            IndexOf({path == Path::Sync ? Part::Register : Part::Exclusive, cell});
        }
        for (std::size_t i = 0; i < chip_.Parts.size(); ++i) {  // grows by what is read
            auto decoded = Decoded(chip_.Parts[i], i < from_.Cells.size());
            chip_.Chip.Cells[i] = std::move(decoded);
        }
        return std::move(chip_);
    }

  private:
    std::size_t IndexOf(CellPart part) {
        const auto [place, isNew] = indices_.emplace(std::pair(part.Of, part.Macrocell), chip_.Parts.size());
        if (isNew) {
            chip_.Parts.push_back(part);
            chip_.Chip.Cells.emplace_back();
        }
        return place->second;
    }

    proof::Signal PinOf(std::size_t pad) const {
        const int pin = package_.Pins[pad];
        const auto beyond = static_cast<std::size_t>(NodeOf(package_, from_.Cells.size())) + pad;
        return {proof::Signal::Kind::Pin, pin != 0 ? static_cast<std::size_t>(pin) : beyond};
    }

    proof::Signal CellSignal(CellPart part) { return {proof::Signal::Kind::Cell, IndexOf(part)}; }

    proof::Signal SignalOf(const Signal& signal) {
        if (signal.Is == Signal::Kind::Pad) return PinOf(signal.Index);
        const bool isState = from_.Cells[signal.Index].Feedback == Path::Sync;
        return CellSignal({isState ? Part::Register : Part::Exclusive, signal.Index});
    }

    // What a choice among signals gives, as a sum.
    Sum GlobalSum(const Global& global, const GlobalUse& use) {
        const Signal signal =
            use.Signal == NoSignal ? Signal{} : global.Signals[static_cast<std::size_t>(use.Signal)];
        if (signal.Is == Signal::Kind::Ground) return use.Invert ? Always() : Sum{};
        return {{{SignalOf(signal), use.Invert}}};
    }

    // The foldback is constantly 1 where PT1 is not its own, or by the structure of the exclusive or.
    bool HasFoldback(const Cell& cell) const {
        const bool isCut = cell.A == XorA::VccPt2 && cell.B == XorB::VccPt12 && cell.Invert == Switched::Off;
        return cell.Pt1 == Pt1Mux::Flb && !isCut;
    }

    // A term as a sum: empty if it is constantly 0.
    Sum TermSum(std::size_t cell, std::size_t index) {
        const Term& term = from_.Cells[cell].Terms[index];
        const std::size_t block = cell / BlockCells;
        proof::Term product;
        for (std::size_t i = 0; i < BlockCells; ++i) {
            const std::size_t other = block * BlockCells + i;
            if (term[i] && HasFoldback(from_.Cells[other]))
                product.push_back({CellSignal({Part::Foldback, other}), false});
        }
        for (std::size_t i = 0; i < BlockSwitches; ++i) {
            const Switch& from = device_.Blocks[block].Switches[i];
            const bool isTrue = term[from.TrueColumn], isComplement = term[from.ComplementColumn()];
            if (!isTrue && !isComplement) continue;
            const int chosen = from_.Switches[block][i];
            const Signal signal =
                chosen == NoSignal ? Signal{} : from.Signals[static_cast<std::size_t>(chosen)];
            const bool isGround = signal.Is == Signal::Kind::Ground;
            if (isTrue && (isComplement || isGround)) return {};
            if (!isGround) product.push_back({SignalOf(signal), isComplement});
        }
        return {product};
    }

    // A place that has 1 where the term goes to the sum.
    Sum OrOne(bool isInSum, std::size_t cell, std::size_t index) {
        return isInSum ? Always() : TermSum(cell, index);
    }

    Sum SumOf(std::size_t cell) {
        const Cell& options = from_.Cells[cell];
        const bool inSum[] = {options.Pt1 == Pt1Mux::Sum, options.Pt2 == Pt2Mux::Sum,
                              options.Pt3 == Pt3Mux::Sum, options.Pt4 == Pt4Mux::Sum,
                              options.Pt5 == Pt5Mux::Sum};
        Sum sum;
        if (cell % BlockCells != 0 && from_.Cells[cell - 1].A == XorA::VccPt2) sum = SumOf(cell - 1);
        for (std::size_t i = 0; i < CellTerms; ++i) {
            if (!inSum[i]) continue;
            for (auto& term : TermSum(cell, i)) sum.push_back(std::move(term));
        }
        return sum;
    }

    // The exclusive or, or with `toggles` what turns the register over.
    void SetExclusive(proof::Macrocell& into, std::size_t cell, bool toggles) {
        const Cell& options = from_.Cells[cell];
        const bool isSum = options.A == XorA::Sum;
        into.Rows = isSum ? SumOf(cell) : OrOne(options.Pt2 == Pt2Mux::Sum, cell, 1);
        into.Inverted = options.Invert == Switched::Off;
        if (options.B == XorB::FfQn) {
            if (!toggles) into.Rows2 = Sum{{{CellSignal({Part::Register, cell}), false}}};
            return;
        }
        if (!into.Inverted) return;
        const bool isOne = isSum ? options.Pt2 == Pt2Mux::Sum : options.Pt1 == Pt1Mux::Sum;
        if (isOne) return;
        into.Rows2 = TermSum(cell, isSum ? 1 : 0);
        into.Inverted = false;
    }

    void SetRegister(proof::Macrocell& into, std::size_t cell) {
        const Cell& options = from_.Cells[cell];
        const bool isLatch = options.Register == Storage::Latch, isFast = options.Data == DMux::Fast;
        const bool toggles = options.B == XorB::FfQn && !isLatch && !isFast;
        into.Register = isLatch   ? proof::RegisterKind::Latch
                        : toggles ? proof::RegisterKind::T
                                  : proof::RegisterKind::D;
        if (!isFast)
            SetExclusive(into, cell, toggles);
        else if (options.Output == Path::Sync)
            into.Rows = {{{PinOf(cell), false}}};
        else
            into.Rows = TermSum(cell, 1);
        SetClock(into, cell);
        into.Reset = ResetOf(cell);
        if (options.Pt5 == Pt5Mux::AsOe && options.Func5 == Pt5Func::As)
            into.Preset = {TermSum(cell, 4), proof::Source::Own};
        into.PowerUp = options.Invert == Switched::On ? '0' : '1';
    }

    void SetClock(proof::Macrocell& into, std::size_t cell) {
        const Cell& options = from_.Cells[cell];
        const bool isTerm = options.Pt4 == Pt4Mux::ClkCe, isClock = options.Func4 == Pt4Func::Clk;
        const auto global = static_cast<std::size_t>(options.GlobalClock);
        if (isClock)
            into.Clock = {isTerm ? TermSum(cell, 3) : Always(), proof::Source::Own};
        else
            into.Clock = {GlobalSum(device_.Clocks[global], from_.Clocks[global]), proof::Source::Shared};
        if (isTerm && !isClock) into.ClockEnable = {TermSum(cell, 3), proof::Source::Own};
    }

    Control ResetOf(std::size_t cell) {
        const Cell& options = from_.Cells[cell];
        const bool isOwn = options.Pt3 == Pt3Mux::Ar;
        Control reset{isOwn ? TermSum(cell, 2) : Sum{}, isOwn ? proof::Source::Own : proof::Source::Shared};
        if (options.GlobalClear == Switched::On)
            reset.When.push_back({{PinOf(device_.Special.Clear), from_.InvertClear}});
        return reset;
    }

    static bool IsWithoutPlace(const Cell& options) {
        return options.OutputEnable == Enable::VccPt5 && options.Pt5 == Pt5Mux::Sum &&
               options.Func5 == Pt5Func::Oe;
    }

    bool ReachesPin(std::size_t cell) const {
        const Cell& options = from_.Cells[cell];
        const bool isJtag = from_.Settings.Jtag == JtagPins::Jtag && device_.IsJtagPad(cell);
        return options.OutputEnable != Enable::Gnd && !isJtag && !IsWithoutPlace(options);
    }

    Control EnableOf(std::size_t cell) {
        const Cell& options = from_.Cells[cell];
        if (!ReachesPin(cell)) return {};
        if (options.OutputEnable == Enable::VccPt5) {
            const bool isTerm = options.Pt5 == Pt5Mux::AsOe && options.Func5 == Pt5Func::Oe;
            return {isTerm ? TermSum(cell, 4) : Always(), proof::Source::Own};
        }
        const auto global =
            static_cast<std::size_t>(options.OutputEnable) - static_cast<std::size_t>(Enable::Goe1);
        return {GlobalSum(device_.Enables[global], from_.Enables[global]), proof::Source::Shared};
    }

    proof::Macrocell Decoded(CellPart part, bool isAtPin) {
        const std::size_t cell = part.Macrocell;
        proof::Macrocell into;
        if (isAtPin) {
            into.Node = NodeOf(package_, cell);
            into.Pin = static_cast<int>(PinOf(cell).At);
            into.Enable = EnableOf(cell);
            into.Known = !IsWithoutPlace(from_.Cells[cell]);
            if (into.Drives()) into.Node = into.Pin;
        }
        if (part.Of == Part::Register) SetRegister(into, cell);
        if (part.Of == Part::Exclusive) SetExclusive(into, cell, false);
        if (part.Of == Part::Foldback) {
            into.Rows = TermSum(cell, 0);
            into.Inverted = true;
        }
        return into;
    }

    const Device& device_;
    const Package& package_;
    const Configuration& from_;
    ChipOfParts chip_;
    std::map<std::pair<Part, std::size_t>, std::size_t> indices_;
};

}  // namespace

int NodeOf(const Package& package, std::size_t cell) { return package.PinCount + 1 + static_cast<int>(cell); }

ChipOfParts ReadBack(const Device& device, const Package& package, const Configuration& configuration) {
    return Decoder(device, package, configuration).Decode();
}

}  // namespace cpld
