#pragma once

#include <cstdint>
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
    // What begins between these offsets, both included; other text keeps its colours.
    virtual void HighlightRange(Document& document, std::int32_t start, std::int32_t end) = 0;
};

}  // namespace session
