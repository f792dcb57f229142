#include "fit/Device.h"

#include <algorithm>

#include "base/Text.h"

namespace fit {

bool CellUse::SharesSum(const CellUse& other) const {
    return OrFuse < 0 && other.OrFuse < 0 && Terms > 0 && FirstRow == other.FirstRow &&
           Terms == other.Terms && XorRow == other.XorRow && XorTerms == other.XorTerms;
}

bool CellUse::Collides(const CellUse& other) const {
    const auto overlap = [](std::size_t a, std::size_t aCount, std::size_t b, std::size_t bCount) {
        return a < b + bCount && b < a + aCount;
    };
    if (SharesSum(other) || OrFuse >= 0 || other.OrFuse >= 0) return false;
    return overlap(FirstRow, Terms, other.FirstRow, other.Terms) ||
           overlap(FirstRow, Terms, other.XorRow, other.XorTerms) ||
           overlap(XorRow, XorTerms, other.FirstRow, other.Terms) ||
           overlap(XorRow, XorTerms, other.XorRow, other.XorTerms);
}

std::size_t Mode::Rows() const {
    std::size_t rows = 0;
    for (const int row : {ResetRow, PresetRow})
        if (row >= 0) rows = std::max(rows, static_cast<std::size_t>(row) + 1);
    for (const auto& cell : Cells)
        for (const auto& use : cell.Uses) rows = std::max({rows, use.EndRow(), use.EnableRow + 1});
    return rows;
}

const Cell* Mode::CellAt(int pin) const {
    const auto cell = std::find_if(Cells.begin(), Cells.end(), [&](const Cell& c) { return c.Pin == pin; });
    return cell == Cells.end() ? nullptr : &*cell;
}

int Mode::InputColumn(int pin) const {
    const auto input =
        std::find_if(Inputs.begin(), Inputs.end(), [&](const auto& i) { return i.first == pin; });
    return input == Inputs.end() ? -1 : input->second;
}

std::size_t Mode::FirstFuse(std::size_t row) const {
    const auto shared = std::min(row, SharedTerms);
    return shared * TermFuses + (row - shared) * Columns;
}

std::size_t Mode::RowCount(std::size_t fuses) const {
    return SharedTerms + (fuses - SharedTerms * TermFuses) / Columns;
}

bool Mode::PinEnables(UseKind kind) const {
    return EnablePin != 0 && AnyUse([&](const CellUse& use) {
               return use.Kind == kind && (use.Enable == EnableKind::Pin || use.EnableAndPin);
           });
}

const Device* Library::Find(std::string_view mnemonic) const {
    const auto same = [&](const Device& d) { return base::EqualNoCase(d.Mnemonic, mnemonic); };
    const auto device = std::find_if(Devices.begin(), Devices.end(), same);
    return device == Devices.end() ? nullptr : &*device;
}

}  // namespace fit
