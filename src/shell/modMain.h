#pragma once

#include <functional>
#include <optional>
#include <string>

#include "session/App.h"

namespace shell {

// Makes a document window. It stands in the main window when this returns; the shell takes note of it
// (SetRegistered) once it is a member of Documents.
class DocumentFactory {
  public:
    virtual ~DocumentFactory() = default;
    virtual session::Document& Create() = 0;
    virtual void Registered(session::Document& document) = 0;
};

// The one way to make a document: an untitled one without a path. Never throws.
void OpenDocument(session::App& app, DocumentFactory& factory, const std::optional<std::string>& path);

// Enters the path at the head of RecentFiles (without duplicates) and sets LastPath to its folder.
void UpdateMru(session::App& app, const std::string& path);

// Asks for a file and opens it, unless a window with exactly that caption is open.
void FileOpen(session::App& app);

// The same for a design that becomes the project.
void ProjectOpen(session::App& app);

// Makes WorkDir the current directory if it exists.
void EnterWorkDir(session::App& app);

// Where the children of the main window go, in twips.
struct MainMeasures {
    float Width = 0;  // of frmMain, frame included
    float Height = 0;
    float InnerHeight = 0;  // of the area for child windows
};
session::Placement MessageListPlacement(const MainMeasures& main);
session::Placement ProjectPlacement(const MainMeasures& main, const session::Placement& messages);
session::Placement DocumentPlacement(const session::Placement& messages);

}  // namespace shell
