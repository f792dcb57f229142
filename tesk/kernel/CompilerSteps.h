#pragma once

#include "front/Run.h"

namespace kernel {

// The five stages of the compiler, one after the other. False if errors ended it.
bool RunCompiler(front::Run& run);

}  // namespace kernel
