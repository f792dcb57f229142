#pragma once

#include "logic/Recursion.h"

namespace logic {

// Widens implicants to primes. What a cube must not meet is known either as off-set cubes or, where that set
// is too large, as the cubes that it has to lie in.
class Expander {
  public:
    // `off` may be null; then `function` (on-set and don't cares) is asked. Both outlive this object.
    Expander(const Cover* off, const Cover& function, Budget& budget);

    bool IsImplicant(const Word* cube);

    // Widens the cube to a prime, inputs in the given order; outputs before the inputs if `outputsFirst`,
    // otherwise behind them. The cube is left as it is where the budget runs out.
    void Widen(Word* cube, const std::vector<int>& order, bool outputsFirst);

    // Widens the cube step by step around other cubes of the cover while the result is an implicant, each
    // time so that most cubes of the cover come to lie in it.
    void WidenAround(Word* cube, const Cover& cover);

  private:
    void WidenByOff(Word* cube, const std::vector<int>& order);
    void AddOutputsByOff(Word* cube);
    void WidenByTest(Word* cube, const std::vector<int>& order);
    void AddOutputsByTest(Word* cube);
    void FindConflicts(const Word* cube);
    void FindMetOutputs(const Word* cube);
    void FindBlocked(const Word* cube);
    bool Blocked(const Word* cube, const Word* other) const;
    bool Raise(int input);
    std::size_t CountIn(const Word* cube, const Cover& cover);

    const Cover* off_;
    Layout layout_;
    CubeList function_;
    Budget& budget_;
    RegionSearch search_;
    std::vector<Word> conflicts_;  // for each off-set cube of common outputs the inputs that keep it apart
    std::vector<Word> blocked_;    // inputs that alone keep some off-set cube apart
    std::vector<Word> scratch_, best_, blockedParts_;
};

}  // namespace logic
