#pragma once

#include <string_view>

#include "sim/AbsFile.h"

// What reader and writer of the .ABS file share beside the words of the model.
namespace sim {

inline constexpr model::Words<NetKind, 4> NetWords{{{NetKind::Input, "INPUT"},
                                                    {NetKind::Output, "OUTPUT"},
                                                    {NetKind::Bidirectional, "BIDIRECTIONAL"},
                                                    {NetKind::Node, "NODE"}}};

bool IsNetName(std::string_view text);

// Whether a net of this kind and register can have a function of this input.
bool CanHave(const Net& net, Input input);

}  // namespace sim
