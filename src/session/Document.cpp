#include "session/Document.h"

namespace session {

void Document::SetCaption(const std::string& caption) {
    caption_ = caption;
    ShowCaption();
}

void Document::SetFile(const std::string& caption, const std::string& fileName) {
    fileName_ = fileName;
    SetCaption(caption);
}

void Document::MarkProject(bool shows) {
    showsProject_ = shows;
    UpdateMenus();
}

void Document::TextChanged() {
    dirty_ = true;
    ++revision_;
}

void Document::MarkSaved() { dirty_ = unread_ = false; }

}  // namespace session
