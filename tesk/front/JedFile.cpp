#include "cpld/JedecText.h"
#include "fit/Jedec.h"
#include "front/Complex.h"
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

std::vector<std::pair<std::string, std::string>> HeaderOf(const Design& design) {
    std::vector<std::pair<std::string, std::string>> header;
    for (std::size_t i = 0; i < headerWords.size(); ++i)
        if (design.Head.Given[i]) header.emplace_back(headerWords[i].Name, design.Head.Texts[i]);
    return header;
}

// The pins stand in the map of a complex device in any case.
std::string ComplexJedec(const Design& design, const Fitted& fitted, bool secure) {
    const ComplexFit& complex = *fitted.Complex;
    auto map = cpld::JedecMapOf(complex.Device, fitted.Result.Fuses, complex.Names);
    map.Header = HeaderOf(design);
    map.Secure = secure || complex.Settled.Settings.ReadProtection == cpld::Switched::On;
    for (std::string& note : PlacesOf(fitted))
        if (note.starts_with("NODE")) map.Notes.push_back(std::move(note));
    return model::WriteJedec(map);
}

}  // namespace

std::string JedecText(const Design& design, const Options& options, const Fitted& fitted) {
    if (fitted.Complex) return ComplexJedec(design, fitted, options.Secure);
    fit::JedecNotes notes;
    notes.Secure = options.Secure;
    notes.Places = PlacesOf(fitted);
    notes.Header = HeaderOf(design);
    return fit::WriteJedec(fitted.Device, fitted.Result, notes);
}

}  // namespace front
