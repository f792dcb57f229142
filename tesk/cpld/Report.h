#pragma once

#include <string>

#include "cpld/Configuration.h"

namespace cpld {

// What a fitting report tells of a design in its device (.FIT): the package with its pins, the macrocells,
// the globals and switches, what is left, and the longest way through the logic. Lines end CR LF. The names'
// package is one of the device's.
std::string WriteReport(const Device& device, const Configuration& configuration, const DesignNames& names);

// The package from above, a name at each pin; "-": supply or unconnected.
std::string DrawPackage(const Package& package, const std::vector<std::string>& pinNames);

}  // namespace cpld
