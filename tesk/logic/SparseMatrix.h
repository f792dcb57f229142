#pragma once

#include <span>
#include <vector>

#include "logic/Recursion.h"

namespace logic {

// Lists of ascending numbers, one behind the other in memory.
class Lists {
  public:
    std::size_t Size() const { return ends_.size() - 1; }
    std::size_t Entries() const { return items_.size(); }
    std::span<const int> operator[](std::size_t i) const {
        return {items_.data() + ends_[i], items_.data() + ends_[i + 1]};
    }
    std::span<const int> operator[](int i) const { return (*this)[static_cast<std::size_t>(i)]; }

    void Push(int item) { items_.push_back(item); }  // to the list that Close ends
    void Close() { ends_.push_back(items_.size()); }
    void Add(std::span<const int> list) {
        items_.insert(items_.end(), list.begin(), list.end());
        Close();
    }

    void Reserve(std::size_t lists, std::size_t entries) {
        ends_.reserve(lists + 1);
        items_.reserve(entries);
    }

    // List k of the result holds the numbers of the lists that have k; all items are less than `count`.
    Lists Transposed(std::size_t count) const;

  private:
    std::vector<std::size_t> ends_{0};  // of the list before: where each list starts
    std::vector<int> items_;
};

// A unate covering problem: choose columns so that every row has one. Columns of low number are preferred
// where it makes no difference.
struct SparseMatrix {
    Lists Rows;     // the columns of each row
    Lists Columns;  // the rows of each column

    static SparseMatrix Of(Lists rows, std::size_t columns);
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
