#include "fit/FuseMap.h"

#include <algorithm>

#include "fit/Sums.h"

namespace fit {
namespace {

class Mapper {
  public:
    Mapper(const Device& device, const Mode& mode, const Needs& needs, const ModeFit& fit)
        : mode_(mode), needs_(needs), fit_(fit), fuses_(device.Fuses, false) {}

    std::vector<bool> Map() {
        Set(mode_.Fuses);
        for (const auto& cell : mode_.Cells) {
            const auto signal = fit_.SignalAt(cell.Pin);
            if (signal && fit_.Choices[*signal]) {
                SetCell(cell, *signal, *fit_.Choices[*signal]);
            } else {
                SetInputCell(cell);
            }
        }
        SetSharedTerms();
        SetShared(mode_.ResetRow, fit_.Reset);
        SetShared(mode_.PresetRow, fit_.Preset);
        return std::move(fuses_);
    }

  private:
    void Set(const std::vector<FuseRun>& runs) {
        for (const auto& run : runs) {
            for (std::size_t i = 0; i < run.Count; ++i) fuses_[run.First + i] = run.Value;
        }
    }

    void SetInputCell(const Cell& cell) {
        const auto use = std::find_if(cell.Uses.begin(), cell.Uses.end(),
                                      [](const CellUse& u) { return u.Kind == UseKind::Input; });
        if (use != cell.Uses.end()) Set(use->Fuses);
    }

    void SetCell(const Cell& cell, std::size_t signal, const Choice& choice) {
        Set(choice.Use->Fuses);
        if (cell.Polarity == PolarityKind::Fuse)
            fuses_[cell.PolarityFuse] = (choice.Low == choice.Complemented) == cell.HighFuse;
        for (std::size_t i = 0; choice.Use->OrFuse < 0 && i < choice.Rows->size(); ++i)
            SetRow(choice.Use->FirstRow + i, (*choice.Rows)[i]);
        for (std::size_t i = 0; choice.XorRows != nullptr && i < choice.XorRows->size(); ++i)
            SetRow(choice.Use->XorRow + i, (*choice.XorRows)[i]);
        if (choice.Use->Enable == EnableKind::Row) SetEnable(signal, *choice.Use);
        if (choice.Use->HasOwnRows()) SetOwnRows(signal, choice);
    }

    // A term that nobody needs is false; its fuses to the outputs may stay for a later change.
    void SetSharedTerms() {
        const auto terms = fit_.SharedTerms();
        for (std::size_t row = 0; row < terms.size(); ++row) SetRow(row, terms[row]);
        const auto last = fit_.How().DropUnused ? mode_.SharedTerms : terms.size();
        for (const auto& cell : mode_.Cells) {
            const auto signal = fit_.SignalAt(cell.Pin);
            const auto* choice = signal && fit_.Choices[*signal] ? &*fit_.Choices[*signal] : nullptr;
            auto own = choice == nullptr ? Sum{} : *choice->Rows;
            Sort(own);
            for (const auto& use : cell.Uses) {
                for (std::size_t row = 0; use.OrFuse >= 0 && row < last; ++row) {
                    const bool has =
                        row < terms.size() && std::find(own.begin(), own.end(), terms[row]) != own.end();
                    fuses_[mode_.FirstFuse(row) + static_cast<std::size_t>(use.OrFuse)] = !has;
                }
            }
        }
    }

    void SetEnable(std::size_t signal, const CellUse& use) {
        const auto* enable = needs_.SumOf(signal, Input::Oe, false);
        if (enable != nullptr && enable->empty()) return;
        auto term = enable == nullptr ? Term{} : enable->front();
        // What the pin does is not the array's.
        const auto pin = use.EnableAndPin ? fit_.SignalAt(mode_.EnablePin) : std::nullopt;
        std::erase_if(term, [&](const Literal& literal) { return pin == literal.Signal; });
        SetRow(use.EnableRow, term);
    }

    // Reset makes the pin high, preset low; the design's act on the name.
    void SetOwnRows(std::size_t signal, const Choice& choice) {
        const auto set = [&](Input input, int row) {
            const auto* sum = needs_.Has(signal, input) ? needs_.SumOf(signal, input, false) : nullptr;
            if (sum != nullptr && !sum->empty()) SetRow(static_cast<std::size_t>(row), sum->front());
        };
        set(Input::Ck, choice.Use->ClockRow);
        set(Input::Ar, choice.Low ? choice.Use->ResetRow : choice.Use->PresetRow);
        set(Input::Ap, choice.Low ? choice.Use->PresetRow : choice.Use->ResetRow);
    }

    void SetShared(int row, const ModeFit::Shared& shared) {
        if (row < 0 || !shared.Signal) return;
        const auto* sum = needs_.SumOf(*shared.Signal, shared.From, false);
        if (!sum->empty()) SetRow(static_cast<std::size_t>(row), sum->front());
    }

    void SetRow(std::size_t row, const Term& term) {
        const auto first = mode_.FirstFuse(row);
        for (std::size_t i = 0; i < mode_.Columns; ++i) fuses_[first + i] = true;
        for (const auto& literal : term) fuses_[first + ColumnOf(literal)] = false;
    }

    // The even column of a pair carries the pin's level, or a register that holds the sum or its complement.
    std::size_t ColumnOf(const Literal& literal) const {
        const int pin = fit_.Pins[literal.Signal];
        int column = mode_.InputColumn(pin);
        bool evenMeans = !fit_.LowAt(literal.Signal);
        if (column < 0) column = mode_.CellAt(pin)->Column;
        const auto& choice = fit_.Choices[literal.Signal];
        const auto feedback = choice ? choice->Use->Feedback : FeedbackKind::Pin;
        if (feedback == FeedbackKind::NotSum) evenMeans = choice->Complemented;
        if (feedback == FeedbackKind::Sum) evenMeans = !choice->Complemented;
        const bool wanted = !literal.Negated;
        return static_cast<std::size_t>(column) + (wanted == evenMeans ? 0 : 1);
    }

    const Mode& mode_;
    const Needs& needs_;
    const ModeFit& fit_;
    std::vector<bool> fuses_;
};

}  // namespace

std::vector<bool> MakeFuseMap(const Device& device, const Mode& mode, const Needs& needs, const ModeFit& fit,
                              std::vector<Message>& messages) {
    auto fuses = Mapper(device, mode, needs, fit).Map();
    for (const auto& [number, value] : needs.Of().Fuses) {
        if (number < fuses.size()) {
            fuses[number] = value;
        } else {
            messages.push_back(model::MakeMessage(MessageCode("7210tc").Entry(), {},
                                                  std::to_string(number) + ", " + device.Mnemonic + " has " +
                                                      std::to_string(fuses.size()) + " fuses"));
        }
    }
    return fuses;
}

}  // namespace fit
