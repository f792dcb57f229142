#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "session/App.h"

// Paints the words of the keyword table and comments of a design text (a caption that ends in "PLD") in the
// formatting of its control. Nothing else remembers the colours.
namespace editor {

// An offset from 0 into the text of the control.
using Offset = std::int32_t;

// Paints the whole text, or what begins from `start` up to and including `end`, keywords in the order of the
// table and comments over them. A whole pass first sets all text to DefaultTextColor. Caret and first visible
// line are those from before.
void HighlightSyntax(session::App& app, session::Document& document, std::optional<Offset> start = {},
                     std::optional<Offset> end = {});

// After a key: paints the word that was typed or split at the caret, or the comment that was closed. Does
// nothing while text is selected.
void HighlightWord(session::App& app, session::Document& document);

// True for a design file: a caption that ends in "PLD" in any case.
bool IsDesign(const session::Document& document);

// True if the release of this key calls for HighlightWord.
bool IsHighlightKey(const session::Session& state, int keyCode);

// Index of the first entry of that name in the table, ignoring case ("COMMENTS" too), or -1.
int KeywordIndex(const session::Session& state, std::string_view word);

// Gives `length` characters the formatting of the entry, or of plain text if the index is -1. The caret ends
// at `start`.
void ColorRange(const session::Session& state, platform::RichTextBox& box, Offset start, Offset length,
                int index);

// Paint the matches of one entry, or all closed comments in the formatting of one; selection kept.
void ColorKeyword(const session::Session& state, platform::RichTextBox& box, int index,
                  std::optional<Offset> start = {}, std::optional<Offset> end = {});
void ColorComments(const session::Session& state, platform::RichTextBox& box, int index,
                   std::optional<Offset> start = {}, std::optional<Offset> end = {});

}  // namespace editor
