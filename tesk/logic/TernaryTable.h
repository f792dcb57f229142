#pragma once

#include <vector>

#include "logic/Cover.h"

namespace logic {

// Finds the primes over a few inputs from the table of all 3^n cubes: each entry holds the outputs that are 1
// throughout the cube, and a cube is prime where no wider cube has the same outputs.
class TernaryTable {
  public:
    explicit TernaryTable(const Layout& layout)
        : layout_(layout), outputWords_(static_cast<std::size_t>(layout.OutputWords())), powers_{1} {}

    // Appends the primes of a function of these inputs, ascending: by the last input that differs, 0 before 1
    // before free.
    void Primes(const Cover& function, const std::vector<int>& inputs, Cover& primes);

  private:
    void Enter(const Word* cube, const std::vector<int>& inputs);
    void AddFree(std::size_t block, std::size_t blocks);
    template <int words>
    void Collect(const std::vector<int>& inputs, Cover& primes);
    template <int words>
    bool IsPrime(std::size_t index) const;
    void Emit(std::size_t index, const std::vector<int>& inputs, Cover& primes) const;

    Layout layout_;
    std::size_t outputWords_;
    std::vector<std::size_t> powers_, digits_;
    std::vector<Word> table_;
};

}  // namespace logic
