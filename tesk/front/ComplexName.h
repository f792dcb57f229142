#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace front {

// How a complex device is named: "C1502T44", the package may be missing.
struct ComplexName {
    std::string Device, Package;
};
std::optional<ComplexName> SplitComplex(std::string_view mnemonic);  // nothing if it is none of them

}  // namespace front
