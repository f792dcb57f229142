#include <algorithm>
#include <functional>
#include <iterator>
#include <string_view>

#include "platform/qt/TextBox.h"

// What follows a change of the text: formatting of what came in, memory of what went out, the signal.

namespace platform::qt {
namespace {

constexpr std::size_t maxRemovedBytes = 32U << 20;  // of formatting kept for undo
constexpr std::size_t maxRemoved = 20000;           // pieces of text

}  // namespace

// The change before this one is complete now, so its text can be styled.
void TextBox::OnModification(int position, int type, int length) {
    if (loading_ || (type & (SC_MOD_BEFOREINSERT | SC_MOD_BEFOREDELETE)) == 0) return;
    StyleInserted();
    inside_.reset();
    changed_ = true;
    if (type & SC_MOD_BEFOREDELETE) {
        pending_.reset();
        RememberRemoved(position, length);
    } else {
        inserted_ = {{position, length}, (type & (SC_PERFORMED_UNDO | SC_PERFORMED_REDO)) != 0};
    }
}

// At the end of everything that may have edited the text or moved the caret.
void TextBox::Settle() {
    StyleInserted();
    const Span span = Selection();
    if (pending_ && (span.Length > 0 || span.Start != pending_->Offset)) pending_.reset();
    if (inside_ && span != inside_->Wanted) inside_.reset();
    if (changed_) {
        changed_ = false;
        UpdateMargin();
        emit Changed();
    }
    if (frozen_ > 0 || hasSelection_ == (span.Length > 0)) return;
    hasSelection_ = span.Length > 0;
    emit SelectionToggled();
}

// The control gives inserted text the style 0.
void TextBox::StyleInserted() {
    if (!inserted_) return;
    const Insertion inserted = *inserted_;
    inserted_.reset();
    if (!inserted.Again || !RestoreRemoved(inserted.Where)) {
        const StyleTable::Number number = InsertionNumber(inserted.Where);
        if (number != 0) FillStyle(inserted.Where, number);
    }
    pending_.reset();
}

StyleTable::Number TextBox::InsertionNumber(Span span) {
    if (pending_ && pending_->Offset == span.Start) return styles_.NumberOf(pending_->Style);
    if (span.Start > 0) return NumberAt(span.Start - 1);
    if (span.Length < TextLength()) return NumberAt(span.Length);
    return styles_.NumberOf(default_);
}

void TextBox::RememberRemoved(std::int32_t start, std::int32_t length) {
    RemovedStyles removed{start, std::hash<std::string_view>()(RangeView(start, length)), {}};
    ReadStyles(start, length, removed.Styles);
    removedBytes_ += removed.Styles.size();
    removed_.push_back(std::move(removed));
    while (removed_.size() > maxRemoved || removedBytes_ > maxRemovedBytes) {
        removedBytes_ -= removed_.front().Styles.size();
        removed_.pop_front();
    }
}

bool TextBox::RestoreRemoved(Span span) {
    const std::size_t hash = std::hash<std::string_view>()(RangeView(span.Start, span.Length));
    const auto found = std::find_if(removed_.rbegin(), removed_.rend(), [&](const RemovedStyles& removed) {
        return removed.Start == span.Start && removed.TextHash == hash &&
               removed.Styles.size() == static_cast<std::size_t>(span.Length);
    });
    if (found == removed_.rend()) return false;
    WriteStyles(span.Start, found->Styles);
    removedBytes_ -= found->Styles.size();
    removed_.erase(std::next(found).base());
    return true;
}

}  // namespace platform::qt
