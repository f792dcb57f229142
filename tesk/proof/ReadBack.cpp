#include <algorithm>

#include "proof/Chip.h"

namespace proof {
namespace {

using fit::CellUse;
using fit::EnableKind;
using fit::FeedbackKind;
using fit::PolarityKind;
using fit::UseKind;

bool Has(const std::vector<bool>& fuses, const std::vector<fit::FuseRun>& runs) {
    return std::all_of(runs.begin(), runs.end(), [&](const fit::FuseRun& run) {
        for (std::size_t i = run.First; i < run.First + run.Count; ++i)
            if (fuses[i] != run.Value) return false;
        return true;
    });
}

// Without a look at the fuses that take out rows.
bool IsIn(const fit::Mode& mode, const std::vector<bool>& fuses) {
    auto runs = mode.Fuses;
    std::erase_if(runs, [&](const fit::FuseRun& run) { return mode.IsRowSwitch(run.First); });
    return Has(fuses, runs);
}

// What the columns of a mode carry, and its rows as products of that.
class Decoder {
  public:
    Decoder(const fit::Mode& mode, int pins, const std::vector<bool>& fuses)
        : mode_(mode), pins_(pins), fuses_(fuses), columns_(mode.Columns) {
        for (const auto& cell : mode.Cells) uses_.push_back(UseOf(cell));
        for (const auto& [pin, column] : mode.Inputs)
            SetColumns(column, {Signal::Kind::Pin, static_cast<std::size_t>(pin)}, false);
        for (std::size_t i = 0; i < uses_.size(); ++i) SetFeedback(i);
    }

    std::vector<Macrocell> Cells() const {
        std::vector<Macrocell> cells;
        for (std::size_t i = 0; i < uses_.size(); ++i) cells.push_back(CellOf(i));
        return cells;
    }

  private:
    // The use that takes the most fuses for itself, of those that take the same the first that is more than
    // an input; null if the fuses are those of none.
    const CellUse* UseOf(const fit::Cell& cell) const {
        const auto rank = [](const CellUse& use) {
            std::size_t taken = 0;
            for (const auto& run : use.Fuses) taken += run.Count;
            return std::pair(taken, use.Kind != UseKind::Input);
        };
        const CellUse* found = nullptr;
        for (const auto& use : cell.Uses) {
            if (Has(fuses_, use.Fuses) && (found == nullptr || rank(use) > rank(*found))) found = &use;
        }
        return found;
    }

    void SetColumns(int column, const Signal& signal, bool negated) {
        if (column < 0) return;
        columns_[static_cast<std::size_t>(column)] = Literal{signal, negated};
        columns_[static_cast<std::size_t>(column) + 1] = Literal{signal, !negated};
    }

    void SetFeedback(std::size_t index) {
        const auto& cell = mode_.Cells[index];
        const auto feedback = uses_[index] == nullptr ? FeedbackKind::Pin : uses_[index]->Feedback;
        if (feedback != FeedbackKind::Pin && feedback != FeedbackKind::None) {
            // The level of an output is that behind its polarity.
            const bool isOutput = uses_[index]->Kind == UseKind::Output;
            const bool isComplement = feedback == FeedbackKind::Level && isOutput
                                          ? !PinHasSum(cell)
                                          : feedback != FeedbackKind::Sum;
            return SetColumns(cell.Column, {Signal::Kind::Cell, index}, isComplement);
        }
        SetColumns(cell.Column, {Signal::Kind::Pin, static_cast<std::size_t>(cell.Pin)}, false);
    }

    // Nothing for a row that is false: taken out, or one that connects a signal and its complement.
    std::optional<Term> RowOf(std::size_t row) const {
        const bool isOut =
            mode_.RowSwitch && *mode_.RowSwitch + row < fuses_.size() && !fuses_[*mode_.RowSwitch + row];
        if (isOut) return std::nullopt;
        Term term;
        const auto first = mode_.FirstFuse(row);
        for (std::size_t i = 0; i < mode_.Columns; ++i) {
            if (fuses_[first + i]) continue;
            const bool isBoth = i % 2 == 0 && !fuses_[first + i + 1];
            if (isBoth) return std::nullopt;
            term.push_back(columns_[i]);
        }
        return term;
    }

    Sum RowAt(std::size_t row) const {
        Sum sum;
        if (auto term = RowOf(row)) sum.push_back(std::move(*term));
        return sum;
    }

    // `orFuse`: as of a use.
    Sum SumOf(std::size_t first, std::size_t rows, int orFuse) const {
        Sum sum;
        for (auto row = first; row < first + rows; ++row) {
            const bool isLed = orFuse < 0 || !fuses_[mode_.FirstFuse(row) + static_cast<std::size_t>(orFuse)];
            auto term = isLed ? RowOf(row) : std::nullopt;
            if (term) sum.push_back(std::move(*term));
        }
        return sum;
    }

    Control EnableOf(const CellUse& use) const {
        if (use.Enable == EnableKind::Row) return {RowAt(use.EnableRow), Source::Own};
        if (use.Enable == EnableKind::Always) return {Always(), Source::Device};
        if (use.Enable == EnableKind::None) return {};
        return {{{PinLiteral(mode_.EnablePin, true)}}, Source::Device};
    }

    static Literal PinLiteral(int pin, bool negated) {
        return {{Signal::Kind::Pin, static_cast<std::size_t>(pin)}, negated};
    }

    bool PinHasSum(const fit::Cell& cell) const {
        return cell.Polarity == PolarityKind::Fuse ? fuses_[cell.PolarityFuse] == cell.HighFuse
                                                   : cell.Polarity == PolarityKind::High;
    }

    Macrocell CellOf(std::size_t index) const {
        const auto& cell = mode_.Cells[index];
        Macrocell result;
        result.Node = cell.Pin;
        result.Pin = cell.Pin > pins_ ? 0 : cell.Pin;
        result.Known = uses_[index] != nullptr;
        if (!result.Known || uses_[index]->Kind == UseKind::Input) return result;
        const auto& use = *uses_[index];
        result.Rows = SumOf(use.FirstRow, use.Terms, use.OrFuse);
        if (use.XorTerms > 0) result.Rows2 = SumOf(use.XorRow, use.XorTerms, -1);
        result.Enable = EnableOf(use);
        if (use.EnableAndPin) result.EnableWith = {PinLiteral(mode_.EnablePin, true)};
        if (use.Kind == UseKind::Register) {
            SetRegister(result, use, PinHasSum(cell));
        } else {
            result.PinInverted = !PinHasSum(cell);
        }
        return result;
    }

    void SetRow(Control& control, int row, Source from) const {
        if (row >= 0) control = {RowAt(static_cast<std::size_t>(row)), from};
    }

    // The polarity lies behind the register that takes the sum itself, before any other, whose pin has the
    // complement.
    void SetRegister(Macrocell& cell, const CellUse& use, bool pinHasSum) const {
        const bool isBehind = use.StoresSum;
        cell.Register = RegisterKind::D;
        cell.Inverted = !isBehind && pinHasSum;
        cell.PinInverted = !isBehind || !pinHasSum;
        cell.PowerUp = '0';
        if (mode_.ClockPin != 0) cell.Clock = {{{PinLiteral(mode_.ClockPin, false)}}, Source::Device};
        SetRow(cell.Reset, mode_.ResetRow, Source::Shared);
        SetRow(cell.SyncPreset, mode_.PresetRow, Source::Shared);
        SetRow(cell.Clock, use.ClockRow, Source::Own);
        SetRow(cell.Reset, use.ResetRow, Source::Own);
        SetRow(cell.Preset, use.PresetRow, Source::Own);
        cell.PassesWhenBoth = use.HasOwnRows();
    }

    const fit::Mode& mode_;
    const int pins_;
    const std::vector<bool>& fuses_;
    std::vector<const CellUse*> uses_;  // of each cell
    std::vector<Literal> columns_;      // pin 0: what the device library does not tell
};

bool FitsSize(const fit::Device& device, std::size_t fuses) {
    const auto& signature = device.Signature;
    const bool isWithout =
        signature.Count > 0 && fuses == signature.First && device.Fuses == signature.First + signature.Count;
    return fuses == device.Fuses || isWithout;
}

}  // namespace

ChipResult ReadBack(const fit::Device& device, const std::vector<bool>& fuses) {
    ChipResult result;
    const auto refuse = [&](MessageCode code, const std::string& detail) {
        result.Messages.push_back(model::MakeMessage(code.Entry(), {}, detail));
    };
    if (device.IsVirtual() || !FitsSize(device, fuses.size())) {
        refuse("7400tc", std::to_string(fuses.size()) + " fuses, " + device.Mnemonic + " has " +
                             std::to_string(device.Fuses));
        return result;
    }
    auto map = fuses;
    map.resize(device.Fuses, false);
    for (const auto& mode : device.Modes) {
        if (!IsIn(mode, map)) continue;
        result.Found = Chip{device.Mnemonic, mode.Name, device.Pins, Decoder(mode, device.Pins, map).Cells()};
        return result;
    }
    refuse("7401tc", device.Mnemonic);
    return result;
}

}  // namespace proof
