#pragma once

#include <vector>

#include "proof/Chip.h"

namespace cpld {

// A chip whose functions read pins, registers and the cells of `keep` alone: what other cells give is put
// into the terms that read it, such as foldbacks and buried parts of a function. The cells themselves stay
// where they are. Where a cell reads itself without a register its literal stays. Functions that become too
// large stay as they were; their cells are added to `tooLarge`.
proof::Chip Inlined(const proof::Chip& chip, const std::vector<bool>& keep,
                    std::vector<std::size_t>& tooLarge);

}  // namespace cpld
