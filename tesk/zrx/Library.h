#pragma once

#include <cstdint>
#include <functional>

#include "base/PartitionInterface.h"
#include "zrx/Work.h"

namespace zrx {

// Runs the work of a library on its record. A fault of its own becomes a line; the result is then 0.
std::int32_t Run(const base::ZrxRecord* record, const std::function<std::size_t(const Call&)>& work);

}  // namespace zrx
