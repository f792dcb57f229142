#include "logic/CoverTable.h"

#include <algorithm>
#include <limits>

namespace logic {

namespace {

// Walks the space once for each output, splitting until all cubes that meet a region hold it. Most covers
// have their inputs in one word (`oneWord`): the walk then has them at hand instead of a pointer.
template <bool oneWord>
class RowFinder {
  public:
    RowFinder(const Cover& pool, const Cover& dontCare, std::size_t entryLimit, Budget& budget, Lists& rows)
        : layout_(pool.Form()),
          words_(static_cast<std::size_t>(layout_.InputWords())),
          pool_(pool),
          dontCare_(dontCare),
          entryLimit_(entryLimit),
          budget_(budget),
          rows_(rows),
          regions_(static_cast<std::size_t>(layout_.Inputs() + 2) * words_),
          held_(pool.Size()),
          watched_(pool.Size()) {}

    bool Run(const Cover* care) {
        for (int o = 0; o < layout_.Outputs() && !failed_; ++o) {
            stack_.resize(pool_.Size() + dontCare_.Size());
            top_ = 0;
            for (std::size_t i = 0; i < pool_.Size(); ++i)
                if (layout_.Output(pool_[i], o)) stack_[top_++] = EntryOf(pool_[i], static_cast<int>(i));
            for (std::size_t i = 0; i < dontCare_.Size(); ++i)
                if (layout_.Output(dontCare_[i], o)) stack_[top_++] = EntryOf(dontCare_[i], noColumn);
            std::fill_n(regions_.begin(), words_, ~Word{0});
            if (care == nullptr) Node(0, 0, top_);
            for (std::size_t i = 0; care != nullptr && i < care->Size() && !failed_; ++i) {
                if (!layout_.Output((*care)[i], o)) continue;
                std::copy_n((*care)[i], words_, regions_.begin());
                Node(0, 0, top_);
            }
        }
        return !failed_;
    }

  private:
    static constexpr int noColumn = -1;  // a don't-care cube
    static constexpr std::size_t none = std::numeric_limits<std::size_t>::max();

    struct Entry {
        std::conditional_t<oneWord, Word, const Word*> Inputs;
        int Column;
    };

    static Entry EntryOf(const Word* cube, int column) {
        if constexpr (oneWord)
            return {cube[0], column};
        else
            return {cube, column};
    }
    static const Word* InputsOf(const Entry& entry) {
        if constexpr (oneWord)
            return &entry.Inputs;
        else
            return entry.Inputs;
    }
    Word* Region(std::size_t depth) { return regions_.data() + depth * words_; }

    void Node(std::size_t depth, std::size_t begin, std::size_t end) {
        const std::size_t top = top_, holdTop = holding_.size();
        if (Open(depth, begin, end)) {
            if (top_ == top)
                AddRow();
            else
                Split(depth, top);
        }
        while (holding_.size() > holdTop) {
            held_[static_cast<std::size_t>(holding_.back())] = 0;
            holding_.pop_back();
        }
        if (holding_.size() < dominatedFrom_) dominatedFrom_ = none;
        top_ = top;
    }

    // Lists the cubes that meet the region without holding it; false if no new row can lie in the region.
    bool Open(std::size_t depth, std::size_t begin, std::size_t end) {
        Word* region = Region(depth);
        const std::size_t top = top_;
        if (!Filter(region, begin, end, top)) return false;
        while (!holding_.empty() && top_ > top && DropUnate(region, top))
            if (!Filter(region, top, top_, top)) return false;
        if (!holding_.empty()) return true;
        for (std::size_t i = top; i < top_; ++i)
            if (stack_[i].Column != noColumn) return true;
        return false;
    }

    // Puts what matters in the region from [begin, end) to `to`, the new top (`to` <= begin or to == end).
    // False where a row is known that needs no more than the cubes that hold the whole region.
    bool Filter(const Word* region, std::size_t begin, std::size_t end, std::size_t to) {
        if (!budget_.Spend(end - begin + 1)) failed_ = true;
        if (failed_ || holding_.size() >= dominatedFrom_) return false;
        const std::size_t held = holding_.size();
        if (stack_.size() < to + (end - begin)) stack_.resize(2 * (to + (end - begin)));
        std::size_t kept = to;
        for (std::size_t i = begin; i < end; ++i) {
            const Entry entry = stack_[i];
            const Layout::Overlap overlap = OverlapOf(entry, region);
            if (overlap != Layout::Overlap::Whole) {
                stack_[kept] = entry;
                kept += overlap == Layout::Overlap::Part ? 1 : 0;
                continue;
            }
            if (entry.Column == noColumn) return false;
            Hold(entry.Column);
        }
        top_ = kept;
        for (std::size_t h = held; h < holding_.size(); ++h)
            if (Dominated(holding_[h])) return false;
        return true;
    }

    Layout::Overlap OverlapOf(const Entry& entry, const Word* region) const {
        if constexpr (!oneWord) return layout_.InputOverlap(entry.Inputs, region);
        if ((region[0] & ~InputsOf(entry)[0]) == 0) return Layout::Overlap::Whole;
        return Layout::FilledPlaces(InputsOf(entry)[0] & region[0]) == Layout::even ? Layout::Overlap::Part
                                                                                    : Layout::Overlap::None;
    }

    void Hold(int column) {
        holding_.push_back(column);
        held_[static_cast<std::size_t>(column)] = 1;
    }

    // Each row is watched at one of its columns that does not hold the region. Whether some row has all its
    // columns among those that do, now that this one does.
    bool Dominated(int column) {
        std::vector<int>& mine = watched_[static_cast<std::size_t>(column)];
        std::size_t kept = 0;
        bool found = false;
        budget_.Spend(mine.size() + 1);
        for (std::size_t i = 0; i < mine.size(); ++i) {
            const int number = mine[i];
            const std::span<const int> row = rows_[number];
            const auto other = std::find_if(
                row.begin(), row.end(), [this](int c) { return held_[static_cast<std::size_t>(c)] == 0; });
            if (other != row.end()) {
                watched_[static_cast<std::size_t>(*other)].push_back(number);
                continue;
            }
            found = true;
            mine[kept++] = number;
        }
        mine.resize(kept);
        return found;
    }

    // Where the listed cubes have an input in one form only and no don't-care cube has it, the half without
    // them needs a subset of the other half's cubes (it is in the function: some cube holds the region).
    bool DropUnate(Word* region, std::size_t begin) const {
        bool narrowed = false;
        for (std::size_t w = 0; w < words_; ++w) {
            Word missing = 0, missingCare = 0;
            for (std::size_t i = begin; i < top_; ++i) {
                const Word lacks = ~InputsOf(stack_[i])[w];
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

    void Split(std::size_t depth, std::size_t top) {
        const std::size_t end = top_;
        const int input =
            MostFrequentInput(layout_, Region(depth), std::span<const Entry>(stack_).subspan(top, end - top),
                              [](const Entry& entry) { return InputsOf(entry); });
        std::size_t zeros = 0, ones = 0;
        for (std::size_t i = top; i < end; ++i) {
            const Literal literal = layout_.Input(InputsOf(stack_[i]), input);
            zeros += literal == Literal::Zero ? 1 : 0;
            ones += literal == Literal::One ? 1 : 0;
        }
        const Literal first =
            zeros <= ones ? Literal::Zero : Literal::One;  // small rows first: they dominate
        for (const Literal half : {first, first == Literal::Zero ? Literal::One : Literal::Zero}) {
            std::copy_n(Region(depth), words_, Region(depth + 1));
            layout_.SetInput(Region(depth + 1), input, half);
            Node(depth + 1, top, end);
        }
    }

    void AddRow() {
        if (rows_.Entries() + holding_.size() > entryLimit_) {
            failed_ = true;
            return;
        }
        row_ = holding_;
        std::sort(row_.begin(), row_.end());
        // All its columns hold the region; the last one is the first that no longer does.
        watched_[static_cast<std::size_t>(holding_.back())].push_back(static_cast<int>(rows_.Size()));
        dominatedFrom_ = holding_.size();
        rows_.Add(row_);
    }

    Layout layout_;
    std::size_t words_;
    const Cover& pool_;
    const Cover& dontCare_;
    std::size_t entryLimit_;
    Budget& budget_;
    Lists& rows_;
    std::vector<Word> regions_;
    std::vector<std::uint8_t> held_;
    std::vector<std::vector<int>> watched_;  // the rows, each at one of its columns
    std::vector<Entry> stack_;
    std::size_t top_ = 0;
    std::vector<int> holding_, row_;
    std::size_t dominatedFrom_ = none;  // with so many cubes holding the region the last row is among them
    bool failed_ = false;
};

}  // namespace

bool BuildTable(const Cover& pool, const Cover& dontCare, std::size_t entryLimit, Budget& budget, Lists& rows,
                const Cover* care) {
    return pool.Form().InputWords() == 1
               ? RowFinder<true>(pool, dontCare, entryLimit, budget, rows).Run(care)
               : RowFinder<false>(pool, dontCare, entryLimit, budget, rows).Run(care);
}

}  // namespace logic
