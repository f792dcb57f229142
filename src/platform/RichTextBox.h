#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace platform {

// Options of Find.
enum FindOptions : int { rtfWholeWord = 2, rtfMatchCase = 4, rtfNoHighlight = 8 };

enum EditMessage : std::uint32_t {
    EM_GETSEL = 176,     // low word: selection start; high word: selection end
    EM_SCROLL = 181,     // first parameter SB_LINEDOWN: one line down
    EM_LINEINDEX = 187,  // offset of a line's start; -1: the caret's line
    EM_UNDO = 199,
    EM_LINEFROMCHAR = 201,  // line (from 0) of an offset; -1: of the caret
    EM_GETFIRSTVISIBLELINE = 206,
    WM_CUT = 768,
    WM_COPY = 769,
    WM_PASTE = 770,
};
inline constexpr std::intptr_t SB_LINEDOWN = 1;

// Formatting of characters; colours are 0x00BBGGRR.
struct CharFormat {
    std::int32_t Color = 0;
    bool Bold = false;
    bool Italic = false;
    bool Underline = false;
    bool operator==(const CharFormat&) const = default;
};

struct FormatRun {
    std::int32_t Start = 0;   // offset
    std::int32_t Length = 0;  // bytes
    CharFormat Format;
};

// The text control as the logic sees it. Offsets count bytes from 0; a line end is CR LF and counts two.
// Formatting belongs to the characters, moves with them, is no part of the undo history and no change of the
// text. Inserted text takes the formatting of the character before it. Offsets and lengths out of range are
// clamped.
class RichTextBox {
  public:
    virtual ~RichTextBox() = default;

    virtual std::string Text() const = 0;
    virtual void SetText(
        std::string_view text) = 0;  // line ends become CR LF; a change; empties the undo history
    virtual std::int32_t TextLength() const = 0;
    virtual std::string TextRange(std::int32_t start, std::int32_t length) const = 0;
    // The whole text without a copy, valid until the next change of the text.
    virtual std::string_view TextView() const = 0;

    virtual std::int32_t SelStart() const = 0;
    virtual void SetSelStart(std::int32_t offset) = 0;  // also makes the selection empty
    virtual std::int32_t SelLength() const = 0;
    // Error 380 if negative.
    virtual void SetSelLength(std::int32_t length) = 0;
    virtual std::string SelText() const = 0;
    virtual void SetSelText(std::string_view text) = 0;  // replaces the selection, caret behind; line ends
                                                         // become CR LF; one undo step

    // Of the selection; of the character before the caret if it is empty (its first character's if mixed).
    // Setting with an empty selection changes what is typed next at this place; in an empty text also the
    // formatting of texts set later. A character of several bytes is formatted whole.
    virtual CharFormat SelFormat() const = 0;
    virtual void SetSelColor(std::int32_t color) = 0;
    virtual void SetSelBold(bool on) = 0;
    virtual void SetSelItalic(bool on) = 0;
    virtual void SetSelUnderline(bool on) = 0;
    virtual std::string SelFontName() const = 0;
    virtual void SetSelFontName(const std::string& name) = 0;
    virtual double SelFontSize() const = 0;  // points
    virtual void SetSelFontSize(double size) = 0;
    virtual void SetDefaultFont(const std::string& name,
                                double size) = 0;  // of the control, for text to come

    // Formats many runs (ascending, not overlapping) in one go, without touching the selection.
    virtual void ApplyFormats(std::span<const FormatRun> runs) = 0;

    // Offset of the first match at or after `start` and ending at or before `end` (-1: the end of the text),
    // or -1. Without rtfNoHighlight the match is selected. ASCII case is ignored unless rtfMatchCase.
    virtual std::int32_t Find(std::string_view text, std::int32_t start, std::int32_t end, int options) = 0;

    // Moves the caret up to (just before, seen in the direction of travel) the next member of `set`; to the
    // end or start of the text if there is none. The selection becomes empty.
    virtual void UpTo(std::string_view set, bool forward) = 0;

    // Hidden there is no redraw, and caret and selection move without moving the view. Counted: what has
    // hidden it twice shows it twice.
    virtual void SetVisible(bool visible) = 0;
    virtual void HideCaret() = 0;  // counted, as ShowCaret undoes it
    virtual void ShowCaret() = 0;

    // The edit messages above.
    virtual std::intptr_t SendMessage(EditMessage message, std::intptr_t first = 0,
                                      std::intptr_t second = 0) = 0;
};

// The control hidden for the length of an operation.
class HiddenScope {
  public:
    explicit HiddenScope(RichTextBox& box) : box_(box) { box_.SetVisible(false); }
    ~HiddenScope() { box_.SetVisible(true); }
    HiddenScope(const HiddenScope&) = delete;
    HiddenScope& operator=(const HiddenScope&) = delete;

  private:
    RichTextBox& box_;
};

// The caret hidden for the length of an operation.
class HiddenCaretScope {
  public:
    explicit HiddenCaretScope(RichTextBox& box) : box_(box) { box_.HideCaret(); }
    ~HiddenCaretScope() { box_.ShowCaret(); }
    HiddenCaretScope(const HiddenCaretScope&) = delete;
    HiddenCaretScope& operator=(const HiddenCaretScope&) = delete;

  private:
    RichTextBox& box_;
};

}  // namespace platform
