#pragma once

#include <cstdint>
#include <limits>
#include <optional>

#include "base/modLib.h"
#include "platform/RichTextBox.h"
#include "session/Session.h"

// The colouring as it is defined: one search of the control for each word of the table, then one for
// comments, each match selected and formatted. The highlighter has to give the same picture.
namespace searching {

using Offset = std::int32_t;

// What a search leaves: the selection and the formatting that it had.
class SelectionScope {
  public:
    explicit SelectionScope(platform::RichTextBox& box)
        : box_(box), start_(box.SelStart()), length_(box.SelLength()), format_(box.SelFormat()) {}
    ~SelectionScope() {
        box_.SetSelStart(start_);
        box_.SetSelLength(length_);
        Set(box_, format_);
    }
    SelectionScope(const SelectionScope&) = delete;
    SelectionScope& operator=(const SelectionScope&) = delete;

    static void Set(platform::RichTextBox& box, const platform::CharFormat& format) {
        box.SetSelColor(format.Color);
        box.SetSelBold(format.Bold);
        box.SetSelItalic(format.Italic);
        box.SetSelUnderline(format.Underline);
    }

  private:
    platform::RichTextBox& box_;
    Offset start_;
    Offset length_;
    platform::CharFormat format_;
};

inline void Paint(platform::RichTextBox& box, Offset start, Offset length, const session::KeywordRec& word) {
    box.SetSelStart(start);
    box.SetSelLength(length);
    SelectionScope::Set(box, {word.Color, word.Bold, word.Italic, word.Underline});
}

inline void ColorKeyword(platform::RichTextBox& box, const session::KeywordRec& word, Offset start,
                         Offset end) {
    const SelectionScope scope(box);
    const std::string_view text = box.TextView();
    const Offset n = static_cast<Offset>(word.Name.size());
    const auto isBlank = [&](Offset position) {  // from 1
        return base::IsBlankChar(text[static_cast<std::size_t>(position - 1)]);
    };
    Offset pos = start;
    while (true) {
        const Offset found = box.Find(word.Name, pos, -1, platform::rtfWholeWord | platform::rtfNoHighlight);
        if (found == -1 || found > end) return;
        const bool left = found <= 1 || isBlank(found - 1);
        const bool right = found + n >= box.TextLength() || isBlank(found + n + 1);
        if (left && right) Paint(box, found, n, word);
        pos = found + n;
    }
}

inline void ColorComments(platform::RichTextBox& box, const session::KeywordRec& word, Offset start,
                          Offset end) {
    const SelectionScope scope(box);
    Offset pos = start;
    while (true) {
        const Offset a = box.Find("/*", pos, -1, platform::rtfNoHighlight);
        if (a == -1 || a > end) return;
        const Offset b = box.Find("*/", a, -1, platform::rtfNoHighlight);
        if (b == -1) return;
        pos = b + 2;
        Paint(box, a, pos - a, word);
    }
}

inline void HighlightSyntax(const session::Session& state, platform::RichTextBox& box,
                            std::optional<Offset> start = {}, std::optional<Offset> end = {}) {
    const Offset caret = box.SelStart();
    if (!start) {
        box.SetSelStart(0);
        box.SetSelLength(box.TextLength());
        box.SetSelColor(state.DefaultTextColor);
        box.SetSelLength(0);
        box.SetSelStart(0);
    }
    const Offset last = end.value_or(std::numeric_limits<Offset>::max());
    const session::KeywordRec* comments = nullptr;
    for (const session::KeywordRec& word : state.Keywords) {
        if (!state.HighlightEnabled) break;
        if (word.Name != "COMMENTS")
            ColorKeyword(box, word, start.value_or(0), last);
        else if (!comments)
            comments = &word;
    }
    if (comments) ColorComments(box, *comments, start.value_or(0), last);
    box.SetSelStart(caret);
}

}  // namespace searching
