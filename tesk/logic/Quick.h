#pragma once

#include "logic/Cover.h"

namespace logic {

// Merges cubes that differ in one input only (or, if `shared`, in their outputs only) and absorbs contained
// cubes, until nothing changes. The function stays the same point for point.
void MergeAdjacent(Cover& cover, bool shared);

// One cube for each output of each cube.
Cover SplitOutputs(const Cover& cover);

}  // namespace logic
