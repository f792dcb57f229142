#pragma once

#include <cstddef>
#include <string_view>

namespace platform {

// Offset of the first match of `pattern` in `text` that starts at or after `start` and ends at or before
// `end` (`start` <= `end` <= size), or npos. Case is of ASCII letters only; a whole word has no word
// character directly before or behind it, `end` or not. An empty pattern matches nothing. The time grows
// with the length of the text whatever the pattern, apart from matches that are no whole words.
std::size_t SearchText(std::string_view text, std::string_view pattern, std::size_t start, std::size_t end,
                       bool matchCase, bool wholeWord);

}  // namespace platform
