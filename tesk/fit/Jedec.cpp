#include "fit/Jedec.h"

#include <algorithm>

#include "model/Jedec.h"

namespace fit {
namespace {

std::size_t RowsOf(const Mode& mode) {
    std::size_t rows = 0;
    for (const int row : {mode.ResetRow, mode.PresetRow}) {
        if (row >= 0) rows = std::max(rows, static_cast<std::size_t>(row) + 1);
    }
    for (const auto& cell : mode.Cells) {
        for (const auto& use : cell.Uses)
            rows = std::max({rows, use.EnableRow + 1, use.FirstRow + use.Terms});
    }
    return rows;
}

}  // namespace

std::string WriteJedec(const Device& device, const Fit& fit, const JedecNotes& notes) {
    if (fit.Fuses.empty()) return {};
    model::JedecMap map;
    map.Device = fit.Mnemonic + (fit.Mode.empty() ? "" : ", mode " + fit.Mode);
    map.Header = notes.Header;
    map.Notes = notes.Places;
    map.Pins = device.Pins;
    map.Secure = notes.Secure;
    map.Fuses = fit.Fuses;
    for (const auto& mode : device.Modes) {
        if (mode.Name != fit.Mode) continue;
        const auto array = std::min(mode.FirstFuse(RowsOf(mode)), fit.Fuses.size());
        map.Lines = {{mode.FirstFuse(mode.SharedTerms), mode.TermFuses}, {array, mode.Columns}};
    }
    return model::WriteJedec(map);
}

}  // namespace fit
