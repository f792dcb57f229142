#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "platform/RichTextBox.h"
#include "session/Symbols.h"

namespace session {

// The tools in the Utilities menu of a document. A place once shown may stay so with the caption of before.
struct ToolMenu {
    struct Place {
        std::string Caption;
        bool IsVisible = false;
    };
    std::array<Place, 14> Places;  // 1 to 13
    bool HasMacro = false;         // there is a macro that can be cleared
    bool HasTools = false;
};

// An open document as other rooms see it. Its window, frmDocument, shows the state that stands here.
class Document {
  public:
    virtual ~Document() = default;

    std::int16_t ID = 0;            // DocumentCount when the window was created; its decimal text is the key
    session::Symbols Symbols;       // pins, nodes and fields of the design
    bool InComment = false;         // a comment was opened by typing and not closed
    std::int32_t CommentStart = 0;  // offset of its "/*"
    ToolMenu Tools;
    bool ClearMacroPending = false;  // the next macro that is chosen of Tools is cleared

    virtual platform::RichTextBox& txtText() = 0;
    virtual void UpdateMenus() = 0;   // they show RecentFiles, Tools and the mark
    virtual void BringToFront() = 0;  // ZOrder 0
    virtual bool Unload() = 0;        // false if the user refused

    // Caption and path: what the window is called, and the upper-case path of its file, empty if it has none.
    const std::string& Caption() const { return caption_; }
    const std::string& FileName() const { return fileName_; }
    void SetCaption(const std::string& caption);
    void SetFile(const std::string& caption, const std::string& fileName);

    // The mark at mnuProject.
    bool ShowsProject() const { return showsProject_; }
    void MarkProject(bool shows);

    // Whether the text is that of the file.
    bool Dirty() const { return dirty_; }                 // changed since it was read or written
    bool Unread() const { return unread_; }               // the file is there and could not be read
    std::uint64_t Revision() const { return revision_; }  // counts the changes of txtText
    void TextChanged();
    void MarkSaved();
    void MarkUnread() { unread_ = true; }

  protected:
    virtual void ShowCaption() = 0;

  private:
    std::string caption_;
    std::string fileName_;
    bool showsProject_ = false;
    bool dirty_ = false;
    bool unread_ = false;
    std::uint64_t revision_ = 0;
};

}  // namespace session
