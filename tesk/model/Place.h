#pragma once

#include <cstdint>

namespace model {

// Where in the user's texts something stands.
struct Place {
    std::int32_t File = -1;   // index into the run's files, -1: nowhere, or told by who reports
    std::int32_t Line = 0;    // from 1, 0: the file as a whole
    std::int32_t Column = 0;  // from 1, 0: not known
    bool operator==(const Place&) const = default;
};

}  // namespace model
