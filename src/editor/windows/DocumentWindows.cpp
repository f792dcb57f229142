#include "editor/windows/DocumentWindows.h"

#include "editor/frmDocument.h"
#include "platform/qt/Guard.h"

namespace editor {

session::Document& DocumentWindows::Create() {
    auto* document = new frmDocument(app_);
    frame_.AddChild(*document, *document);
    all_.push_back(document);
    platform::qt::On(document, &frmDocument::SelectionToggled, this, [this] { frame_.ChildTouched(); });
    platform::qt::On(document, &frmDocument::Unloaded, this, [this, document] {
        std::erase(all_, document);
        emit Unloaded(document);
    });
    document->show();
    return *document;
}

void DocumentWindows::Registered(session::Document& document) {
    static_cast<frmDocument&>(document).SetRegistered();
}

}  // namespace editor
