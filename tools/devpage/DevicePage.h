#pragma once

#include <string>
#include <vector>

#include "cpld/Device.h"
#include "fit/Device.h"

namespace devpage {

// docs/devices.md: what each device has, in the order of the library. Names of the same device share a
// section.
std::string DevicePage(const fit::Library& library);

// Its end: the complex devices and the pins of their packages.
std::string ComplexPage(const std::vector<cpld::Device>& devices);

}  // namespace devpage
