#include "editor/KeywordScan.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <queue>
#include <string>

#include "base/Text.h"
#include "base/modLib.h"

namespace editor {
namespace {

// The classes of all bytes, looked up here rather than asked for once a byte of the text.
struct Bytes {
    std::array<bool, 256> IsWord{};
    std::array<char, 256> Upper{};
    Bytes() {
        for (std::size_t code = 0; code < 256; ++code) {
            IsWord[code] = base::IsWordChar(static_cast<char>(code));
            Upper[code] = base::UpperChar(static_cast<char>(code));
        }
    }
};

std::size_t Code(char c) { return static_cast<unsigned char>(c); }

struct Word {
    std::string Name;  // upper case
    int Entry = 0;
    std::size_t Next = 0;  // the search for this word goes on here
};

// A word of the table counts only between blanks. On the left the character two places before the match is
// looked at, not the one next to it, and offsets 0 and 1 pass untested: kept, the picture of every design
// written so far depends on it.
bool IsSetOff(std::string_view text, std::size_t found, std::size_t length) {
    if (found > 1 && !base::IsBlankChar(text[found - 2])) return false;
    const std::size_t behind = found + length;
    return behind >= text.size() || base::IsBlankChar(text[behind]);
}

// Walks the places where a whole word can begin, and tries there the words with that first character.
class KeywordScan {
  public:
    KeywordScan(std::string_view text, std::span<const session::KeywordRec> keywords,
                std::span<const int> entries)
        : text_(text) {
        for (const int entry : entries) {
            const std::string name = base::Upper(keywords[static_cast<std::size_t>(entry)].Name);
            if (!name.empty()) words_[Code(name[0])].push_back({name, entry});
        }
        for (std::size_t code = 0; code < 256; ++code) begins_[code] = !WordsOf(code).empty();
    }

    std::vector<Stretch> Run(ScanRange range) {
        if (range.End < 0) return {};
        const std::size_t end = std::min(text_.size(), static_cast<std::size_t>(range.End) + 1);
        const std::size_t start = static_cast<std::size_t>(std::max(range.Start, 0));
        for (std::size_t at = start; at < end; ++at) {
            const std::size_t code = Code(text_[at]);
            if (!begins_[code] || (at > 0 && IsWord(at - 1))) continue;
            for (Word& word : WordsOf(code)) Try(word, at);
        }
        return std::move(found_);
    }

  private:
    bool IsWord(std::size_t at) const { return bytes_.IsWord[Code(text_[at])]; }
    std::vector<Word>& WordsOf(std::size_t code) { return words_[Code(bytes_.Upper[code])]; }

    bool MatchesAt(const Word& word, std::size_t at) const {
        const std::size_t length = word.Name.size();
        if (length > text_.size() - at) return false;
        for (std::size_t i = 1; i < length; ++i) {
            if (bytes_.Upper[Code(text_[at + i])] != word.Name[i]) return false;
        }
        return at + length == text_.size() || !IsWord(at + length);
    }

    void Try(Word& word, std::size_t at) {
        if (at < word.Next || !MatchesAt(word, at)) return;
        const std::size_t length = word.Name.size();
        word.Next = at + length;
        if (!IsSetOff(text_, at, length)) return;
        found_.push_back(
            {static_cast<std::int32_t>(at), static_cast<std::int32_t>(length), word.Entry, word.Entry});
    }

    std::string_view text_;
    const Bytes bytes_;
    std::array<std::vector<Word>, 256> words_;  // by the first byte, upper case
    std::array<bool, 256> begins_{};            // some word begins with this byte
    std::vector<Stretch> found_;
};

}  // namespace

std::vector<Stretch> FindKeywords(std::string_view text, std::span<const session::KeywordRec> keywords,
                                  std::span<const int> entries, ScanRange range) {
    return KeywordScan(text, keywords, entries).Run(range);
}

std::vector<Stretch> FindComments(std::string_view text, int entry, ScanRange range) {
    std::vector<Stretch> found;
    std::size_t at = static_cast<std::size_t>(std::max(range.Start, 0));
    while (true) {
        const std::size_t open = text.find("/*", at);
        if (open == text.npos || static_cast<std::int64_t>(open) > range.End) break;
        // Searched from the opening itself, so that "/*/" is a whole comment: kept, as typing sees it.
        const std::size_t close = text.find("*/", open);
        if (close == text.npos) break;
        at = close + 2;
        found.push_back({static_cast<std::int32_t>(open), static_cast<std::int32_t>(at - open), entry,
                         std::numeric_limits<int>::max()});
    }
    return found;
}

std::vector<platform::FormatRun> Flatten(std::span<const Stretch> stretches,
                                         std::span<const session::KeywordRec> keywords) {
    const auto below = [](const Stretch& a, const Stretch& b) { return a.Layer < b.Layer; };
    std::priority_queue<Stretch, std::vector<Stretch>, decltype(below)> open(below);
    std::vector<platform::FormatRun> runs;
    std::int32_t at = 0;
    for (auto next = stretches.begin(); next != stretches.end() || !open.empty();) {
        if (open.empty()) at = std::max(at, next->Start);
        for (; next != stretches.end() && next->Start <= at; ++next) open.push(*next);
        const Stretch top = open.top();
        const std::int32_t end = top.Start + top.Length;
        if (end <= at) {
            open.pop();
            continue;
        }
        const std::int32_t until = next == stretches.end() ? end : std::min(end, next->Start);
        runs.push_back({at, until - at, FormatOf(keywords[static_cast<std::size_t>(top.Entry)])});
        at = until;
    }
    return runs;
}

platform::CharFormat FormatOf(const session::KeywordRec& keyword) {
    return {keyword.Color, keyword.Bold, keyword.Italic, keyword.Underline};
}

}  // namespace editor
