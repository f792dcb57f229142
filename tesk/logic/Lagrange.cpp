#include "logic/Lagrange.h"

#include <algorithm>
#include <cmath>
#include <queue>

namespace logic {

namespace {
constexpr double epsilon = 1e-6;
std::size_t At(int i) { return static_cast<std::size_t>(i); }
}  // namespace

Lagrange::Lagrange(const SparseMatrix& matrix)
    : matrix_(matrix),
      entries_(matrix.Rows.Entries()),
      price_(matrix.Rows.Size()),
      reduced_(matrix.Columns.Size()),
      slack_(price_.size()) {
    for (std::size_t r = 0; r < price_.size(); ++r) {  // dual feasible: no column's rows exceed its cost
        std::size_t longest = 1;
        for (const int c : matrix_.Rows[r]) longest = std::max(longest, matrix_.Columns[c].size());
        price_[r] = 1.0 / static_cast<double>(longest);
    }
    bestPrice_ = price_;
    bestValue_ = Relax();
    Heuristic();
}

double Lagrange::Relax() {
    double value = 0;
    std::fill(reduced_.begin(), reduced_.end(), 1.0);
    for (std::size_t r = 0; r < price_.size(); ++r) {
        const double price = price_[r];
        if (price == 0) continue;
        value += price;
        for (const int c : matrix_.Rows[r]) reduced_[At(c)] -= price;
    }
    for (const double cost : reduced_)
        if (cost < 0) value += cost;
    return value;
}

std::size_t Lagrange::LowerBound() const {
    return static_cast<std::size_t>(std::max(0.0, std::ceil(bestValue_ - epsilon)));
}

void Lagrange::Offer(std::vector<int> cover) {
    if (best_.empty() || cover.size() < best_.size()) best_ = std::move(cover);
}

void Lagrange::Step(double value, double upper) {
    double norm = 0;
    std::fill(slack_.begin(), slack_.end(), 1);
    for (std::size_t c = 0; c < reduced_.size(); ++c)
        if (reduced_[c] < 0)
            for (const int r : matrix_.Columns[c]) --slack_[At(r)];
    for (std::size_t r = 0; r < slack_.size(); ++r) {
        if (slack_[r] < 0 && price_[r] <= 0) slack_[r] = 0;
        norm += static_cast<double>(slack_[r]) * slack_[r];
    }
    if (norm == 0) return;
    const double step = agility_ * std::max(upper - value, 0.5) / norm;
    for (std::size_t r = 0; r < slack_.size(); ++r) price_[r] = std::max(0.0, price_[r] + step * slack_[r]);
}

void Lagrange::Improve(int steps, std::size_t target, Budget& budget) {
    int idle = 0;
    for (int i = 0; i < steps && budget.Spend(entries_ / 2 + 1); ++i) {
        const std::size_t lower = LowerBound();
        if (lower >= std::min(target, best_.size()) || agility_ < 0.005) break;
        Step(bestValue_, 1.02 * static_cast<double>(std::min(best_.size(), target)));
        const double value = Relax();
        if (value > bestValue_ + 1e-4) {
            bestValue_ = value;
            bestPrice_ = price_;
            idle = 0;
        } else if (++idle >= 12) {
            idle = 0;
            agility_ /= 2;
            price_ = bestPrice_;
            Relax();
        }
        if (i % 8 == 7) Heuristic();
    }
    price_ = bestPrice_;
    Relax();
    Heuristic();
}

// A cover from the columns of low reduced cost.
void Lagrange::Heuristic() {
    std::vector<int> cover;
    std::vector<int> count(matrix_.Rows.Size());
    for (std::size_t c = 0; c < reduced_.size(); ++c) {
        if (reduced_[c] > 0) continue;
        bool needed = false;
        for (const int r : matrix_.Columns[c]) needed |= count[At(r)] == 0;
        if (!needed) continue;
        cover.push_back(static_cast<int>(c));
        for (const int r : matrix_.Columns[c]) ++count[At(r)];
    }
    CoverRest(cover, count);
    Thin(cover, count);
    std::sort(cover.begin(), cover.end());
    Offer(std::move(cover));
}

// Lazy greedy: always the column with the most open rows for its reduced cost.
void Lagrange::CoverRest(std::vector<int>& cover, std::vector<int>& count) {
    const auto worth = [this](int open, std::size_t c) { return open / (std::max(reduced_[c], 0.0) + 0.02); };
    const auto gain = [&](int c) {
        int open = 0;
        for (const int r : matrix_.Columns[c]) open += count[At(r)] == 0 ? 1 : 0;
        return worth(open, At(c));
    };
    std::vector<std::pair<double, int>> gains;
    std::vector<int> open(reduced_.size());
    for (std::size_t r = 0; r < count.size(); ++r)
        if (count[r] == 0)
            for (const int c : matrix_.Rows[r]) ++open[At(c)];
    for (std::size_t c = 0; c < open.size(); ++c)
        if (open[c] > 0) gains.emplace_back(worth(open[c], c), -static_cast<int>(c));
    std::priority_queue queue(std::less<std::pair<double, int>>(), std::move(gains));
    while (!queue.empty()) {
        const auto [old, negative] = queue.top();
        queue.pop();
        const double now = gain(-negative);
        if (now == 0.0) continue;
        if (!queue.empty() && now < queue.top().first) {
            queue.emplace(now, negative);
            continue;
        }
        cover.push_back(-negative);
        for (const int r : matrix_.Columns[-negative]) ++count[At(r)];
    }
}

// Drops columns that the others make needless, the dearest first.
void Lagrange::Thin(std::vector<int>& cover, std::vector<int>& count) const {
    std::sort(cover.begin(), cover.end(), [this](int a, int b) {
        return reduced_[At(a)] != reduced_[At(b)] ? reduced_[At(a)] > reduced_[At(b)] : a > b;
    });
    std::erase_if(cover, [&](int c) {
        const auto rows = matrix_.Columns[c];
        if (std::any_of(rows.begin(), rows.end(), [&](int r) { return count[At(r)] == 1; })) return false;
        for (const int r : rows) --count[At(r)];
        return true;
    });
}

bool Lagrange::Penalties(std::size_t target, std::vector<Fate>& fates) const {
    fates.assign(reduced_.size(), Fate::Open);
    bool any = false;
    const double limit = static_cast<double>(target) - 1 + epsilon;
    for (std::size_t c = 0; c < reduced_.size(); ++c) {
        if (reduced_[c] > 0 && bestValue_ + reduced_[c] > limit) fates[c] = Fate::Dropped;
        if (reduced_[c] < 0 && bestValue_ - reduced_[c] > limit) fates[c] = Fate::Taken;
        any |= fates[c] != Fate::Open;
    }
    return any;
}

}  // namespace logic
