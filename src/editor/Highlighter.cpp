#include "editor/Highlighter.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include "base/ScopeExit.h"
#include "base/Text.h"
#include "base/modLib.h"
#include "editor/KeywordScan.h"

namespace editor {
namespace {

using platform::RichTextBox;
using session::KeywordRec;

constexpr const char* comments = "COMMENTS";

ScanRange RangeOf(std::optional<Offset> start, std::optional<Offset> end) {
    ScanRange range;
    range.Start = start.value_or(range.Start);
    range.End = end.value_or(range.End);
    return range;
}

// Formats the runs as a series of searches would that each end by giving the selection back the formatting
// it had: if something is selected, that reaches its characters.
void ApplyBesideSelection(RichTextBox& box, const std::vector<platform::FormatRun>& runs) {
    const platform::CharFormat saved = box.SelFormat();
    box.ApplyFormats(runs);
    if (box.SelLength() == 0) return;
    box.SetSelColor(saved.Color);
    box.SetSelBold(saved.Bold);
    box.SetSelItalic(saved.Italic);
    box.SetSelUnderline(saved.Underline);
}

bool ByStart(const Stretch& a, const Stretch& b) { return a.Start < b.Start; }

void PaintTable(RichTextBox& box, const std::vector<KeywordRec>& keywords, ScanRange range) {
    if (keywords.empty()) return;
    std::vector<int> entries;
    int commentEntry = -1;
    for (int i = static_cast<int>(keywords.size()) - 1; i >= 0; --i) {
        if (keywords[static_cast<std::size_t>(i)].Name == comments)
            commentEntry = i;
        else
            entries.push_back(i);
    }
    std::reverse(entries.begin(), entries.end());

    const std::string_view text = box.TextView();
    std::vector<Stretch> painted = FindKeywords(text, keywords, entries, range);
    if (commentEntry >= 0) {
        const std::vector<Stretch> words = std::move(painted);
        const std::vector<Stretch> remarks = FindComments(text, commentEntry, range);
        painted.clear();
        std::merge(words.begin(), words.end(), remarks.begin(), remarks.end(), std::back_inserter(painted),
                   ByStart);
    }
    ApplyBesideSelection(box, Flatten(painted, keywords));
}

// Colour only: bold, italic and underline stay as they are, a refresh does not undo the user's font.
void ResetColor(RichTextBox& box, std::int32_t color) {
    box.SetSelStart(0);
    box.SetSelLength(box.TextLength());
    box.SetSelColor(color);
    box.SetSelLength(0);
    box.SetSelStart(0);
}

void SetFormat(RichTextBox& box, const platform::CharFormat& format) {
    box.SetSelColor(format.Color);
    box.SetSelBold(format.Bold);
    box.SetSelUnderline(format.Underline);
    box.SetSelItalic(format.Italic);
}

}  // namespace

bool IsDesign(const session::Document& document) {
    return base::Upper(base::Right(document.Caption(), 3)) == "PLD";
}

void HighlightSyntax(session::App& app, session::Document& document, std::optional<Offset> start,
                     std::optional<Offset> end) {
    if (!IsDesign(document)) return;
    RichTextBox& box = document.txtText();
    const base::ScopeExit clearPanel([&] { app.Hall.Main->SetPanel(1, " "); });
    const platform::HourglassScope hourglass(app.Host.Desktop);
    app.Hall.Main->SetPanel(1, "Updating Syntax Highlight...");
    const platform::HiddenScope hidden(box);
    const base::ScopeExit caretBack([&box, caret = box.SelStart()] { box.SetSelStart(caret); });
    if (start)
        box.SetSelStart(box.SelStart());  // what is selected may lie outside the range
    else
        ResetColor(box, app.State.DefaultTextColor);
    if (app.State.HighlightEnabled) PaintTable(box, app.State.Keywords, RangeOf(start, end));
}

int KeywordIndex(const session::Session& state, std::string_view word) {
    const auto entry = std::find_if(state.Keywords.begin(), state.Keywords.end(),
                                    [&](const KeywordRec& k) { return base::EqualNoCase(k.Name, word); });
    return entry == state.Keywords.end() ? -1 : static_cast<int>(entry - state.Keywords.begin());
}

void ColorRange(const session::Session& state, RichTextBox& box, Offset start, Offset length, int index) {
    box.SetSelStart(start);
    const platform::HiddenScope hidden(box);
    box.SetSelLength(std::max(length, 0));  // a comment's start may have moved behind the caret
    SetFormat(box, index < 0 ? platform::CharFormat{.Color = state.DefaultTextColor}
                             : FormatOf(state.Keywords.at(static_cast<std::size_t>(index))));
    box.SetSelLength(0);
}

void ColorKeyword(const session::Session& state, RichTextBox& box, int index, std::optional<Offset> start,
                  std::optional<Offset> end) {
    const std::vector<Stretch> found =
        FindKeywords(box.TextView(), state.Keywords, std::span(&index, 1), RangeOf(start, end));
    ApplyBesideSelection(box, Flatten(found, state.Keywords));
}

void ColorComments(const session::Session& state, RichTextBox& box, int index, std::optional<Offset> start,
                   std::optional<Offset> end) {
    const std::vector<Stretch> found = FindComments(box.TextView(), index, RangeOf(start, end));
    ApplyBesideSelection(box, Flatten(found, state.Keywords));
}

}  // namespace editor
