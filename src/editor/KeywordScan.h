#pragma once

#include <cstdint>
#include <limits>
#include <span>
#include <string_view>
#include <vector>

#include "platform/RichTextBox.h"
#include "session/Records.h"

// Where a design text is painted, as values. The result is that of one search through the text for each word
// of the table, one after the other, found in one pass.
namespace editor {

// What may be painted: matches that begin at `Start` or behind it, and not beyond `End`. Offsets from 0.
struct ScanRange {
    std::int32_t Start = 0;
    std::int32_t End = std::numeric_limits<std::int32_t>::max();
};

// A stretch of text in the formatting of an entry. Of stretches that overlap the higher layer shows.
struct Stretch {
    std::int32_t Start = 0;   // offset
    std::int32_t Length = 0;  // bytes
    int Entry = 0;            // index into the keyword table
    int Layer = 0;
};

// The accepted matches of the entries `entries` (ascending indices), by start. Each lies in the layer of its
// own index. A Name is any text; an empty one matches nothing.
std::vector<Stretch> FindKeywords(std::string_view text, std::span<const session::KeywordRec> keywords,
                                  std::span<const int> entries, ScanRange range);

// The closed comments, by start, in the top layer with the formatting of `entry`.
std::vector<Stretch> FindComments(std::string_view text, int entry, ScanRange range);

// Ascending runs without overlap of what shows of the stretches, which are given by start.
std::vector<platform::FormatRun> Flatten(std::span<const Stretch> stretches,
                                         std::span<const session::KeywordRec> keywords);

platform::CharFormat FormatOf(const session::KeywordRec& keyword);

}  // namespace editor
