#include "fit/Jedec.h"

#include <algorithm>

#include "model/Jedec.h"

namespace fit {

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
        const auto array = std::min(mode.FirstFuse(mode.Rows()), fit.Fuses.size());
        map.Lines = {{mode.FirstFuse(mode.SharedTerms), mode.TermFuses}, {array, mode.Columns}};
    }
    return model::WriteJedec(map);
}

}  // namespace fit
