#pragma once

#include <optional>
#include <string>

#include "session/App.h"

namespace editor {

// Makes document windows. A window stands in the main window when Create returns; Registered tells that it
// has become a member of Documents.
class DocumentFactory {
  public:
    virtual ~DocumentFactory() = default;
    virtual session::Document& Create() = 0;
    virtual void Registered(session::Document& document) = 0;
};

// The one way to make a document: an untitled one without a path. Never throws. Null if the window could not
// be entered among the documents; a file that could not be read is a document all the same.
session::Document* OpenDocument(session::App& app, DocumentFactory& factory,
                                const std::optional<std::string>& path);

// What a text gets by the kind of its file: a design its symbols and colours, and what belongs to a project
// the project. Errors of the scan.
void EnterByKind(session::App& app, session::Document& document, const std::string& path);

// `LoadSymbols` for a document's text, its names behind those that are there; and `mnuMacroSym`, which
// empties the list first. Errors as there.
void ReadSymbols(session::App& app, session::Document& document);
void ReadSymbolsAgain(session::App& app, session::Document& document);

// Enters the path at the head of RecentFiles (without duplicates) and sets LastPath to its folder.
void UpdateMru(session::App& app, const std::string& path);

// Asks for a file, in `folder` first, and opens it, unless a window with exactly that caption is open.
void FileOpen(session::App& app, const std::string& folder);

}  // namespace editor
