#pragma once

#include "logic/SparseMatrix.h"

namespace logic {

// Bounds of a covering problem from both sides by Lagrangian relaxation with subgradient steps.
class Lagrange {
  public:
    explicit Lagrange(const SparseMatrix& matrix);

    // Up to `steps` steps; stops when no cover with fewer than `target` columns can exist, when bound and
    // cover meet, or when steps no longer help.
    void Improve(int steps, std::size_t target, Budget& budget);

    std::size_t LowerBound() const;
    const std::vector<int>& Best() const { return best_; }  // the smallest cover found, ascending
    void Offer(std::vector<int> cover);                     // a cover found elsewhere

    // The columns that every cover smaller than `target` must have or can't have.
    bool Penalties(std::size_t target, std::vector<Fate>& fates) const;
    double ReducedCost(int column) const { return reduced_[static_cast<std::size_t>(column)]; }

  private:
    double Relax();
    void Step(double value, double upper);
    void Heuristic();
    void CoverRest(std::vector<int>& cover, std::vector<int>& count);
    void Thin(std::vector<int>& cover, std::vector<int>& count) const;

    const SparseMatrix& matrix_;
    std::size_t entries_;
    std::vector<double> price_;    // of each row
    std::vector<double> reduced_;  // cost of each column less the prices of its rows
    std::vector<double> bestPrice_;
    std::vector<int> slack_;  // of each row: 1 less the columns that hold it
    double bestValue_ = 0;
    double agility_ = 1.0;
    std::vector<int> best_;
};

}  // namespace logic
