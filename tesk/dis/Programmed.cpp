#include "dis/Programmed.h"

#include <algorithm>
#include <array>
#include <set>

namespace dis {
namespace {

using proof::Macrocell;
using proof::Signal;

bool IsFalse(const fit::Mode& mode, const std::vector<bool>& fuses, std::size_t row) {
    const auto first = mode.FirstFuse(row);
    for (auto i = first; i + 1 < first + mode.Columns; i += 2)
        if (!fuses[i] && !fuses[i + 1]) return true;
    return false;
}

bool IsBlank(const fit::Mode& mode, const std::vector<bool>& fuses, std::size_t row) {
    const auto first = fuses.begin() + static_cast<std::ptrdiff_t>(mode.FirstFuse(row));
    return std::none_of(first, first + static_cast<std::ptrdiff_t>(mode.Columns),
                        [](bool fuse) { return fuse; });
}

std::array<int, 3> OwnRows(const fit::CellUse& use) { return {use.ClockRow, use.ResetRow, use.PresetRow}; }

// A mode may have a fuse a row that enables its term: a disabled one is as good as a false one. How many
// there are that were connected.
std::size_t ApplyDisabledRows(const fit::Mode& mode, std::vector<bool>& fuses) {
    std::size_t connected = 0;
    for (const auto& run : mode.Fuses) {
        if (!mode.IsRowSwitch(run.First)) continue;
        for (std::size_t row = 0; row < run.Count; ++row) {
            if (fuses[run.First + row]) continue;
            fuses[run.First + row] = true;
            connected += IsBlank(mode, fuses, row) ? 0 : 1;
            std::fill_n(fuses.begin() + static_cast<std::ptrdiff_t>(mode.FirstFuse(row)), mode.Columns,
                        false);
        }
    }
    return connected;
}

// Beside a term that is always true the others have no effect.
void LeaveOutBesideTrue(proof::Sum& sum) {
    const bool isTrue = std::any_of(sum.begin(), sum.end(), [](const auto& term) { return term.empty(); });
    if (isTrue) sum = proof::Always();
}

// Lines of the array that no name stands for; their connections are told fuse by fuse.
void LeaveOutUnknownLines(Macrocell& cell) {
    for (auto* sum : SumsOf(cell))
        for (auto& term : *sum)
            std::erase_if(term, [](const proof::Literal& literal) {
                return literal.Of == Signal{Signal::Kind::Pin, 0};
            });
}

// The use that a macrocell was read as.
const fit::CellUse* UseOf(const Programmed& chip, std::size_t cell) {
    const auto kind =
        chip.At(cell).Register == proof::RegisterKind::None ? fit::UseKind::Output : fit::UseKind::Register;
    const auto has = [&](const fit::FuseRun& run) {
        const auto first = chip.Fuses.begin() + static_cast<std::ptrdiff_t>(run.First);
        return std::all_of(first, first + static_cast<std::ptrdiff_t>(run.Count),
                           [&](bool fuse) { return fuse == run.Value; });
    };
    for (const auto& use : chip.Mode->Cells[cell].Uses)
        if (use.Kind == kind && std::all_of(use.Fuses.begin(), use.Fuses.end(), has)) return &use;
    return nullptr;
}

// An output that is always on and nobody asked for: the compiler leaves it so where a design does not name
// it.
bool IsIdle(const Programmed& chip, std::size_t cell) {
    const auto& read = chip.At(cell);
    const auto& uses = chip.Mode->Cells[cell].Uses;
    const bool canBeInput = std::any_of(
        uses.begin(), uses.end(), [](const fit::CellUse& use) { return use.Kind == fit::UseKind::Input; });
    const auto& data = chip.Mode->Cells[cell];
    const bool isDefault = data.Polarity != fit::PolarityKind::Fuse || !chip.Fuses[data.PolarityFuse];
    return read.Rows.empty() && !read.Rows2 && read.Enable.From == proof::Source::Device && !canBeInput &&
           isDefault;
}

// An exclusive or with a constant is a sum, or its complement. That stands in the first rows, with the fuses,
// so that the compiler puts it there.
void FoldConstant(Programmed& chip, std::size_t index) {
    auto& cell = chip.Chip.Cells[index];
    const auto* use = UseOf(chip, index);
    if (!cell.Rows2 || use == nullptr || use->Terms != use->XorTerms) return;
    const auto isConstant = [](const proof::Sum& sum) { return sum.empty() || sum == proof::Always(); };
    const bool isSumBehind = isConstant(cell.Rows) && !isConstant(*cell.Rows2);
    if (isSumBehind || (cell.Rows.empty() && !cell.Rows2->empty())) {
        std::swap(cell.Rows, *cell.Rows2);
        const auto at = [&](std::size_t row) {
            return chip.Fuses.begin() + static_cast<std::ptrdiff_t>(chip.Mode->FirstFuse(row));
        };
        std::swap_ranges(at(use->FirstRow), at(use->FirstRow + use->Terms), at(use->XorRow));
    }
    if (!isConstant(*cell.Rows2)) return;
    cell.Inverted = cell.Inverted != !cell.Rows2->empty();
    cell.Rows2.reset();
}

void FindLive(Programmed& chip) {
    std::vector<std::size_t> open;
    const auto mark = [&](std::size_t cell) {
        if (chip.Live[cell]) return;
        chip.Live[cell] = true;
        open.push_back(cell);
    };
    chip.Live.assign(chip.Chip.Cells.size(), false);
    for (std::size_t i = 0; i < chip.Live.size(); ++i)
        if (chip.At(i).Pin != 0 && chip.At(i).Drives() && !IsIdle(chip, i)) mark(i);
    const auto read = [&](const Signal& signal) {
        if (signal.From == Signal::Kind::Cell) return mark(signal.At);
        for (std::size_t i = 0; i < chip.Live.size(); ++i)
            if (chip.At(i).Pin == static_cast<int>(signal.At) && chip.At(i).Drives()) mark(i);
    };
    while (!open.empty()) {
        const auto cell = open.back();
        open.pop_back();
        for (const auto* sum : SumsOf(chip.At(cell)))
            for (const auto& term : *sum)
                for (const auto& literal : term) read(literal.Of);
    }
}

// The same for the same terms, wherever they are.
proof::Sum InOrder(proof::Sum sum) {
    const auto key = [](const proof::Term& term) {
        std::vector<std::array<std::size_t, 2>> literals;
        for (const auto& literal : term) literals.push_back({literal.Of.At, literal.Negated ? 1u : 0u});
        return literals;
    };
    std::sort(sum.begin(), sum.end(),
              [&](const proof::Term& a, const proof::Term& b) { return key(a) < key(b); });
    sum.erase(std::unique(sum.begin(), sum.end()), sum.end());
    return sum;
}

// Rows that belong to what is live, without those that are false unless they are wanted.
std::vector<std::size_t> UsedRows(const Programmed& chip, bool withFalse) {
    std::vector<std::size_t> rows;
    const auto add = [&](std::size_t row) {
        if (withFalse || !IsFalse(*chip.Mode, chip.Fuses, row)) rows.push_back(row);
    };
    const auto addSum = [&](std::size_t first, std::size_t terms) {
        for (auto row = first; row < first + terms; ++row) add(row);
    };
    bool anyRegister = false;
    for (std::size_t i = 0; i < chip.Live.size(); ++i) {
        const auto* use = chip.Live[i] ? UseOf(chip, i) : nullptr;
        if (use == nullptr) continue;
        // Terms that macrocells share have no places of their own.
        if (use->OrFuse < 0) addSum(use->FirstRow, use->Terms);
        addSum(use->XorRow, use->XorTerms);
        for (const int row : OwnRows(*use))
            if (row >= 0) add(static_cast<std::size_t>(row));
        if (use->Enable == fit::EnableKind::Row) add(use->EnableRow);
        anyRegister = anyRegister || use->Kind == fit::UseKind::Register;
    }
    for (const int row : {chip.Mode->ResetRow, chip.Mode->PresetRow})
        if (anyRegister && row >= 0) add(static_cast<std::size_t>(row));
    return rows;
}

}  // namespace

std::optional<std::size_t> Programmed::LiveAt(std::size_t pin) const {
    for (std::size_t i = 0; i < Live.size(); ++i)
        if (Live[i] && At(i).Pin == static_cast<int>(pin)) return i;
    return std::nullopt;
}

bool Programmed::IsInArray(std::size_t fuse) const { return fuse < Mode->FirstFuse(Mode->Rows()); }

std::optional<Programmed> ReadProgrammed(const fit::Device& device, std::vector<bool> fuses,
                                         std::vector<Message>& messages) {
    Programmed chip;
    chip.Device = &device;
    fuses.resize(device.Fuses, false);
    for (const auto& mode : device.Modes) {
        auto enabled = fuses;
        const auto disabled = ApplyDisabledRows(mode, enabled);
        auto result = proof::ReadBack(device, enabled);
        if (!result.Found || result.Found->Mode != mode.Name) {
            if (&mode != &device.Modes.back()) continue;
            messages.insert(messages.end(), result.Messages.begin(), result.Messages.end());
            return std::nullopt;
        }
        chip.Mode = &mode;
        chip.Fuses = std::move(enabled);
        chip.DisabledRows = disabled;
        chip.Chip = std::move(*result.Found);
        break;
    }
    for (auto& cell : chip.Chip.Cells) {
        LeaveOutUnknownLines(cell);
        for (auto* sum : SumsOf(cell)) LeaveOutBesideTrue(*sum);
    }
    for (std::size_t i = 0; i < chip.Chip.Cells.size(); ++i) FoldConstant(chip, i);
    FindLive(chip);
    return chip;
}

proof::Sum InPlace(const Programmed& chip, std::size_t cell, bool second) {
    const auto& rows = second ? *chip.At(cell).Rows2 : chip.At(cell).Rows;
    const auto* use = UseOf(chip, cell);
    if (use == nullptr || rows == proof::Always()) return rows;
    if (use->OrFuse >= 0) return InOrder(rows);
    proof::Sum result;
    std::size_t next = 0;
    auto row = second ? use->XorRow : use->FirstRow;
    const auto end = row + (second ? use->XorTerms : use->Terms);
    for (; row < end && next < rows.size(); ++row) {
        result.push_back(rows[next]);
        if (!IsFalse(*chip.Mode, chip.Fuses, row)) ++next;
    }
    return next == rows.size() ? result : rows;
}

std::vector<std::pair<std::size_t, bool>> Differences(const Programmed& chip,
                                                      const std::vector<bool>& compiled, bool withFalse) {
    std::set<std::size_t> compared;
    for (const auto row : UsedRows(chip, withFalse))
        for (std::size_t i = 0; i < chip.Mode->Columns; ++i) compared.insert(chip.Mode->FirstFuse(row) + i);
    std::set<std::size_t> chosen;
    for (const auto& cell : chip.Mode->Cells) {
        if (cell.Polarity == fit::PolarityKind::Fuse) chosen.insert(cell.PolarityFuse);
        for (const auto& use : cell.Uses)
            for (const auto& run : use.Fuses) chosen.insert(run.First);
    }
    for (std::size_t fuse = 0; fuse < chip.Fuses.size(); ++fuse)
        if (!chip.IsInArray(fuse) && !chosen.contains(fuse)) compared.insert(fuse);
    std::vector<std::pair<std::size_t, bool>> differences;
    for (const auto fuse : compared)
        if (chip.Fuses[fuse] != compiled[fuse]) differences.emplace_back(fuse, chip.Fuses[fuse]);
    return differences;
}

std::size_t RowsWithoutEffect(const Programmed& chip) {
    const auto used = UsedRows(chip, false);
    const std::set<std::size_t> kept(used.begin(), used.end());
    auto count = chip.DisabledRows;
    for (std::size_t row = 0; row < chip.Mode->Rows(); ++row)
        count += !kept.contains(row) && !IsBlank(*chip.Mode, chip.Fuses, row) ? 1 : 0;
    return count;
}

}  // namespace dis
