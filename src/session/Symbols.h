#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace session {

// The signal names of a design in order, positions from 1. Kept: the search compares exactly and the
// insertion without regard to case, and the search never comes out at the last of several names, so that a
// name greater than all goes in front of the last one.
class Symbols {
  public:
    static constexpr std::size_t MaxCount = 1'000'000;

    std::size_t Count() const { return count_; }
    const std::string& Item(std::size_t position) const;  // error 9 out of range
    void Clear();

    // Takes the name without a leading "!" and without what follows a point, unless its neighbour is the same
    // name in any case. Error 7 when the list is full.
    void InsertSymbol(std::string_view name);

    // Where the search for a name ends: its position, or that of a neighbour. 0 for an empty list and for a
    // list of one other name.
    std::size_t FindSymbolSlot(std::string_view name) const;

  private:
    // A list in blocks: neither a look at a position nor an insertion walks over all names.
    using Block = std::vector<std::string>;

    std::size_t BlockOf(std::size_t index) const;
    void InsertAt(std::size_t position, std::string_view name);
    void Split(std::size_t block);

    std::vector<Block> blocks_;
    std::vector<std::size_t> firsts_;  // index from 0 of the first name of each block
    std::size_t count_ = 0;
};

}  // namespace session
