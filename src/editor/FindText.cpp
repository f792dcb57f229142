#include "editor/FindText.h"

#include <algorithm>

#include "base/Number.h"
#include "base/ScopeExit.h"
#include "platform/System.h"

namespace editor {
namespace {

using platform::RichTextBox;

std::int16_t Search(RichTextBox& box, const SearchValues& values, std::int64_t start, std::int64_t end,
                    int options) {
    const std::int16_t from = base::ToInt16(start);
    return base::ToInt16(box.Find(values.SearchText, from, base::ToInt16(end), options));
}

void SayNotFound(session::App& app, const SearchValues& values) {
    app.Host.Boxes.Say("Search string " + values.SearchText + " not found");
}

bool IsWanted(session::App& app) {
    const platform::MessageBoxRequest question{.Text = "Do you want to replace this occurence?",
                                               .Title = "Search and Replace",
                                               .Choice = platform::Buttons::YesNo};
    return app.Host.Boxes.MessageBox(question) == platform::Answer::Yes;
}

void ReplaceAt(RichTextBox& box, const SearchValues& values, std::int16_t offset) {
    std::string text = box.Text();
    text.replace(static_cast<std::size_t>(offset), values.SearchText.size(), values.ReplaceText);
    box.SetText(text);
}

void ReplaceOne(session::App& app, RichTextBox& box, const SearchValues& values) {
    const std::int16_t found = Search(box, values, 0, box.TextLength(), values.SearchOptions);
    if (found < 0) return SayNotFound(app, values);
    if (IsWanted(app)) ReplaceAt(box, values, found);
}

// Kept: each search starts at the top, so a refused occurrence is asked about until it is granted; and what
// has grown past the end that the text had at the start is not searched. `replace` gets the offset of a
// selected match.
template <class Replacing>
std::int16_t ReplaceEach(RichTextBox& box, const SearchValues& values, const Replacing& replace) {
    const std::int32_t end = box.TextLength();
    std::int16_t count = 0;
    while (true) {
        const std::int16_t found = Search(box, values, 0, end, values.SearchOptions);
        if (found < 0) return count;
        if (replace(found)) count = base::Add16(count, 1);
    }
}

std::int16_t ReplaceAsking(session::App& app, RichTextBox& box, const SearchValues& values) {
    return ReplaceEach(box, values, [&](std::int16_t found) {
        const bool isWanted = IsWanted(app);
        if (isWanted) ReplaceAt(box, values, found);
        return isWanted;
    });
}

// Match by match, and the text set as a whole at the end: that takes thousands of times less.
std::int16_t ReplaceUnasked(session::App& app, RichTextBox& box, const SearchValues& values) {
    const platform::HourglassScope hourglass(app.Host.Desktop);
    const platform::HiddenScope hidden(box);
    bool isChanged = false;
    const base::ScopeExit set([&] {
        if (isChanged) box.SetText(box.Text());
    });
    return ReplaceEach(box, values, [&](std::int16_t) {
        box.SetSelText(values.ReplaceText);
        return isChanged = true;
    });
}

void ReplaceAll(session::App& app, RichTextBox& box, const SearchValues& values) {
    if (box.TextLength() == 0) return;
    const std::int16_t count =
        values.PromptOnReplace ? ReplaceAsking(app, box, values) : ReplaceUnasked(app, box, values);
    app.Host.Boxes.Say("Search string " + values.SearchText + " replaced with " + values.ReplaceText + " " +
                       std::to_string(count) + " times");
}

}  // namespace

void EnterSearch(SearchValues& values, const SearchEntry& entry) {
    values.SearchText = entry.Text;
    std::rotate(values.SearchHistory.begin(), values.SearchHistory.end() - 1, values.SearchHistory.end());
    values.SearchHistory[0] = entry.Text;
    values.SearchOptions = (entry.IsCaseSensitive ? platform::rtfMatchCase : 0) |
                           (entry.IsWholeWords ? platform::rtfWholeWord : 0);
    values.SearchDirection = entry.IsBackward ? 1 : 0;
    values.SearchScope = entry.IsSelectedText ? 1 : 0;
    values.SearchOrigin = entry.IsFromCursor ? 1 : 0;
}

// Kept: from the top and in any case, whatever the dialog says.
void FindFirst(session::App& app, session::Document& document, const SearchValues& values) {
    RichTextBox& box = document.txtText();
    if (Search(box, values, 0, box.TextLength(), 0) < 0) SayNotFound(app, values);
}

// Kept: one place behind the selection, so that a match directly behind the last one is passed over.
void FindNext(session::App& app, session::Document& document, const SearchValues& values) {
    RichTextBox& box = document.txtText();
    box.SetSelStart(base::ToInt16(std::int64_t{box.SelStart()} + box.SelLength() + 1));
    if (Search(box, values, box.SelStart(), box.TextLength(), 0) < 0) SayNotFound(app, values);
}

void Replace(session::App& app, session::Document& document, const SearchValues& values) {
    if (values.ReplaceCancelled) return;
    if (values.ReplaceChangeAll) {
        ReplaceAll(app, document.txtText(), values);
    } else {
        ReplaceOne(app, document.txtText(), values);
    }
}

}  // namespace editor
