#include "logic/Cover.h"

#include <algorithm>
#include <limits>
#include <numeric>

#include "base/RunTimeError.h"

namespace logic {

namespace {
constexpr std::uint64_t maxCompared = 300000000;  // about a second; behind it only equal cubes are found
}

int Layout::Distance(const Word* a, const Word* b) const {
    int distance = OutputsMeet(a, b) ? 0 : 1;
    for (int w = 0; w < inputWords_; ++w) distance += CountBits(even & ~FilledPlaces(a[w] & b[w]));
    return distance;
}

int Layout::InputLiterals(const Word* cube) const {
    int literals = 0;
    for (int w = 0; w < inputWords_; ++w) literals += CountBits(even & ~FreePlaces(cube[w]));
    return literals;
}

std::vector<InputLiteral> Layout::LiteralsOf(const Word* cube) const {
    std::vector<InputLiteral> literals;
    for (int w = 0; w < inputWords_; ++w)
        for (Word left = even & ~FreePlaces(cube[w]); left != 0; left &= left - 1) {
            const int place = std::countr_zero(left);
            literals.push_back({static_cast<std::size_t>(w * 32 + place / 2), (cube[w] >> place & 2) == 0});
        }
    return literals;
}

int Layout::Bits(const Word* cube) const {
    int bits = 0;
    for (int w = 0; w < words_; ++w) bits += CountBits(cube[w]);
    return bits;
}

int Layout::OutputCount(const Word* cube) const {
    int count = 0;
    for (int w = inputWords_; w < words_; ++w) count += CountBits(cube[w]);
    return count;
}

Word* Cover::Append() {
    const auto inputWords = static_cast<std::size_t>(layout_.InputWords());
    data_.insert(data_.end(), inputWords, ~Word{0});
    data_.insert(data_.end(), Stride() - inputWords, Word{0});
    return (*this)[size_++];
}

void Cover::Add(const Word* cube) {
    data_.insert(data_.end(), cube, cube + Stride());
    ++size_;
}

void Cover::AddAll(const Cover& other) {
    const std::size_t words = other.size_ * Stride();
    data_.reserve(data_.size() + words);
    data_.insert(data_.end(), other.data_.begin(), other.data_.begin() + static_cast<std::ptrdiff_t>(words));
    size_ += other.size_;
}

void Cover::Add(std::string_view inputs, std::string_view outputs) {
    if (inputs.size() != static_cast<std::size_t>(Inputs()) ||
        outputs.size() != static_cast<std::size_t>(Outputs()) ||
        inputs.find_first_not_of("01-") != std::string_view::npos ||
        outputs.find_first_not_of("01") != std::string_view::npos)
        throw base::RunTimeError(base::errInvalidCall, "Not a cube of this cover");
    Word* cube = Append();
    for (int v = 0; v < Inputs(); ++v) {
        const char c = inputs[static_cast<std::size_t>(v)];
        if (c != '-') layout_.Restrict(cube, v, c == '1');
    }
    for (int o = 0; o < Outputs(); ++o)
        layout_.SetOutput(cube, o, outputs[static_cast<std::size_t>(o)] == '1');
}

void Cover::Clear() {
    size_ = 0;
    data_.clear();
}

void Cover::Truncate(std::size_t size) {
    size_ = size;
    data_.resize(size * Stride());
}

void Cover::RemoveEmpty() {
    std::size_t kept = 0;
    for (std::size_t i = 0; i < size_; ++i) {
        if (layout_.IsEmpty((*this)[i])) continue;
        std::copy_n((*this)[i], Stride(), (*this)[kept++]);
    }
    Truncate(kept);
}

void Cover::SortUnique() {
    std::vector<std::size_t> order(size_);
    std::iota(order.begin(), order.end(), std::size_t{0});
    const std::size_t stride = Stride();
    const auto at = [this](std::size_t i) { return (*this)[i]; };
    std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return std::lexicographical_compare(at(a), at(a) + stride, at(b), at(b) + stride);
    });
    order.erase(std::unique(order.begin(), order.end(),
                            [&](std::size_t a, std::size_t b) { return layout_.Same(at(a), at(b)); }),
                order.end());
    std::vector<Word> sorted;
    sorted.reserve(order.size() * stride);
    for (const std::size_t i : order) sorted.insert(sorted.end(), at(i), at(i) + stride);
    data_ = std::move(sorted);
    size_ = order.size();
}

void Cover::Absorb() {
    if (size_ < 2) return;
    const std::size_t stride = Stride();
    std::vector<std::pair<int, const Word*>> order;  // the large cubes first: only they can hold others
    order.reserve(size_);
    for (std::size_t i = 0; i < size_; ++i) order.emplace_back(-layout_.Bits((*this)[i]), (*this)[i]);
    std::sort(order.begin(), order.end(), [stride](const auto& a, const auto& b) {
        if (a.first != b.first) return a.first < b.first;
        return std::lexicographical_compare(a.second, a.second + stride, b.second, b.second + stride);
    });
    Cover kept(layout_);
    kept.Reserve(size_);
    std::uint64_t compared = 0;
    std::size_t larger = 0;  // the first ones of `kept`: a cube of the same size holds no other
    int bits = 1;
    for (const auto& entry : order) {
        if (entry.first != bits) larger = kept.size_;
        bits = entry.first;
        bool held = kept.size_ > 0 && layout_.Same(kept[kept.size_ - 1], entry.second);
        for (std::size_t k = 0; k < larger && !held && compared < maxCompared; ++k)
            held = layout_.Contains(kept[k], entry.second);
        compared += larger;
        if (!held) kept.Add(entry.second);
    }
    *this = std::move(kept);
}

bool Cover::Evaluate(const std::vector<Word>& point, int output) const {
    Cover minterm(layout_);
    Word* cube = minterm.Append();
    for (int v = 0; v < Inputs(); ++v) {
        const bool one = ((point[static_cast<std::size_t>(v >> 6)] >> (v & 63)) & 1) != 0;
        layout_.Restrict(cube, v, one);
    }
    for (std::size_t i = 0; i < size_; ++i)
        if (layout_.Output((*this)[i], output) && layout_.InputsContain((*this)[i], cube)) return true;
    return false;
}

std::size_t Cover::Literals() const {
    std::size_t literals = 0;
    for (std::size_t i = 0; i < size_; ++i)
        literals +=
            static_cast<std::size_t>(layout_.InputLiterals((*this)[i]) + layout_.OutputCount((*this)[i]));
    return literals;
}

Cover Everything(const Layout& layout) {
    Cover all(layout);
    Word* cube = all.Append();
    for (int o = 0; o < layout.Outputs(); ++o) layout.SetOutput(cube, o, true);
    return all;
}

std::optional<Cover> Intersection(const Cover& a, const Cover& b, std::size_t limit) {
    const Layout& layout = a.Form();
    Cover result(layout);
    for (std::size_t i = 0; i < a.Size(); ++i)
        for (std::size_t k = 0; k < b.Size(); ++k) {
            if (!layout.Meet(a[i], b[k])) continue;
            if (result.Size() == limit) return std::nullopt;
            layout.Intersect(result.Append(), a[i], b[k]);
        }
    return result;
}

Cover Intersection(const Cover& a, const Cover& b) {
    return *Intersection(a, b, std::numeric_limits<std::size_t>::max());
}

Cover OutputOf(const Cover& cover, int output) {
    Cover alone(cover.Inputs(), 1);
    for (std::size_t i = 0; i < cover.Size(); ++i) {
        if (!cover.Form().Output(cover[i], output)) continue;
        Word* cube = alone.Append();
        std::copy_n(cover[i], cover.Form().InputWords(), cube);
        alone.Form().SetOutput(cube, 0, true);
    }
    return alone;
}

std::string InputText(const Layout& layout, const Word* cube) {
    std::string text;
    for (int v = 0; v < layout.Inputs(); ++v) text += "?01-"[static_cast<int>(layout.Input(cube, v))];
    return text;
}

std::string OutputText(const Layout& layout, const Word* cube) {
    std::string text;
    for (int o = 0; o < layout.Outputs(); ++o) text += layout.Output(cube, o) ? '1' : '0';
    return text;
}

}  // namespace logic
