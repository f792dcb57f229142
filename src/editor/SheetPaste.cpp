#include "editor/SheetPaste.h"

#include <string_view>

#include "base/Number.h"
#include "base/Text.h"
#include "editor/Highlighter.h"

namespace editor {
namespace {

using platform::RichTextBox;

constexpr std::string_view beginSheet = "/*## Begin Schematic Sheet:";
constexpr std::string_view endMark = "/*## End ";
constexpr std::size_t namePosition = 12;  // in a begin mark, behind "/*## Begin "
constexpr std::string_view markTail = "##*/";
constexpr std::int64_t restOfMark = 2;  // to reach over "#*/" from a position that counts from 1

// From 1; 0: not there. An empty text is nowhere.
std::size_t PositionOf(std::string_view part, std::string_view text) {
    return part.empty() ? 0 : text.find(part) + 1;
}

// The text up to the first "#" of the first "##*/", with whatever stands before the begin mark: kept so.
std::string HeadOf(std::string_view block) { return base::Left(block, PositionOf(markTail, block)); }

// False if the sheet is not in the text yet. Kept: an end mark that is not there counts as at position 0, and
// one before the beginning is taken as it is.
bool ReplaceSheet(RichTextBox& box, std::string_view block) {
    const std::string head = HeadOf(block);
    const std::size_t found = PositionOf(head, box.TextView());
    if (found == 0) return false;
    const auto start = static_cast<std::int64_t>(found) - 1;
    const std::string mark = std::string(endMark) + base::Mid(head, namePosition);
    const auto end = static_cast<std::int64_t>(PositionOf(mark, box.TextView()));
    const std::int64_t length = end - start + static_cast<std::int64_t>(mark.size()) + restOfMark;

    const std::int32_t caret = box.SelStart();
    const platform::HiddenScope hidden(box);
    box.SetSelStart(base::ToInt32(start));
    box.SetSelLength(base::ToInt32(length));
    box.SetSelText(block);
    box.SetSelStart(caret);
    return true;
}

}  // namespace

void EditPaste(session::App& app, session::Document& document) {
    if (!app.Host.Clip.HasText()) return;
    RichTextBox& box = document.txtText();
    // With the line ends that the control gives to what it pastes: a head of several lines is found again.
    const std::string text = base::ToCrLf(app.Host.Clip.Text());
    const bool isSheet = base::Contains(text, beginSheet);
    if (!isSheet || !ReplaceSheet(box, text)) box.SendMessage(platform::WM_PASTE);
    if (isSheet) HighlightSyntax(app, document);
}

}  // namespace editor
