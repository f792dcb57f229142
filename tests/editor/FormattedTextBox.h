#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "base/RunTimeError.h"
#include "base/Text.h"
#include "base/modLib.h"
#include "support/Rooms.h"

namespace doubles {

// The simplest control that keeps formatting: a text, a format for each byte, a selection, a view of a few
// lines that follows the caret while it is visible. Notes what a user would see happen, in order.
class FormattedTextBox : public PlainTextBox {
  public:
    std::vector<platform::CharFormat> Formats;
    std::vector<std::string> Log;
    std::int32_t ViewLines = 5;
    std::int32_t FirstVisible = 0;
    platform::CharFormat Standard;
    int FailAfter = -1;  // so many changes of formatting, the next raises error 7; negative: never

    void SetText(std::string_view text) override {
        Content = text;
        Formats.assign(Content.size(), Standard);
        Select(0, 0);
    }
    std::string TextRange(std::int32_t start, std::int32_t length) const override {
        const std::int32_t from = Clamp(start);
        return Content.substr(At(from), At(std::clamp(length, 0, TextLength() - from)));
    }
    std::int32_t SelStart() const override { return start_; }
    std::int32_t SelLength() const override { return length_; }
    void SetSelStart(std::int32_t offset) override { Select(offset, 0); }
    void SetSelLength(std::int32_t length) override {
        if (length < 0) throw base::RunTimeError(380);
        length_ = std::min(length, TextLength() - start_);
        pending_.reset();
    }
    void SetSelText(std::string_view text) override {
        const platform::CharFormat format = SelFormat();
        Content.replace(At(start_), At(length_), text);
        Formats.erase(Formats.begin() + start_, Formats.begin() + start_ + length_);
        Formats.insert(Formats.begin() + start_, text.size(), format);
        Select(start_ + static_cast<std::int32_t>(text.size()), 0);
    }

    platform::CharFormat SelFormat() const override {
        if (length_ > 0) return Formats[At(start_)];
        if (pending_) return *pending_;
        return start_ > 0 ? Formats[At(start_ - 1)] : Formats.empty() ? Standard : Formats[0];
    }
    void SetSelColor(std::int32_t color) override {
        Change("color", [=](platform::CharFormat& f) { f.Color = color; });
    }
    void SetSelBold(bool on) override {
        Change("bold", [=](platform::CharFormat& f) { f.Bold = on; });
    }
    void SetSelItalic(bool on) override {
        Change("italic", [=](platform::CharFormat& f) { f.Italic = on; });
    }
    void SetSelUnderline(bool on) override {
        Change("underline", [=](platform::CharFormat& f) { f.Underline = on; });
    }
    void ApplyFormats(std::span<const platform::FormatRun> runs) override {
        Fail();
        std::int32_t last = 0;
        for (const platform::FormatRun& run : runs) {
            if (run.Start < last || run.Length <= 0) Log.push_back("bad run");
            last = run.Start + run.Length;
            std::fill_n(Formats.begin() + run.Start, run.Length, run.Format);
        }
    }

    std::int32_t Find(std::string_view text, std::int32_t start, std::int32_t end, int options) override {
        const std::int32_t size = static_cast<std::int32_t>(text.size());
        const std::int32_t limit = end < 0 ? TextLength() : std::min(end, TextLength());
        for (std::int32_t at = std::max(start, 0); size > 0 && at + size <= limit; ++at) {
            const std::string_view here = std::string_view(Content).substr(At(at), At(size));
            if ((options & platform::rtfMatchCase) ? here != text : !base::EqualNoCase(here, text)) continue;
            if ((options & platform::rtfWholeWord) && (IsWordAt(at - 1) || IsWordAt(at + size))) continue;
            if (!(options & platform::rtfNoHighlight)) Select(at, size);
            return at;
        }
        return -1;
    }
    void UpTo(std::string_view set, bool forward) override {
        const auto isMember = [&](std::int32_t at) { return set.find(Content[At(at)]) != set.npos; };
        std::int32_t at = start_;
        if (forward) {
            while (at < TextLength() && !isMember(at)) ++at;
        } else {
            while (at > 0 && !isMember(at - 1)) --at;
        }
        Select(at, 0);
    }

    void SetVisible(bool visible) override {
        Log.push_back(visible ? "visible" : "hidden");
        hidden_ += visible ? -1 : 1;
    }
    void HideCaret() override { Log.push_back("caret off"); }
    void ShowCaret() override { Log.push_back("caret on"); }
    std::intptr_t SendMessage(platform::EditMessage message, std::intptr_t first, std::intptr_t) override {
        switch (message) {
            case platform::EM_GETFIRSTVISIBLELINE:
                return FirstVisible;
            case platform::EM_LINEINDEX:
                return LineIndex(static_cast<std::int32_t>(first));
            case platform::EM_SCROLL:
                FirstVisible = std::clamp(FirstVisible + (first == platform::SB_LINEDOWN ? 1 : -1), 0,
                                          LineOf(TextLength()));
                return 0;
            default:
                return 0;
        }
    }

    // A letter for each byte: '.' for the standard format, otherwise the low byte of its colour.
    std::string Picture() const {
        std::string picture;
        for (const platform::CharFormat& format : Formats) {
            picture += format == Standard ? '.' : static_cast<char>(format.Color & 0x7F);
        }
        return picture;
    }

  private:
    static std::size_t At(std::int32_t offset) { return static_cast<std::size_t>(offset); }
    std::int32_t Clamp(std::int32_t offset) const { return std::clamp(offset, 0, TextLength()); }
    void Fail() {
        if (FailAfter-- == 0) throw base::RunTimeError(7);
    }
    bool IsWordAt(std::int32_t at) const {
        return at >= 0 && at < TextLength() && base::IsWordChar(Content[At(at)]);
    }
    std::int32_t LineOf(std::int32_t offset) const {
        return static_cast<std::int32_t>(std::count(Content.begin(), Content.begin() + offset, '\n'));
    }
    std::int32_t LineIndex(std::int32_t line) const {
        std::size_t at = 0;
        for (; line > 0; --line) at = Content.find('\n', at) + 1;
        return static_cast<std::int32_t>(at);
    }
    void Select(std::int32_t offset, std::int32_t length) {
        start_ = Clamp(offset);
        length_ = std::clamp(length, 0, TextLength() - start_);
        pending_.reset();
        if (hidden_ > 0) return;
        const std::int32_t line = LineOf(start_);
        FirstVisible = std::clamp(FirstVisible, std::max(0, line - ViewLines + 1), line);
    }
    template <typename Set>
    void Change(const char* what, Set set) {
        Log.push_back(what);
        Fail();
        if (length_ == 0) {
            pending_ = SelFormat();
            set(*pending_);
        }
        for (std::int32_t at = start_; at < start_ + length_; ++at) set(Formats[At(at)]);
    }

    int hidden_ = 0;
    std::int32_t start_ = 0;
    std::int32_t length_ = 0;
    std::optional<platform::CharFormat> pending_;  // of what is typed next at the caret
};

class FormattedDocument : public Document {
  public:
    FormattedTextBox Rich;
    FormattedDocument() { Title = "C:\\WORK\\COUNT8.PLD"; }
    platform::RichTextBox& txtText() override { return Rich; }
};

}  // namespace doubles
