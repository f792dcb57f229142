#pragma once

#include "front/Report.h"
#include "front/Source.h"
#include "front/Syntax.h"

namespace front {

// Reads the expanded source; faults are reported, a statement with one is left out.
void Parse(const Source& source, Report& report, Syntax& syntax);

// A word that the language keeps for itself, in any case.
bool IsReserved(std::string_view word);

}  // namespace front
