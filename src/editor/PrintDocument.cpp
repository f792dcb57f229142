#include "editor/PrintDocument.h"

#include "base/ScopeExit.h"

namespace editor {

void FilePrint(session::App& app, session::Document& document) {
    platform::Printers& printers = app.Host.Paper;
    platform::RichTextBox& box = document.txtText();
    if (printers.Count() <= 0) return app.Host.Boxes.Say("A printer must be defined to print.");
    int flags = platform::NoPageNumbers | platform::ReturnDeviceContext;
    if (box.SelLength() == 0) flags |= platform::NoSelection;
    const std::optional<int> chosen = printers.Choose(flags);
    if (!chosen) return;
    const base::ScopeExit clearPanel([&] { app.Hall.Main->SetPanel(1, ""); });
    app.Hall.Main->SetPanel(1, "Printing...");
    // Kept: printing everything loses the selection and the caret's place.
    if ((*chosen & platform::PrintSelection) == 0) box.SetSelStart(0);
    const platform::HourglassScope hourglass(app.Host.Desktop);
    printers.Print(box);
}

}  // namespace editor
