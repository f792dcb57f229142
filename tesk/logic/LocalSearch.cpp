#include "logic/LocalSearch.h"

#include <algorithm>
#include <limits>

namespace logic {

namespace {

std::size_t At(int i) { return static_cast<std::size_t>(i); }

class Search {
  public:
    Search(const SparseMatrix& matrix, const std::vector<int>& start, Budget& budget)
        : matrix_(matrix),
          budget_(budget),
          rows_(matrix.Rows.Size()),
          columns_(matrix.Columns.Size()),
          weights_(static_cast<std::int64_t>(rows_.size())) {
        for (std::size_t r = 0; r < rows_.size(); ++r) Open(static_cast<int>(r));
        for (std::size_t c = 0; c < columns_.size(); ++c)
            columns_[c].Score = static_cast<int>(matrix.Columns[c].size());
        for (const int c : start) Add(c);
        best_ = cover_;
    }

    std::vector<int> Run(std::size_t goal) {
        given_ = budget_.Left();
        for (int step = 1; best_.size() > goal && weights_ < maxWeights; ++step) {
            if (!budget_.Spend(cover_.size() / 4 + 1) || Idle(step)) break;
            while (open_.empty()) {
                best_ = cover_;
                lastStep_ = step;
                lastSpent_ = given_ - budget_.Left();
                if (best_.size() <= goal || cover_.empty()) break;
                Remove(Cheapest(noColumn));
            }
            if (best_.size() <= goal || cover_.empty()) break;
            const int out = Cheapest(tabu_);
            Remove(out);
            columns_[At(out)].Stamp = step;
            const int row = open_[Random() % open_.size()];
            const int in = BestFor(row);
            columns_[At(in)].Stamp = step;
            Add(in);
            tabu_ = in;
            RaiseWeights();
        }
        std::sort(best_.begin(), best_.end());
        return best_;
    }

  private:
    static constexpr int noColumn = -1;
    static constexpr int worst = std::numeric_limits<int>::min();
    static constexpr std::size_t idleSteps = 200;
    static constexpr std::int64_t maxWeights = 1 << 30;  // scores are sums of weights

    struct Row {
        int Weight = 1;
        int Count = 0;    // columns of the cover that have it
        int Columns = 0;  // their numbers, all in one by exclusive or: the number itself where there is one
        int Place = -1;   // among the open rows
    };
    // The score of a column in the cover is minus the weight of the rows that it alone covers, of another one
    // the weight of the open rows that it would cover.
    struct Column {
        int Score = 0;   // while it is not in the cover
        int Stamp = 0;   // the step that moved it last
        int Place = -1;  // in the cover
        bool CanAdd = true;
    };

    // Nothing found for long. The weights need some steps for each column to tell anything; a search that has
    // found something late is given more time to find the next.
    bool Idle(int step) const {
        return static_cast<std::size_t>(step - lastStep_) > idleSteps * cover_.size() &&
               given_ - budget_.Left() - lastSpent_ > (given_ + lastSpent_) / 4;
    }

    std::uint32_t Random() {
        state_ = state_ * 6364136223846793005u + 1442695040888963407u;
        return static_cast<std::uint32_t>(state_ >> 33);
    }

    void Open(int row) {
        rows_[At(row)].Place = static_cast<int>(open_.size());
        open_.push_back(row);
    }

    void Close(int row) {
        const int place = rows_[At(row)].Place;
        open_[At(place)] = open_.back();
        rows_[At(open_.back())].Place = place;
        open_.pop_back();
    }

    void Add(int column) {
        Column& added = columns_[At(column)];
        added.Place = static_cast<int>(cover_.size());
        cover_.push_back(column);
        scores_.push_back(-added.Score);
        stamps_.push_back(added.Stamp);
        for (const int r : matrix_.Columns[column]) {
            Row& row = rows_[At(r)];
            const int before = row.Count++;
            if (before == 0) {
                Close(r);
                Touch(r, column, -row.Weight);
            } else if (before == 1) {
                scores_[At(columns_[At(row.Columns)].Place)] += row.Weight;
            }
            row.Columns ^= column;
        }
    }

    void Remove(int column) {
        Column& removed = columns_[At(column)];
        const std::size_t place = At(removed.Place);
        removed.Score = -scores_[place];
        removed.Place = -1;
        removed.CanAdd = false;
        if (place + 1 < cover_.size()) {
            cover_[place] = cover_.back();
            scores_[place] = scores_.back();
            stamps_[place] = stamps_.back();
            columns_[At(cover_[place])].Place = static_cast<int>(place);
        }
        cover_.pop_back();
        scores_.pop_back();
        stamps_.pop_back();
        for (const int r : matrix_.Columns[column]) {
            Row& row = rows_[At(r)];
            row.Columns ^= column;
            const int after = --row.Count;
            if (after == 0) {
                Open(r);
                Touch(r, column, row.Weight);
            } else if (after == 1) {
                scores_[At(columns_[At(row.Columns)].Place)] -= row.Weight;
            }
        }
    }

    // None of an open row's columns is in the cover.
    void Touch(int row, int except, int change) {
        const std::span<const int> list = matrix_.Rows[row];
        budget_.Spend(list.size() / 2);
        for (const int c : list) {
            if (c == except) continue;
            columns_[At(c)].Score += change;
            columns_[At(c)].CanAdd = true;
        }
    }

    // The column of the cover that is missed least, of equal ones that which was moved the longest time ago.
    int Cheapest(int tabu) {
        const bool heed = tabu != noColumn && columns_[At(tabu)].Place >= 0 && cover_.size() > 1;
        int hidden = worst;
        if (heed) std::swap(hidden, scores_[At(columns_[At(tabu)].Place)]);
        int most = worst;
        for (const int score : scores_) most = std::max(most, score);
        std::size_t best = 0;
        int oldest = std::numeric_limits<int>::max();
        for (std::size_t i = 0; i < scores_.size(); ++i)
            if (scores_[i] == most && stamps_[i] < oldest) oldest = stamps_[i], best = i;
        if (heed) scores_[At(columns_[At(tabu)].Place)] = hidden;
        return cover_[best];
    }

    int BestFor(int row) const {
        int best = noColumn;
        for (const int c : matrix_.Rows[row]) {
            const Column& column = columns_[At(c)];
            if (!column.CanAdd) continue;
            if (best >= 0) {
                const Column& other = columns_[At(best)];
                if (column.Score < other.Score ||
                    (column.Score == other.Score && column.Stamp >= other.Stamp))
                    continue;
            }
            best = c;
        }
        return best >= 0 ? best : matrix_.Rows[row][0];
    }

    void RaiseWeights() {
        weights_ += static_cast<std::int64_t>(open_.size());
        for (const int r : open_) {
            ++rows_[At(r)].Weight;
            const std::span<const int> list = matrix_.Rows[r];
            budget_.Spend(list.size() / 4);
            for (const int c : list) ++columns_[At(c)].Score;
        }
    }

    const SparseMatrix& matrix_;
    Budget& budget_;
    std::vector<Row> rows_;
    std::vector<Column> columns_;
    std::vector<int> cover_, scores_, stamps_;  // side by side: what Cheapest looks through
    std::vector<int> open_, best_;
    int tabu_ = noColumn;
    int lastStep_ = 0;  // when a smaller cover was found
    std::uint64_t given_ = 0, lastSpent_ = 0;
    std::int64_t weights_;  // of all rows
    std::uint64_t state_ = 88172645463325252u;
};

}  // namespace

std::vector<int> SearchCover(const SparseMatrix& matrix, const std::vector<int>& start, std::size_t goal,
                             Budget& budget) {
    return Search(matrix, start, budget).Run(goal);
}

}  // namespace logic
