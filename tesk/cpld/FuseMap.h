#pragma once

#include <vector>

#include "cpld/Configuration.h"

namespace cpld {

// The fuses of a configuration of this device.
std::vector<bool> WriteFuses(const Device& device, const Configuration& configuration);

// What the fuses say. Throws base::RunTimeError with the fuse where they say nothing that is known: another
// number of fuses, a reserved fuse changed, a value without a name, a switch or an enable with two signals, a
// term beside the term power that is off.
Configuration ReadConfiguration(const Device& device, const std::vector<bool>& fuses);

// The settings of the device alone, whatever the other fuses say.
Settings ReadSettings(const Device& device, const std::vector<bool>& fuses);

}  // namespace cpld
