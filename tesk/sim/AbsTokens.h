#pragma once

#include <optional>
#include <string_view>

#include "sim/AbsFile.h"

// The words of the .ABS file, one table for each kind, driven by reader and writer.
namespace sim {

std::string_view Word(NetKind kind);
std::string_view Word(RegisterKind kind);
std::string_view Word(Input input);

std::optional<NetKind> NetKindOf(std::string_view word);
std::optional<RegisterKind> RegisterKindOf(std::string_view word);
std::optional<Input> InputOf(std::string_view word);

bool IsNetName(std::string_view text);

// Whether a net of this kind and register can have a function of this input.
bool CanHave(const Net& net, Input input);

}  // namespace sim
