#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "model/Register.h"

namespace front {

// What stands behind the "." of a name. `None` is the bare name; `IO` and `DQ` stand on the right side only.
enum class Extension : std::uint8_t { None, D, T, J, K, S, R, L, CK, CE, LE, AR, AP, SR, SP, OE, IO, DQ };

std::string_view ExtensionName(Extension extension);          // "CK"; empty for None
std::optional<Extension> ExtensionOf(std::string_view name);  // any case

// D T J K S R L: a data input of a register or latch.
bool IsRegisterInput(Extension extension);

// What an equation of this extension gives. Not for `IO` and `DQ`.
model::Input InputOf(Extension extension);
// As in Variable::Register: D, T, J (JK), R (RS) or L; none for all else.
model::RegisterKind RegisterKindOf(Extension kind);

}  // namespace front
