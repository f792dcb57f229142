#pragma once

#include <string_view>

#include "front/Report.h"

namespace kernel {

// Reports the exception that is being handled: memory as a design too large, all else as a fault of our own.
// `where` is the part of the chain. Throws nothing.
void ReportFault(front::Report& said, std::string_view where) noexcept;

// What the work gives; false if it could not go on, which is then reported.
template <typename Work>
bool Guarded(front::Report& said, std::string_view where, Work work) noexcept {
    try {
        return work();
    } catch (...) {
        ReportFault(said, where);
        return false;
    }
}

// The last word of an entry.
void SayStatus(front::Report& said, std::string_view text) noexcept;

}  // namespace kernel
