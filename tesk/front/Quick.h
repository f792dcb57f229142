#pragma once

#include "logic/Cover.h"

namespace front {

// A long sum of one output made shorter: neighbours are joined, terms that others contain go. Takes the time
// of sorting; beyond a bound some contained terms may stay.
logic::Cover QuickReduce(const logic::Cover& terms);

}  // namespace front
