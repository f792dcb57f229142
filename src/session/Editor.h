#pragma once

#include <string>

namespace session {

class Document;

// The editor, as other rooms see it.
class Editor {
  public:
    virtual ~Editor() = default;

    // Opens a window: an untitled one without a path. Null if it could not be entered among the documents.
    virtual Document* OpenDocument() = 0;
    virtual Document* OpenDocument(const std::string& path) = 0;
    virtual void UpdateMru(const std::string& path) = 0;  // at the head of RecentFiles
    virtual void HighlightSyntax(Document& document) = 0;
};

}  // namespace session
