#include "logic/SparseMatrix.h"

#include <algorithm>
#include <numeric>

namespace logic {

namespace {

using Lists = std::vector<std::vector<int>>;

std::size_t At(int i) { return static_cast<std::size_t>(i); }

Word SignatureOf(const std::vector<int>& list) {
    Word signature = 0;
    for (const int i : list) signature |= Word{1} << ((static_cast<unsigned>(i) * 0x9E3779B1u) >> 26);
    return signature;
}

std::vector<Word> Signatures(const Lists& lists) {
    std::vector<Word> signatures(lists.size());
    std::transform(lists.begin(), lists.end(), signatures.begin(), SignatureOf);
    return signatures;
}

const std::vector<int>& Shortest(const std::vector<int>& list, const Lists& across) {
    return across[At(*std::min_element(list.begin(), list.end(), [&across](int a, int b) {
        return across[At(a)].size() < across[At(b)].size();
    }))];
}

// Marks in `gone` each list that holds another one (rows), `across` being the transposed lists.
bool DropSupersets(const Lists& lists, const Lists& across, std::vector<std::uint8_t>& gone, Budget& budget) {
    const std::vector<Word> signatures = Signatures(lists);
    bool any = false;
    for (std::size_t i = 0; i < lists.size(); ++i) {
        if (gone[i] != 0 || lists[i].empty()) continue;
        const std::vector<int>& candidates = Shortest(lists[i], across);
        if (!budget.Spend(candidates.size() + lists[i].size())) return any;
        for (const int k : candidates) {
            const std::size_t other = At(k);
            if (other == i || gone[other] != 0 || (signatures[i] & ~signatures[other]) != 0) continue;
            if (lists[other].size() < lists[i].size() ||
                (lists[other].size() == lists[i].size() && other < i))
                continue;
            if (!std::includes(lists[other].begin(), lists[other].end(), lists[i].begin(), lists[i].end()))
                continue;
            gone[other] = 1;
            any = true;
        }
    }
    return any;
}

// Marks each list that lies in another one (columns); of equal ones the first stays.
bool DropSubsets(const Lists& lists, const Lists& across, std::vector<std::uint8_t>& gone, Budget& budget) {
    const std::vector<Word> signatures = Signatures(lists);
    bool any = false;
    for (std::size_t i = 0; i < lists.size(); ++i) {
        if (gone[i] != 0 || lists[i].empty()) continue;
        const std::vector<int>& candidates = Shortest(lists[i], across);
        if (!budget.Spend(candidates.size() + lists[i].size())) return any;
        for (const int k : candidates) {
            const std::size_t other = At(k);
            if (other == i || gone[other] != 0 || (signatures[i] & ~signatures[other]) != 0) continue;
            if (lists[other].size() < lists[i].size() ||
                (lists[other].size() == lists[i].size() && other > i))
                continue;
            if (!std::includes(lists[other].begin(), lists[other].end(), lists[i].begin(), lists[i].end()))
                continue;
            gone[i] = 1;
            any = true;
            break;
        }
    }
    return any;
}

// Keeps the rows and columns not gone, renumbered; columns without a row go too.
void Compact(Core& core, const std::vector<std::uint8_t>& rowGone,
             const std::vector<std::uint8_t>& columnGone) {
    std::vector<int> number(core.Matrix.Columns.size(), -1);
    std::vector<std::uint8_t> used(number.size());
    for (std::size_t r = 0; r < core.Matrix.Rows.size(); ++r)
        if (rowGone[r] == 0)
            for (const int c : core.Matrix.Rows[r]) used[At(c)] = 1;
    std::vector<int> original;
    for (std::size_t c = 0; c < number.size(); ++c) {
        if (columnGone[c] != 0 || used[c] == 0) continue;
        number[c] = static_cast<int>(original.size());
        original.push_back(core.Original[c]);
    }
    Lists rows;
    for (std::size_t r = 0; r < core.Matrix.Rows.size(); ++r) {
        if (rowGone[r] != 0) continue;
        rows.emplace_back();
        for (const int c : core.Matrix.Rows[r])
            if (number[At(c)] >= 0) rows.back().push_back(number[At(c)]);
    }
    core.Original = std::move(original);
    core.Matrix = SparseMatrix::Of(std::move(rows), core.Original.size());
}

bool TakeEssential(Core& core, std::vector<int>& chosen) {
    std::vector<Fate> fates(core.Original.size(), Fate::Open);
    bool any = false;
    for (const std::vector<int>& row : core.Matrix.Rows)
        if (row.size() == 1) fates[At(row[0])] = Fate::Taken, any = true;
    if (any) Decide(core, fates, chosen);
    return any;
}

}  // namespace

SparseMatrix SparseMatrix::Of(std::vector<std::vector<int>> rows, std::size_t columns) {
    SparseMatrix matrix;
    matrix.Rows = std::move(rows);
    matrix.Columns.resize(columns);
    for (std::size_t r = 0; r < matrix.Rows.size(); ++r)
        for (const int c : matrix.Rows[r]) matrix.Columns[At(c)].push_back(static_cast<int>(r));
    return matrix;
}

std::size_t SparseMatrix::Entries() const {
    std::size_t entries = 0;
    for (const auto& row : Rows) entries += row.size();
    return entries;
}

void Decide(Core& core, const std::vector<Fate>& fates, std::vector<int>& chosen) {
    std::vector<std::uint8_t> rowGone(core.Matrix.Rows.size()), columnGone(core.Original.size());
    for (std::size_t c = 0; c < fates.size(); ++c) {
        if (fates[c] == Fate::Open) continue;
        columnGone[c] = 1;
        if (fates[c] != Fate::Taken) continue;
        chosen.push_back(core.Original[c]);
        for (const int r : core.Matrix.Columns[c]) rowGone[At(r)] = 1;
    }
    Compact(core, rowGone, columnGone);
}

void Reduce(Core& core, std::vector<int>& chosen, Budget& budget) {
    for (bool changed = true; changed && !budget.Exhausted();) {
        changed = TakeEssential(core, chosen);
        std::vector<std::uint8_t> rowGone(core.Matrix.Rows.size()), columnGone(core.Original.size());
        if (DropSupersets(core.Matrix.Rows, core.Matrix.Columns, rowGone, budget)) {
            Compact(core, rowGone, columnGone);
            changed = true;
        }
        rowGone.assign(core.Matrix.Rows.size(), 0);
        columnGone.assign(core.Original.size(), 0);
        if (DropSubsets(core.Matrix.Columns, core.Matrix.Rows, columnGone, budget)) {
            Compact(core, rowGone, columnGone);
            changed = true;
        }
        if (!budget.Spend(core.Matrix.Entries())) return;
    }
}

std::vector<Core> Components(const Core& core) {
    const auto& matrix = core.Matrix;
    std::vector<int> part(matrix.Columns.size(), -1);
    std::vector<Core> parts;
    for (std::size_t start = 0; start < part.size(); ++start) {
        if (part[start] >= 0) continue;
        std::vector<int> reached{static_cast<int>(start)};
        part[start] = static_cast<int>(parts.size());
        for (std::size_t i = 0; i < reached.size(); ++i)
            for (const int r : matrix.Columns[At(reached[i])])
                for (const int c : matrix.Rows[At(r)])
                    if (part[At(c)] < 0) part[At(c)] = part[start], reached.push_back(c);
        parts.emplace_back();
    }
    std::vector<int> number(part.size());
    for (std::size_t c = 0; c < part.size(); ++c) {
        auto& original = parts[At(part[c])].Original;
        number[c] = static_cast<int>(original.size());
        original.push_back(core.Original[c]);
    }
    std::vector<Lists> rows(parts.size());
    for (const auto& row : matrix.Rows) {
        if (row.empty()) continue;
        auto& mine = rows[At(part[At(row[0])])].emplace_back();
        for (const int c : row) mine.push_back(number[At(c)]);
    }
    for (std::size_t p = 0; p < parts.size(); ++p)
        parts[p].Matrix = SparseMatrix::Of(std::move(rows[p]), parts[p].Original.size());
    return parts;
}

}  // namespace logic
