#include "logic/CoverTable.h"

#include <algorithm>

namespace logic {

namespace {

// Walks the space once for each output, splitting until all cubes that meet a region hold it.
class RowFinder {
  public:
    RowFinder(const Cover& pool, const Cover& dontCare, std::size_t entryLimit, Budget& budget,
              CoverTable& table)
        : layout_(pool.Form()),
          pool_(pool),
          dontCare_(dontCare),
          entryLimit_(entryLimit),
          budget_(budget),
          table_(table),
          regions_(static_cast<std::size_t>(layout_.Inputs() + 2),
                   std::vector<Word>(static_cast<std::size_t>(layout_.Words()))),
          marks_(pool.Size()),
          buckets_(pool.Size()) {}

    bool Run(const Cover* care) {
        for (int o = 0; o < layout_.Outputs() && !failed_; ++o) {
            stack_.clear();
            for (std::size_t i = 0; i < pool_.Size(); ++i)
                if (layout_.Output(pool_[i], o)) stack_.push_back({pool_[i], static_cast<int>(i)});
            for (std::size_t i = 0; i < dontCare_.Size(); ++i)
                if (layout_.Output(dontCare_[i], o)) stack_.push_back({dontCare_[i], noColumn});
            std::fill(regions_[0].begin(), regions_[0].end(), ~Word{0});
            if (care == nullptr) Node(0, 0, stack_.size(), noRows);
            for (std::size_t i = 0; care != nullptr && i < care->Size() && !failed_; ++i) {
                if (!layout_.Output((*care)[i], o)) continue;
                std::copy_n((*care)[i], layout_.InputWords(), regions_[0].begin());
                Node(0, 0, stack_.size(), noRows);
            }
        }
        return !failed_;
    }

  private:
    static constexpr std::size_t noRows = 0;
    static constexpr int noColumn = -1;  // a don't-care cube

    struct Entry {
        const Word* Cube;
        int Column;
    };

    void Node(std::size_t depth, std::size_t begin, std::size_t end, std::size_t rowsKnown) {
        const std::size_t top = stack_.size(), holdTop = holding_.size();
        if (Open(depth, begin, end, rowsKnown)) {
            if (stack_.size() == top)
                AddRow();
            else
                Split(depth, top, table_.Rows.size());
        }
        while (holding_.size() > holdTop) {
            marks_[static_cast<std::size_t>(holding_.back())] = 0;
            holding_.pop_back();
        }
        stack_.resize(top);
    }

    // Lists the cubes that meet the region without holding it; false if no new row can lie in the region.
    bool Open(std::size_t depth, std::size_t begin, std::size_t end, std::size_t rowsKnown) {
        Word* region = regions_[depth].data();
        const std::size_t top = stack_.size(), held = holding_.size();
        if (!Filter(region, begin, end)) return false;
        if ((holding_.size() > held || table_.Rows.size() > rowsKnown) && Dominated()) return false;
        while (!holding_.empty() && stack_.size() > top && DropUnate(region, top)) {
            const std::size_t listEnd = stack_.size(), before = holding_.size();
            if (!Filter(region, top, listEnd)) return false;
            stack_.erase(stack_.begin() + static_cast<std::ptrdiff_t>(top),
                         stack_.begin() + static_cast<std::ptrdiff_t>(listEnd));
            if (holding_.size() > before && Dominated()) return false;
        }
        if (!holding_.empty()) return !failed_;
        for (std::size_t i = top; i < stack_.size(); ++i)
            if (stack_[i].Column != noColumn) return !failed_;
        return false;
    }

    bool Filter(const Word* region, std::size_t begin, std::size_t end) {
        if (!budget_.Spend(end - begin + 1)) failed_ = true;
        if (failed_) return false;
        // Most covers have their inputs in one word: the innermost loop of all is worth its own form for
        // them.
        return layout_.InputWords() == 1 ? FilterBy<1>(region, begin, end) : FilterBy<0>(region, begin, end);
    }

    template <int inputWords>
    bool FilterBy(const Word* region, std::size_t begin, std::size_t end) {
        std::size_t kept = stack_.size();
        stack_.resize(kept + (end - begin));
        bool open = true;
        for (std::size_t i = begin; i < end && open; ++i) {
            const Entry entry = stack_[i];
            const bool meets = inputWords == 1
                                   ? Layout::FilledPlaces(entry.Cube[0] & region[0]) == Layout::even
                                   : layout_.InputsMeet(entry.Cube, region);
            if (!meets) continue;
            const bool holds = inputWords == 1 ? (region[0] & ~entry.Cube[0]) == 0
                                               : layout_.InputsContain(entry.Cube, region);
            if (!holds) {
                stack_[kept++] = entry;
            } else if (entry.Column == noColumn) {
                open = false;
            } else {
                holding_.push_back(entry.Column);
                marks_[static_cast<std::size_t>(entry.Column)] = 1;
            }
        }
        stack_.resize(kept);
        return open;
    }

    // Whether some row needs no more than the cubes that hold the whole region.
    bool Dominated() {
        std::size_t looked = 0;
        bool found = false;
        for (std::size_t h = 0; h < holding_.size() && !found; ++h)
            for (const int number : buckets_[static_cast<std::size_t>(holding_[h])]) {
                const std::vector<int>& row = table_.Rows[static_cast<std::size_t>(number)];
                ++looked;
                found = std::all_of(row.begin(), row.end(),
                                    [this](int c) { return marks_[static_cast<std::size_t>(c)] != 0; });
                if (found) break;
            }
        if (!budget_.Spend(looked + holding_.size() / 8)) failed_ = true;
        return found || failed_;
    }

    // Where the listed cubes have an input in one form only and no don't-care cube has it, the half without
    // them needs a subset of the other half's cubes (it is in the function: some cube holds the region).
    bool DropUnate(Word* region, std::size_t begin) const {
        bool narrowed = false;
        for (int w = 0; w < layout_.InputWords(); ++w) {
            Word missing = 0, missingCare = 0;
            for (std::size_t i = begin; i < stack_.size(); ++i) {
                const Word lacks = ~stack_[i].Cube[w];
                missing |= lacks;
                if (stack_[i].Column == noColumn) missingCare |= lacks;
            }
            const Word open = Layout::FreePlaces(region[w]) & ~(missingCare | (missingCare >> 1));
            const Word ones = missing & open, zeros = (missing >> 1) & open;
            const Word drop = ((ones & ~zeros) << 1) | (zeros & ~ones);
            region[w] &= ~drop;
            narrowed |= drop != 0;
        }
        return narrowed;
    }

    void Split(std::size_t depth, std::size_t top, std::size_t rowsKnown) {
        const std::size_t end = stack_.size();
        const Word* region = regions_[depth].data();
        const int input =
            MostFrequentInput(layout_, region, std::span<const Entry>(stack_).subspan(top, end - top),
                              [](const Entry& entry) { return entry.Cube; });
        std::size_t zeros = 0, ones = 0;
        for (std::size_t i = top; i < end; ++i) {
            const Literal literal = layout_.Input(stack_[i].Cube, input);
            zeros += literal == Literal::Zero ? 1 : 0;
            ones += literal == Literal::One ? 1 : 0;
        }
        const Literal first =
            zeros <= ones ? Literal::Zero : Literal::One;  // small rows first: they dominate
        for (const Literal half : {first, first == Literal::Zero ? Literal::One : Literal::Zero}) {
            regions_[depth + 1] = regions_[depth];
            layout_.SetInput(regions_[depth + 1].data(), input, half);
            Node(depth + 1, top, end, rowsKnown);
        }
    }

    void AddRow() {
        entries_ += holding_.size();
        if (entries_ > entryLimit_) {
            failed_ = true;
            return;
        }
        std::vector<int> row = holding_;
        std::sort(row.begin(), row.end());
        const auto shortest = std::min_element(row.begin(), row.end(), [this](int a, int b) {
            return buckets_[static_cast<std::size_t>(a)].size() <
                   buckets_[static_cast<std::size_t>(b)].size();
        });
        buckets_[static_cast<std::size_t>(*shortest)].push_back(static_cast<int>(table_.Rows.size()));
        table_.Rows.push_back(std::move(row));
    }

    Layout layout_;
    const Cover& pool_;
    const Cover& dontCare_;
    std::size_t entryLimit_;
    std::size_t entries_ = 0;
    Budget& budget_;
    CoverTable& table_;
    std::vector<std::vector<Word>> regions_;
    std::vector<std::uint8_t> marks_;
    std::vector<std::vector<int>> buckets_;  // the rows, each under one of its columns
    std::vector<Entry> stack_;
    std::vector<int> holding_;
    bool failed_ = false;
};

}  // namespace

bool BuildTable(const Cover& pool, const Cover& dontCare, std::size_t entryLimit, Budget& budget,
                CoverTable& table, const Cover* care) {
    return RowFinder(pool, dontCare, entryLimit, budget, table).Run(care);
}

}  // namespace logic
