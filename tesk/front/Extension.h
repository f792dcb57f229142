#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace front {

// What stands behind the "." of a name. `None` is the bare name; `IO` and `DQ` stand on the right side only.
enum class Extension : std::uint8_t { None, D, T, J, K, S, R, L, CK, CE, LE, AR, AP, SR, SP, OE, IO, DQ };

std::string_view ExtensionName(Extension extension);          // "CK"; empty for None
std::optional<Extension> ExtensionOf(std::string_view name);  // any case

// D T J K S R L: a data input of a register or latch.
bool IsRegisterInput(Extension extension);

}  // namespace front
