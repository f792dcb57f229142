#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cpld/Fitter.h"
#include "cpld/ProofView.h"
#include "front/ComplexName.h"
#include "front/Fitting.h"

// Designs in complex devices.
namespace front {

inline constexpr std::size_t kComplexLibraryBytes = 4u << 20;
// The path of their library, which lies beside that of the others.
std::string ComplexLibrary(std::string_view library);

struct ComplexFit {
    cpld::Device Device;
    cpld::Configuration Settled;
    cpld::DesignNames Names;
};

// As FitInto. `library` is the text of the library of complex devices; `secure`: they can't be read back.
std::optional<Fitted> FitIntoComplex(Design& design, std::string_view library, bool secure, Report& report);

// The fuses as the prover takes them; throws base::RunTimeError where they say nothing that is known.
cpld::ChipOfParts ReadComplex(const cpld::Device& device, const std::string& package,
                              const std::vector<bool>& fuses);

std::string ComplexReport(const ComplexFit& fit);

}  // namespace front
