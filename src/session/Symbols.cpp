#include "session/Symbols.h"

#include <algorithm>

#include "base/RunTimeError.h"

namespace session {
namespace {

constexpr std::size_t blockSize = 128;
constexpr int errOutOfMemory = 7;

// Lower case, so that an underscore stands before the letters as it does among names in lower case.
unsigned char Fold(char c) { return static_cast<unsigned char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c); }

// Below, at or above 0.
int CompareNoCase(std::string_view a, std::string_view b) {
    for (std::size_t i = 0; i < a.size() && i < b.size(); ++i) {
        if (Fold(a[i]) != Fold(b[i])) return Fold(a[i]) < Fold(b[i]) ? -1 : 1;
    }
    return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

}  // namespace

const std::string& Symbols::Item(std::size_t position) const {
    if (position == 0 || position > count_) throw base::RunTimeError(base::errSubscript);
    const std::size_t block = BlockOf(position - 1);
    return blocks_[block][position - 1 - firsts_[block]];
}

void Symbols::Clear() { *this = Symbols(); }

void Symbols::InsertSymbol(std::string_view name) {
    if (name.starts_with('!')) name.remove_prefix(1);
    name = name.substr(0, name.find('.'));
    if (count_ == 0) return InsertAt(1, name);
    const std::size_t slot = count_ == 1 ? 1 : FindSymbolSlot(name);
    const int order = CompareNoCase(Item(slot), name);
    if (order != 0) InsertAt(order < 0 ? slot + 1 : slot, name);
}

std::size_t Symbols::FindSymbolSlot(std::string_view name) const {
    if (count_ == 0) return 0;
    if (count_ == 1) return Item(1) == name ? 1 : 0;
    std::size_t low = 1;
    std::size_t high = count_;
    std::size_t middle = low + (high - low) / 2;
    while (true) {
        const int order = std::string_view(Item(middle)).compare(name);
        if (order == 0) return middle;
        (order > 0 ? high : low) = middle;
        const std::size_t next = low + (high - low) / 2;
        if (next == middle) return middle;
        middle = next;
    }
}

// The index behind the last name belongs to the last block.
std::size_t Symbols::BlockOf(std::size_t index) const {
    const auto behind = std::upper_bound(firsts_.begin(), firsts_.end(), index);
    return static_cast<std::size_t>(behind - firsts_.begin()) - 1;
}

void Symbols::InsertAt(std::size_t position, std::string_view name) {
    if (count_ == MaxCount) throw base::RunTimeError(errOutOfMemory, "Out of memory");
    if (blocks_.empty()) {
        blocks_.emplace_back();
        firsts_.push_back(0);
    }
    const std::size_t block = BlockOf(position - 1);
    const std::size_t place = position - 1 - firsts_[block];
    blocks_[block].emplace(blocks_[block].begin() + static_cast<std::ptrdiff_t>(place), name);
    for (std::size_t i = block + 1; i < firsts_.size(); ++i) ++firsts_[i];
    ++count_;
    if (blocks_[block].size() == blockSize) Split(block);
}

void Symbols::Split(std::size_t block) {
    constexpr std::size_t half = blockSize / 2;
    Block tail(std::make_move_iterator(blocks_[block].begin() + half),
               std::make_move_iterator(blocks_[block].end()));
    blocks_[block].resize(half);
    const auto behind = static_cast<std::ptrdiff_t>(block) + 1;
    blocks_.insert(blocks_.begin() + behind, std::move(tail));
    firsts_.insert(firsts_.begin() + behind, firsts_[block] + half);
}

}  // namespace session
