#include "aids/AidsRoom.h"

#include "aids/MacroCommands.h"
#include "aids/frmMacroDef.h"
#include "aids/frmMacroRef.h"
#include "aids/frmTable.h"
#include "platform/qt/MdiChild.h"

namespace aids {

using session::Document;

AidsRoom::AidsRoom(session::App& app) : app_(app), keyMacros_(app) {
    app_.Hall.DocumentCommands.Add({
        {"mnuEditTable", [this](Document& document, int) { mnuEditTable_Click(document); }},
    });
    AddMacroCommands();
}

// Pastes whatever text lies on the clipboard then.
void AidsRoom::mnuEditTable_Click(Document& document) {
    platform::qt::Modal window(new frmTable(app_.Host, &frame_->Window()));
    window.Run();
    if (!window.IsThere() || !app_.Host.Clip.HasText()) return;
    document.txtText().SendMessage(platform::WM_PASTE);
    app_.Hall.Editor->HighlightSyntax(document);
}

void AidsRoom::AddMacroCommands() {
    app_.Hall.DocumentCommands.Add({
        {"mnuMacroDef",
         [this](Document& document, int) {
             platform::qt::Modal(new frmMacroDef(app_, &frame_->Window())).Run();
             InsertDefinition(app_, document);
         }},
        {"mnuMacro",
         [this](Document& document, int) {
             const std::vector<std::string> symbols = SymbolNames(app_, document);
             const frmMacroRef::Design design = {.Text = document.txtText().Text(),
                                                 .Path = document.Caption(),
                                                 .Folder = FolderOf(app_, document)};
             platform::qt::Modal(new frmMacroRef(app_, design, symbols, &frame_->Window())).Run();
             PasteMacro(app_, document);
         }},
        {"mnuUtilClearMacro",
         [this](Document& document, int) {
             document.ClearMacroPending = true;
             app_.Host.Boxes.Say("From the Utilities menu, select the macro you wish to clear.");
         }},
    });
}

}  // namespace aids
