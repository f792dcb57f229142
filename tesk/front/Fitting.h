#pragma once

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "fit/Fitter.h"
#include "front/Design.h"
#include "front/Options.h"
#include "front/Report.h"

namespace front {

struct ComplexFit;

// A design in a device.
struct Fitted {
    std::shared_ptr<const ComplexFit> Complex;  // of a complex device; `Device` is empty then
    fit::Device Device;
    fit::Design Input;
    fit::Fit Result;
    std::vector<std::size_t> Signals;  // index into Input.Signals of each variable of the design
};

// The design as the fitter takes it, with the signal of each variable.
fit::Design ToFitter(const Design& design, std::vector<std::size_t>& signals);
fit::Options ToFitter(const Options& options);

// Fits the design and notes in it what came out: pins, terms available, the sums that were taken, power-up
// states, and what the device adds to the equations. Faults are reported where the name that they are about
// is declared. `library` is the text of a device library; the device is the design's.
std::optional<Fitted> FitInto(Design& design, std::string_view library, const Options& options,
                              Report& report);

// Messages of the device library, the fitter and the proof, where the name that they are about is declared.
void ReportWhereDeclared(const Design& design, std::vector<Message> messages, Report& report);

// Whether the pin of a name with functions is low while the name is asserted.
bool IsLow(const fit::Placement& placement);

}  // namespace front
