#pragma once

#include "cpld/Configuration.h"
#include "model/Jedec.h"

namespace cpld {

// A fuse map with the device and its pins as notes.
model::JedecMap JedecMapOf(const Device& device, std::vector<bool> fuses, const DesignNames& names);

// The device whose map has so many fuses; null: none of them.
const Device* DeviceOfFuses(const std::vector<Device>& devices, std::size_t fuses);

}  // namespace cpld
