#pragma once

#include "logic/SparseMatrix.h"

namespace logic {

// Which cubes of the pool can cover which points: each row lists the cubes (by number, ascending) that hold
// some point and output; together the rows stand for all points that the pool covers and the don't-care set
// does not. Points that need a superset of another point's cubes are left out where that is seen early.
// With `care` not null only points in its cubes count. False if work or entries exceed their bounds.
bool BuildTable(const Cover& pool, const Cover& dontCare, std::size_t entryLimit, Budget& budget, Lists& rows,
                const Cover* care = nullptr);

}  // namespace logic
