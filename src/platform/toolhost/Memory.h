#pragma once

#include <cstdint>

namespace platform::toolhost {

// From now on this process may take so many bytes. A note is left where the program finds it when C++ code
// has been refused more, and when the machine runs short this process is the first to go.
void LimitMemory(std::uint64_t bytes);

}  // namespace platform::toolhost
