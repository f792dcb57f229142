#include "logic/SparseMatrix.h"

#include <algorithm>

namespace logic {

namespace {

using Flags = std::vector<std::uint8_t>;

std::size_t At(int i) { return static_cast<std::size_t>(i); }

Word SignatureOf(std::span<const int> list) {
    Word signature = 0;
    for (const int i : list) signature |= Word{1} << ((static_cast<unsigned>(i) * 0x9E3779B1u) >> 26);
    return signature;
}

std::vector<Word> Signatures(const Lists& lists) {
    std::vector<Word> signatures(lists.Size());
    for (std::size_t i = 0; i < lists.Size(); ++i) signatures[i] = SignatureOf(lists[i]);
    return signatures;
}

std::span<const int> Shortest(std::span<const int> list, const Lists& across) {
    std::span<const int> shortest = across[list[0]];
    for (const int i : list.subspan(1))
        if (across[i].size() < shortest.size()) shortest = across[i];
    return shortest;
}

// The lists that keep a number (the others have -1), of their items those that keep one.
Lists Keep(const Lists& lists, const std::vector<int>& number, const std::vector<int>& itemNumber) {
    Lists kept;
    kept.Reserve(lists.Size(), lists.Entries());
    for (std::size_t i = 0; i < lists.Size(); ++i) {
        if (number[i] < 0) continue;
        for (const int item : lists[i])
            if (itemNumber[At(item)] >= 0) kept.Push(itemNumber[At(item)]);
        kept.Close();
    }
    return kept;
}

// New numbers in the old order for what is not gone.
std::vector<int> Renumbered(const Flags& gone) {
    std::vector<int> number(gone.size());
    int next = 0;
    for (std::size_t i = 0; i < gone.size(); ++i) number[i] = gone[i] != 0 ? -1 : next++;
    return number;
}

// `changed` of the kept lists: those that were, and those that have become shorter.
Flags KeepChanged(const Flags& changed, const std::vector<int>& number, const Lists& before,
                  const Lists& after) {
    Flags kept(after.Size());
    for (std::size_t i = 0; i < number.size(); ++i)
        if (number[i] >= 0)
            kept[At(number[i])] = changed[i] != 0 || before[i].size() != after[number[i]].size() ? 1 : 0;
    return kept;
}

// Drops rows and columns of a core. Remembers what has become shorter since the last look for dominance:
// nothing else can newly lie in another row or column.
class Reducer {
  public:
    explicit Reducer(Core& core)
        : core_(core), rowChanged_(core.Matrix.Rows.Size(), 1), columnChanged_(core.Original.size(), 1) {}

    void Decide(const std::vector<Fate>& fates, std::vector<int>& chosen) {
        Flags rowGone(core_.Matrix.Rows.Size()), columnGone(core_.Original.size());
        for (std::size_t c = 0; c < fates.size(); ++c) {
            if (fates[c] == Fate::Open) continue;
            columnGone[c] = 1;
            if (fates[c] != Fate::Taken) continue;
            chosen.push_back(core_.Original[c]);
            for (const int r : core_.Matrix.Columns[c]) rowGone[At(r)] = 1;
        }
        Compact(rowGone, columnGone);
    }

    bool TakeEssential(std::vector<int>& chosen) {
        const Lists& rows = core_.Matrix.Rows;
        std::vector<Fate> fates;
        for (std::size_t r = 0; r < rows.Size(); ++r) {
            if (rows[r].size() != 1) continue;
            fates.resize(core_.Original.size(), Fate::Open);
            fates[At(rows[r][0])] = Fate::Taken;
        }
        if (!fates.empty()) Decide(fates, chosen);
        return !fates.empty();
    }

    // Drops rows that hold another one; of equal ones the first stays.
    bool DropRows(Budget& budget) {
        const Lists& rows = core_.Matrix.Rows;
        Flags gone(rows.Size());
        const bool any = EachPair(rows, core_.Matrix.Columns, rowChanged_, gone, budget,
                                  [&](std::size_t inner, std::size_t outer) {
                                      if (rows[outer].size() == rows[inner].size() && outer < inner)
                                          return false;
                                      gone[outer] = 1;
                                      return true;
                                  });
        std::fill(rowChanged_.begin(), rowChanged_.end(), std::uint8_t{0});
        if (any) Compact(gone, Flags(core_.Original.size()));
        return any;
    }

    // Drops columns that lie in another one; of equal ones the first stays.
    bool DropColumns(Budget& budget) {
        const Lists& columns = core_.Matrix.Columns;
        Flags gone(columns.Size());
        const bool any = EachPair(columns, core_.Matrix.Rows, columnChanged_, gone, budget,
                                  [&](std::size_t inner, std::size_t outer) {
                                      if (columns[outer].size() == columns[inner].size() && outer > inner)
                                          return false;
                                      gone[inner] = 1;
                                      return true;
                                  });
        std::fill(columnChanged_.begin(), columnChanged_.end(), std::uint8_t{0});
        if (any) Compact(Flags(core_.Matrix.Rows.Size()), gone);
        return any;
    }

  private:
    // Calls drop(i, k) for the changed lists i that lie in a list k until i is gone; `across` are the
    // transposed lists. True if a call said so.
    template <typename Drop>
    static bool EachPair(const Lists& lists, const Lists& across, const Flags& changed, const Flags& gone,
                         Budget& budget, Drop drop) {
        const std::vector<Word> signatures = Signatures(lists);
        bool any = false;
        for (std::size_t i = 0; i < lists.Size(); ++i) {
            const std::span<const int> inner = lists[i];
            if (changed[i] == 0 || gone[i] != 0 || inner.empty()) continue;
            const std::span<const int> candidates = Shortest(inner, across);
            if (!budget.Spend(candidates.size() + inner.size())) return any;
            for (const int k : candidates) {
                const std::size_t other = At(k);
                if ((signatures[i] & ~signatures[other]) != 0 || other == i || gone[other] != 0) continue;
                const std::span<const int> outer = lists[other];
                if (outer.size() < inner.size() ||
                    !std::includes(outer.begin(), outer.end(), inner.begin(), inner.end()))
                    continue;
                any |= drop(i, other);
                if (gone[i] != 0) break;
            }
        }
        return any;
    }

    // Keeps the rows and columns not gone, renumbered; columns without a row go too.
    void Compact(const Flags& rowGone, Flags columnGone) {
        SparseMatrix& matrix = core_.Matrix;
        for (std::size_t c = 0; c < columnGone.size(); ++c) {
            const auto rows = matrix.Columns[c];
            if (std::all_of(rows.begin(), rows.end(), [&](int r) { return rowGone[At(r)] != 0; }))
                columnGone[c] = 1;
        }
        const std::vector<int> row = Renumbered(rowGone), column = Renumbered(columnGone);
        Lists rows = Keep(matrix.Rows, row, column), columns = Keep(matrix.Columns, column, row);
        rowChanged_ = KeepChanged(rowChanged_, row, matrix.Rows, rows);
        columnChanged_ = KeepChanged(columnChanged_, column, matrix.Columns, columns);
        matrix.Rows = std::move(rows);
        matrix.Columns = std::move(columns);
        std::erase_if(core_.Original, [&, c = std::size_t{0}](int) mutable { return column[c++] < 0; });
    }

    Core& core_;
    Flags rowChanged_, columnChanged_;
};

}  // namespace

Lists Lists::Transposed(std::size_t count) const {
    Lists result;
    result.ends_.assign(count + 1, 0);
    for (const int item : items_) ++result.ends_[At(item) + 1];
    for (std::size_t k = 0; k < count; ++k) result.ends_[k + 1] += result.ends_[k];
    result.items_.resize(items_.size());
    std::vector<std::size_t> next(result.ends_.begin(), result.ends_.end() - 1);
    for (std::size_t i = 0; i < Size(); ++i)
        for (const int item : (*this)[i]) result.items_[next[At(item)]++] = static_cast<int>(i);
    return result;
}

SparseMatrix SparseMatrix::Of(Lists rows, std::size_t columns) {
    SparseMatrix matrix;
    matrix.Columns = rows.Transposed(columns);
    matrix.Rows = std::move(rows);
    return matrix;
}

void Decide(Core& core, const std::vector<Fate>& fates, std::vector<int>& chosen) {
    Reducer(core).Decide(fates, chosen);
}

void Reduce(Core& core, std::vector<int>& chosen, Budget& budget) {
    Reducer reducer(core);
    for (bool changed = true; changed && !budget.Exhausted();) {
        changed = reducer.TakeEssential(chosen);
        changed |= reducer.DropRows(budget);
        changed |= reducer.DropColumns(budget);
        if (!budget.Spend(core.Matrix.Rows.Entries())) return;
    }
}

std::vector<Core> Components(const Core& core) {
    const auto& matrix = core.Matrix;
    std::vector<int> part(matrix.Columns.Size(), -1);
    std::vector<Core> parts;
    std::vector<std::uint8_t> seen(matrix.Rows.Size());
    for (std::size_t start = 0; start < part.size(); ++start) {
        if (part[start] >= 0) continue;
        std::vector<int> reached{static_cast<int>(start)};
        part[start] = static_cast<int>(parts.size());
        for (std::size_t i = 0; i < reached.size(); ++i)
            for (const int r : matrix.Columns[reached[i]]) {
                if (seen[At(r)] != 0) continue;
                seen[At(r)] = 1;
                for (const int c : matrix.Rows[r])
                    if (part[At(c)] < 0) part[At(c)] = part[start], reached.push_back(c);
            }
        parts.emplace_back();
    }
    std::vector<int> number(part.size());
    for (std::size_t c = 0; c < part.size(); ++c) {
        auto& original = parts[At(part[c])].Original;
        number[c] = static_cast<int>(original.size());
        original.push_back(core.Original[c]);
    }
    std::vector<Lists> rows(parts.size());
    for (std::size_t r = 0; r < matrix.Rows.Size(); ++r) {
        const auto row = matrix.Rows[r];
        if (row.empty()) continue;
        Lists& mine = rows[At(part[At(row[0])])];
        for (const int c : row) mine.Push(number[At(c)]);
        mine.Close();
    }
    for (std::size_t p = 0; p < parts.size(); ++p)
        parts[p].Matrix = SparseMatrix::Of(std::move(rows[p]), parts[p].Original.size());
    return parts;
}

}  // namespace logic
