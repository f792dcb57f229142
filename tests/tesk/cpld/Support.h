#pragma once

#include <random>
#include <string>

#include "cpld/Configuration.h"

namespace test {

const std::string& LibraryText();
const std::vector<cpld::Device>& Devices();  // of the library that is installed

// Any values of all options, terms, switches and globals.
cpld::Configuration RandomConfiguration(const cpld::Device& device, std::mt19937& random);

}  // namespace test
