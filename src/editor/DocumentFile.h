#pragma once

#include <optional>
#include <string>

#include "session/App.h"

// What a document window does with its file and its place among the open documents. The windows call these;
// they work on the document as other rooms see it.
namespace editor {

enum class DocumentKind { Design, SimulatorInput, Vhdl, Plain };

// Told by the extension alone, in the case found: "PLD", "SI", "VHD".
DocumentKind KindOf(const std::string& path);

// Writes the text to the path in the caption and clears Dirty; a failure is shown and leaves Dirty set.
void SaveFile(session::App& app, session::Document& document);

// Asks for a name, writes, closes the project and opens the file in a window of its own. False: the text
// could not be written, and that was shown; a cancelled dialog is no failure.
bool SaveFileAs(session::App& app, session::Document& document);

// The Save command: SaveFileAs for a caption that contains "Untitled", else SaveFile. False: not written.
bool Save(session::App& app, session::Document& document);

// SaveFile on every open document, untitled ones included.
void SaveAll(session::App& app);

// The question before a document closes, and the saving if that is the answer. False refuses the close.
bool QueryUnload(session::App& app, session::Document& document);

// Takes a closing document out of the shared state; one that is not `isRegistered` never got into Documents
// and leaves the others alone.
void Unregister(session::App& app, const session::Document& document, bool isRegistered);

// Opens a recent file, or shows the window that has it.
void OpenRecent(session::App& app, int index);

// " Line:n Col:n " of the caret: the first two places of a line both read column 1.
std::string PositionText(platform::RichTextBox& text);

// One tick of a document's status timer; `cache` is the text last shown.
void UpdatePosition(session::App& app, platform::RichTextBox& text, std::string& cache);

// The Font command: asks, applies, colours again.
void ChooseFont(session::App& app, session::Document& document);

// What the font dialog gives, the size rounded.
session::FontRecord ToFontRecord(const platform::FontChoice& choice);

// Gives the whole text a font and its colour.
void UpdateFont(platform::RichTextBox& text, const session::FontRecord& font);

// Gives the whole text a font, whose colour is left out. The selection is left on the whole text.
void ApplyFont(platform::RichTextBox& text, const session::FontRecord& font);

}  // namespace editor
