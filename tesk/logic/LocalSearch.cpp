#include "logic/LocalSearch.h"

#include <algorithm>

namespace logic {

namespace {

std::size_t At(int i) { return static_cast<std::size_t>(i); }

class Search {
  public:
    Search(const SparseMatrix& matrix, const std::vector<int>& start, Budget& budget)
        : matrix_(matrix),
          budget_(budget),
          weight_(matrix.Rows.size(), 1),
          count_(matrix.Rows.size()),
          openPlace_(matrix.Rows.size(), -1),
          score_(matrix.Columns.size()),
          stamp_(matrix.Columns.size()),
          place_(matrix.Columns.size(), -1),
          canAdd_(matrix.Columns.size(), 1) {
        for (std::size_t r = 0; r < count_.size(); ++r) Open(static_cast<int>(r));
        for (std::size_t c = 0; c < score_.size(); ++c)
            score_[c] = static_cast<long>(matrix.Columns[c].size());
        for (const int c : start) Add(c);
        best_ = cover_;
    }

    std::vector<int> Run(std::size_t goal) {
        for (long step = 1; best_.size() > goal && budget_.Spend(cover_.size() / 4 + 1); ++step) {
            while (open_.empty()) {
                best_ = cover_;
                if (best_.size() <= goal || cover_.empty()) break;
                Remove(Cheapest(false));
            }
            if (best_.size() <= goal || cover_.empty()) break;
            const int out = Cheapest(true);
            Remove(out);
            stamp_[At(out)] = step;
            const int row = open_[Random() % open_.size()];
            const int in = BestFor(row);
            Add(in);
            stamp_[At(in)] = step;
            tabu_ = in;
            RaiseWeights();
        }
        std::sort(best_.begin(), best_.end());
        return best_;
    }

  private:
    std::uint32_t Random() {
        state_ = state_ * 6364136223846793005u + 1442695040888963407u;
        return static_cast<std::uint32_t>(state_ >> 33);
    }

    void Open(int row) {
        openPlace_[At(row)] = static_cast<int>(open_.size());
        open_.push_back(row);
    }

    void Close(int row) {
        const int place = openPlace_[At(row)];
        open_[At(place)] = open_.back();
        openPlace_[At(open_.back())] = place;
        open_.pop_back();
        openPlace_[At(row)] = -1;
    }

    // The score of a column in the cover is minus the weight of the rows that it alone covers, of another one
    // the weight of the open rows that it would cover.
    void Add(int column) {
        place_[At(column)] = static_cast<int>(cover_.size());
        cover_.push_back(column);
        score_[At(column)] = -score_[At(column)];
        for (const int r : matrix_.Columns[At(column)]) {
            const int before = count_[At(r)]++;
            if (before == 0) {
                Close(r);
                Touch(r, column, -weight_[At(r)]);
            } else if (before == 1) {
                score_[At(OtherCover(r, column))] += weight_[At(r)];
            }
        }
    }

    void Remove(int column) {
        const int place = place_[At(column)];
        cover_[At(place)] = cover_.back();
        place_[At(cover_.back())] = place;
        cover_.pop_back();
        place_[At(column)] = -1;
        score_[At(column)] = -score_[At(column)];
        canAdd_[At(column)] = 0;
        for (const int r : matrix_.Columns[At(column)]) {
            const int after = --count_[At(r)];
            if (after == 0) {
                Open(r);
                Touch(r, column, weight_[At(r)]);
            } else if (after == 1) {
                score_[At(OtherCover(r, column))] -= weight_[At(r)];
            }
        }
    }

    void Touch(int row, int except, long change) {
        budget_.Spend(matrix_.Rows[At(row)].size() / 2);
        for (const int c : matrix_.Rows[At(row)]) {
            if (c == except) continue;
            score_[At(c)] += change;
            canAdd_[At(c)] = 1;
        }
    }

    int OtherCover(int row, int except) const {
        for (const int c : matrix_.Rows[At(row)])
            if (c != except && place_[At(c)] >= 0) return c;
        return except;
    }

    bool Better(int a, int b) const {
        return score_[At(a)] != score_[At(b)] ? score_[At(a)] > score_[At(b)] : stamp_[At(a)] < stamp_[At(b)];
    }

    int Cheapest(bool heedTabu) const {
        int best = -1;
        for (const int c : cover_)
            if ((!heedTabu || c != tabu_ || cover_.size() == 1) && (best < 0 || Better(c, best))) best = c;
        return best;
    }

    int BestFor(int row) const {
        int best = -1;
        for (const int c : matrix_.Rows[At(row)])
            if (canAdd_[At(c)] != 0 && (best < 0 || Better(c, best))) best = c;
        return best >= 0 ? best : matrix_.Rows[At(row)][0];
    }

    void RaiseWeights() {
        for (const int r : open_) {
            ++weight_[At(r)];
            budget_.Spend(matrix_.Rows[At(r)].size() / 4);
            for (const int c : matrix_.Rows[At(r)]) ++score_[At(c)];
        }
    }

    const SparseMatrix& matrix_;
    Budget& budget_;
    std::vector<long> weight_;
    std::vector<int> count_, openPlace_, open_;
    std::vector<long> score_, stamp_;
    std::vector<int> place_, cover_, best_;
    std::vector<std::uint8_t> canAdd_;
    int tabu_ = -1;
    std::uint64_t state_ = 88172645463325252u;
};

}  // namespace

std::vector<int> SearchCover(const SparseMatrix& matrix, const std::vector<int>& start, std::size_t goal,
                             Budget& budget) {
    return Search(matrix, start, budget).Run(goal);
}

}  // namespace logic
