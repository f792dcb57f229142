#pragma once

#include "cpld/Fitter.h"
#include "cpld/Search.h"

namespace cpld {

// Writes what was planned, where it was placed, into the fit.
void Assemble(const Device& device, const Plans& plans, const Globals& globals, const Problem& problem,
              const Layout& layout, Fit& fit);

}  // namespace cpld
