#include "aids/AidsRoom.h"

#include "aids/frmTable.h"
#include "platform/qt/MdiChild.h"

namespace aids {

AidsRoom::AidsRoom(session::App& app) : app_(app) {
    app.Hall.DocumentCommands.Add({
        {"mnuEditTable", [this](session::Document& document, int) { mnuEditTable_Click(document); }},
    });
}

// Pastes whatever text lies on the clipboard then.
void AidsRoom::mnuEditTable_Click(session::Document& document) {
    platform::qt::Modal window(new frmTable(app_.Host, &frame_->Window()));
    window.Run();
    if (!window.IsThere() || !app_.Host.Clip.HasText()) return;
    document.txtText().SendMessage(platform::WM_PASTE);
    app_.Hall.Editor->HighlightSyntax(document);
}

}  // namespace aids
