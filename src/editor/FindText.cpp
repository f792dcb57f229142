#include "editor/FindText.h"

#include <algorithm>

#include "base/Number.h"
#include "base/ScopeExit.h"
#include "platform/System.h"
#include "platform/TextSearch.h"

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

// Kept, here and below: each search starts at the top, so a refused occurrence is asked about until it is
// granted; and what has grown past the end that the text had at the start is not searched.
std::int16_t ReplaceAsking(session::App& app, RichTextBox& box, const SearchValues& values) {
    const std::int32_t end = box.TextLength();
    std::int16_t count = 0;
    while (true) {
        const std::int16_t found = Search(box, values, 0, end, values.SearchOptions);
        if (found < 0) return count;
        if (!IsWanted(app)) continue;
        ReplaceAt(box, values, found);
        count = base::Add16(count, 1);
    }
}

// The same beside the control, which takes long to be set thousands of times. A replacement makes no match
// that ends before it: the search goes on where one could begin.
std::int16_t ReplaceUnasked(session::App& app, RichTextBox& box, const SearchValues& values) {
    const platform::HourglassScope hourglass(app.Host.Desktop);
    std::string text = box.Text();
    const auto end = static_cast<std::size_t>(base::ToInt16(box.TextLength()));
    std::size_t from = 0;
    bool isChanged = false;
    const base::ScopeExit set([&] {
        if (isChanged) box.SetText(text);
    });
    for (std::int16_t count = 0;; count = base::Add16(count, 1)) {
        const auto found = platform::SearchText(text, values.SearchText, from, std::min(end, text.size()),
                                                (values.SearchOptions & platform::rtfMatchCase) != 0,
                                                (values.SearchOptions & platform::rtfWholeWord) != 0);
        if (found == std::string::npos) return count;
        text.replace(found, values.SearchText.size(), values.ReplaceText);
        from = found - std::min(found, values.SearchText.size());
        isChanged = true;
    }
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
