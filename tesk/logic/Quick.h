#pragma once

#include "logic/Cover.h"

namespace logic {

// Merges cubes that differ in one input only (or, if `shared`, in their outputs only) and absorbs contained
// cubes, until nothing changes. The function stays the same point for point.
void MergeAdjacent(Cover& cover, bool shared);

// Makes one cube of those with the same inputs. True if there were any.
bool MergeOutputs(Cover& cover);

// One cube for each output of each cube.
Cover SplitOutputs(const Cover& cover);

}  // namespace logic
