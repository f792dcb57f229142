#pragma once

#include <string>

#include "fit/Device.h"

namespace devpage {

// docs/devices.md: what each device has, in the order of the library. Names of the same device share a
// section.
std::string DevicePage(const fit::Library& library);

}  // namespace devpage
