#pragma once

#include <cstdint>
#include <string>

#include "platform/RichTextBox.h"
#include "session/Symbols.h"

namespace session {

// An open document as other rooms see it: fields of its window and the public commands that are called by
// name. Implemented by frmDocument.
class Document {
  public:
    virtual ~Document() = default;

    std::int16_t ID = 0;            // DocumentCount when the window was created; its decimal text is the key
    std::string FileName;           // upper-case path; empty for an untitled document
    bool Dirty = false;             // set by every change of txtText
    bool Unread = false;            // the file is there and could not be read: the text is not its text
    std::uint64_t Revision = 0;     // counts the changes of txtText
    session::Symbols Symbols;       // pins, nodes and fields of the design
    bool InComment = false;         // a comment was opened by typing and not closed
    std::int32_t CommentStart = 0;  // offset of its "/*"

    virtual platform::RichTextBox& txtText() = 0;
    virtual std::string Caption() const = 0;
    virtual void SetCaption(const std::string& caption) = 0;

    virtual void SaveFile() = 0;
    virtual void SaveFileAs() = 0;
    virtual void UpdateFont(const std::string& name, std::int16_t size, std::int32_t color, bool bold,
                            bool italic) = 0;
    virtual void RefreshProjectList() = 0;

    // The state of a menu entry, by control name. An unknown name is error 5.
    virtual void SetMenuEnabled(const std::string& name, bool enabled) = 0;
    virtual void SetMenuVisible(const std::string& name, bool visible) = 0;
    virtual void SetMenuChecked(const std::string& name, bool checked) = 0;
    virtual void SetMenuCaption(const std::string& name, const std::string& caption) = 0;
    virtual bool IsMenuChecked(const std::string& name) const = 0;

    virtual bool IsMinimized() const = 0;
    virtual bool IsMaximized() const = 0;
    virtual void Move(float left, float top, float width, float height) = 0;  // twips
    virtual void BringToFront() = 0;                                          // ZOrder 0
    virtual bool Unload() = 0;                                                // false if the user refused
};

}  // namespace session
