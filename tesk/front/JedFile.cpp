#include "fit/Jedec.h"
#include "front/Outputs.h"
#include "model/Jedec.h"

namespace front {

namespace {

// Of names that the fitter placed, and of nodes, whose level it chose.
std::vector<std::string> PlacesOf(const Fitted& fitted) {
    std::vector<std::string> notes;
    for (std::size_t i = 0; i < fitted.Input.Signals.size(); ++i) {
        const fit::Signal& signal = fitted.Input.Signals[i];
        const fit::Placement& placement = fitted.Result.Placements[i];
        if (placement.Pin == 0 || (signal.Pin != 0 && !signal.Node)) continue;
        const bool isLow = signal.Node && IsLow(placement);
        notes.push_back(model::WritePlaceNote({placement.Pin, signal.Node, isLow, signal.Name}));
    }
    return notes;
}

}  // namespace

std::string JedecText(const Design& design, const Options& options, const Fitted& fitted) {
    fit::JedecNotes notes;
    notes.Secure = options.Secure;
    notes.Places = PlacesOf(fitted);
    for (std::size_t i = 0; i < headerWords.size(); ++i)
        if (design.Head.Given[i]) notes.Header.emplace_back(headerWords[i].Name, design.Head.Texts[i]);
    return fit::WriteJedec(fitted.Device, fitted.Result, notes);
}

}  // namespace front
