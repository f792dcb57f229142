#include "logic/Expand.h"

#include <algorithm>

namespace logic {

Expander::Expander(const Cover* off, const Cover& function, Budget& budget)
    : off_(off),
      layout_(function.Form()),
      function_(CubesOf(function)),
      budget_(budget),
      search_(function.Form(), budget),
      blocked_(static_cast<std::size_t>(layout_.InputWords())),
      scratch_(static_cast<std::size_t>(layout_.Words())),
      best_(scratch_) {}

bool Expander::IsImplicant(const Word* cube) {
    if (budget_.Exhausted()) return false;
    if (off_ == nullptr) return search_.Covered(cube, function_);
    budget_.Spend(off_->Size() / 4 + 1);
    for (std::size_t i = 0; i < off_->Size(); ++i)
        if (layout_.Meet(cube, (*off_)[i])) return false;
    return true;
}

void Expander::Widen(Word* cube, const std::vector<int>& order, bool outputsFirst) {
    if (budget_.Exhausted()) return;
    if (off_ == nullptr) {
        if (outputsFirst) AddOutputsByTest(cube);
        WidenByTest(cube, order);
        if (!outputsFirst) AddOutputsByTest(cube);
        return;
    }
    if (outputsFirst) AddOutputsByOff(cube);
    WidenByOff(cube, order);
    AddOutputsByOff(cube);
}

void Expander::FindConflicts(const Word* cube) {
    std::fill(blocked_.begin(), blocked_.end(), Word{0});
    budget_.Spend(off_->Size() / 2 + 1);
    const auto words = static_cast<std::size_t>(layout_.InputWords());
    conflicts_.resize(off_->Size() * words);
    Word* to = conflicts_.data();
    for (std::size_t i = 0; i < off_->Size(); ++i) {
        const Word* off = (*off_)[i];
        if (!layout_.OutputsMeet(cube, off)) continue;
        for (std::size_t w = 0; w < words; ++w)
            *to++ = Layout::even & ~Layout::FilledPlaces(cube[w] & off[w]);
    }
    conflicts_.resize(static_cast<std::size_t>(to - conflicts_.data()));
}

// Takes the input out of the conflicts; false, with nothing changed, where that would leave none.
bool Expander::Raise(int input) {
    const auto word = static_cast<std::size_t>(input >> 5);
    const Word bit = Word{1} << ((input & 31) * 2);
    if ((blocked_[word] & bit) != 0) return false;
    const auto words = static_cast<std::size_t>(layout_.InputWords());
    budget_.Spend(conflicts_.size() / (4 * words) + 1);
    for (std::size_t i = 0; i < conflicts_.size(); i += words) {
        if ((conflicts_[i + word] & bit) == 0) continue;
        Word rest = conflicts_[i + word] & ~bit;
        for (std::size_t w = 0; w < words; ++w)
            if (w != word) rest |= conflicts_[i + w];
        if (rest != 0) continue;
        blocked_[word] |= bit;
        return false;
    }
    for (std::size_t i = word; i < conflicts_.size(); i += words) conflicts_[i] &= ~bit;
    return true;
}

void Expander::WidenByOff(Word* cube, const std::vector<int>& order) {
    FindConflicts(cube);
    for (const int input : order)
        if (layout_.Input(cube, input) != Literal::Free && Raise(input))
            layout_.SetInput(cube, input, Literal::Free);
}

// scratch_'s outputs = those of all off-set cubes that the cube's inputs meet.
void Expander::FindMetOutputs(const Word* cube) {
    const int from = layout_.InputWords(), to = layout_.Words();
    std::fill(scratch_.begin() + from, scratch_.end(), Word{0});
    budget_.Spend(off_->Size() / 4 + 1);
    if (layout_.OutputCount(cube) == layout_.Outputs()) return;  // an implicant: no off-set cube meets it
    for (std::size_t i = 0; i < off_->Size(); ++i)
        if (layout_.InputsMeet(cube, (*off_)[i]))
            for (int w = from; w < to; ++w) scratch_[static_cast<std::size_t>(w)] |= (*off_)[i][w];
}

void Expander::AddOutputsByOff(Word* cube) {
    FindMetOutputs(cube);
    for (int o = 0; o < layout_.Outputs(); ++o)
        if (!layout_.Output(scratch_.data(), o)) layout_.SetOutput(cube, o, true);
}

void Expander::WidenByTest(Word* cube, const std::vector<int>& order) {
    for (const int input : order) {
        const Literal before = layout_.Input(cube, input);
        if (before == Literal::Free) continue;
        layout_.SetInput(cube, input, Literal::Free);
        if (!search_.Covered(cube, function_)) layout_.SetInput(cube, input, before);
    }
}

void Expander::AddOutputsByTest(Word* cube) {
    for (int o = 0; o < layout_.Outputs(); ++o) {
        if (layout_.Output(cube, o)) continue;
        std::copy_n(cube, layout_.InputWords(), scratch_.begin());
        std::fill(scratch_.begin() + layout_.InputWords(), scratch_.end(), Word{0});
        layout_.SetOutput(scratch_.data(), o, true);
        if (search_.Covered(scratch_.data(), function_)) layout_.SetOutput(cube, o, true);
    }
}

std::size_t Expander::CountIn(const Word* cube, const Cover& cover) {
    budget_.Spend(cover.Size() / 4 + 1);
    std::size_t count = 0;
    for (std::size_t i = 0; i < cover.Size(); ++i) count += layout_.Contains(cube, cover[i]) ? 1 : 0;
    return count;
}

// What no wider cube can take in: the inputs that alone keep some off-set cube apart, and the outputs of the
// off-set cubes that the inputs meet.
void Expander::FindBlocked(const Word* cube) {
    FindConflicts(cube);
    const auto words = static_cast<std::size_t>(layout_.InputWords());
    for (std::size_t i = 0; i < conflicts_.size(); i += words) {
        std::size_t only = words;
        bool several = false;
        for (std::size_t w = 0; w < words; ++w) {
            const Word conflict = conflicts_[i + w];
            if (conflict == 0) continue;
            several |= only != words || (conflict & (conflict - 1)) != 0;
            only = w;
        }
        if (!several && only != words) blocked_[only] |= conflicts_[i + only];
    }
    for (std::size_t w = 0; w < words; ++w) scratch_[w] = blocked_[w] | (blocked_[w] << 1);
    FindMetOutputs(cube);
    blockedParts_ = scratch_;
}

bool Expander::Blocked(const Word* cube, const Word* other) const {
    for (std::size_t w = 0; w < blockedParts_.size(); ++w)
        if ((other[w] & ~cube[w] & blockedParts_[w]) != 0) return true;
    return false;
}

void Expander::WidenAround(Word* cube, const Cover& cover) {
    std::vector<std::size_t> open(cover.Size());
    for (std::size_t i = 0; i < open.size(); ++i) open[i] = i;
    while (!open.empty() && !budget_.Exhausted()) {
        std::size_t bestCount = 0;
        if (off_ != nullptr) FindBlocked(cube);
        budget_.Spend(open.size() / 4 + 1);
        std::erase_if(open, [&](std::size_t i) {
            // What does not fit now fits no wider cube either.
            if (layout_.Contains(cube, cover[i]) || (off_ != nullptr && Blocked(cube, cover[i]))) return true;
            layout_.Supercube(scratch_.data(), cube, cover[i]);
            if (!IsImplicant(scratch_.data())) return true;
            const std::size_t count = CountIn(scratch_.data(), cover);
            if (count > bestCount) bestCount = count, best_ = scratch_;
            return false;
        });
        if (bestCount == 0) return;
        std::copy(best_.begin(), best_.end(), cube);
    }
}

}  // namespace logic
