#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "session/App.h"

namespace editor {

// What the search dialogs leave; kept for all documents as long as the program runs.
struct SearchValues {
    std::string SearchText;
    std::string ReplaceText;
    std::int32_t SearchOptions = 0;  // rtfMatchCase, rtfWholeWord; replacing alone heeds them
    // Kept for whoever asks; no search reads them.
    std::int32_t SearchScope = 0;               // 0 global, 1 selected text
    std::int32_t SearchDirection = 0;           // 0 forward, 1 backward
    std::int32_t SearchOrigin = 0;              // 1 from cursor, 0 entire scope
    std::array<std::string, 11> SearchHistory;  // the newest first

    // Kept so: none of these is ever cleared. A prompt once wished stays, Change All stays the command of the
    // replace dialog, and after its Cancel no replace does anything any more.
    bool PromptOnReplace = false;
    bool ReplaceChangeAll = false;
    bool ReplaceCancelled = false;
};

// A search as a dialog was filled in.
struct SearchEntry {
    std::string Text;
    bool IsCaseSensitive = false;
    bool IsWholeWords = false;
    bool IsBackward = false;
    bool IsSelectedText = false;
    bool IsFromCursor = false;
};
void EnterSearch(SearchValues& values, const SearchEntry& entry);

// The commands behind the dialogs. Offsets, their ends and the count of replacements have 16 bits: beyond
// them it is error 6.
void FindFirst(session::App& app, session::Document& document, const SearchValues& values);
void FindNext(session::App& app, session::Document& document, const SearchValues& values);
// One occurrence, or all of them after Change All. What replaces sets the whole text: it has no colours and
// nothing to undo afterwards.
void Replace(session::App& app, session::Document& document, const SearchValues& values);

}  // namespace editor
