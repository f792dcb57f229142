#pragma once

#include <vector>

#include "logic/Recursion.h"

namespace logic {

// A unate covering problem: choose columns so that every row has one. Lists ascend; columns of low number are
// preferred where it makes no difference.
struct SparseMatrix {
    std::vector<std::vector<int>> Rows;     // the columns of each row
    std::vector<std::vector<int>> Columns;  // the rows of each column

    static SparseMatrix Of(std::vector<std::vector<int>> rows, std::size_t columns);
    std::size_t Entries() const;
};

// What is left of a problem: the matrix, and the numbers that its columns have in the problem it comes from.
struct Core {
    SparseMatrix Matrix;
    std::vector<int> Original;
};

// Takes essential columns (appended to `chosen`, in the numbers of the original) and drops dominated rows and
// columns until nothing changes. Stops early, still right, when the budget runs out.
void Reduce(Core& core, std::vector<int>& chosen, Budget& budget);

// Removes columns: those taken, with the rows they cover, and those dropped. Numbers are the core's own.
enum class Fate : std::uint8_t { Open, Taken, Dropped };
void Decide(Core& core, const std::vector<Fate>& fates, std::vector<int>& chosen);

// The parts that share no row or column.
std::vector<Core> Components(const Core& core);

}  // namespace logic
