#include "platform/TextSearch.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "base/Text.h"
#include "base/modLib.h"

namespace platform {
namespace {

constexpr std::size_t firstBlock = 2048;  // small, as most searches of an editor end close by
constexpr std::size_t lastBlock = 65536;

std::size_t FindExact(std::string_view text, std::string_view pattern, std::size_t start, std::size_t end) {
    const void* found = ::memmem(text.data() + start, end - start, pattern.data(), pattern.size());
    if (found == nullptr) return std::string_view::npos;
    return static_cast<std::size_t>(static_cast<const char*>(found) - text.data());
}

// Folds the text block by block, each block overlapping the next by the pattern less one byte.
std::size_t FindFolded(std::string_view text, const std::string& folded, std::size_t start, std::size_t end) {
    std::string block;
    for (std::size_t size = firstBlock; start < end; size = std::min(size * 4, lastBlock)) {
        const std::size_t count = std::min(size + folded.size() - 1, end - start);
        block.resize(count);
        std::transform(text.begin() + static_cast<std::ptrdiff_t>(start),
                       text.begin() + static_cast<std::ptrdiff_t>(start + count), block.begin(),
                       [](char c) { return static_cast<char>(c >= 'a' && c <= 'z' ? c - 32 : c); });
        const std::size_t found = FindExact(block, folded, 0, count);
        if (found != std::string_view::npos) return start + found;
        start += size;
    }
    return std::string_view::npos;
}

bool IsWholeWord(std::string_view text, std::size_t offset, std::size_t length) {
    const bool joinsBefore = offset > 0 && base::IsWordChar(text[offset - 1]);
    const bool joinsBehind = offset + length < text.size() && base::IsWordChar(text[offset + length]);
    return !joinsBefore && !joinsBehind;
}

}  // namespace

std::size_t SearchText(std::string_view text, std::string_view pattern, std::size_t start, std::size_t end,
                       bool matchCase, bool wholeWord) {
    if (pattern.empty()) return std::string_view::npos;
    const std::string folded = matchCase ? std::string() : base::Upper(pattern);
    while (start + pattern.size() <= end) {
        const std::size_t found =
            matchCase ? FindExact(text, pattern, start, end) : FindFolded(text, folded, start, end);
        if (found == std::string_view::npos) break;
        if (!wholeWord || IsWholeWord(text, found, pattern.size())) return found;
        start = found + 1;
    }
    return std::string_view::npos;
}

}  // namespace platform
