#include "aids/frmMacroCreate.h"

#include <QComboBox>

#include "aids/MacroLibrary.h"
#include "aids/windows/MacroBox.h"
#include "platform/qt/Captions.h"

namespace aids {

frmMacroCreate::frmMacroCreate(session::App& app, const std::string& macro, QWidget* owner)
    : Form("frmMacroCreate", "Create Tesk Macro", owner),
      app_(app),
      names_(LibraryNames(app.Host.Files, app.State.InstallRoot)),
      cmbFiles(platform::qt::Named("cmbFiles", new QComboBox)),
      txtMacro(new MacroBox("txtMacro", app.State.EditorFont)) {
    for (const std::string& name : names_) cmbFiles->addItem(platform::qt::LineOf(name));
    cmbFiles->addItem("New Macro File");
    cmbFiles->setCurrentIndex(cmbFiles->count() - 1);
    txtMacro->setAccessibleName("Macro");
    txtMacro->SetText(macro);
    if (app_.State.HighlightEnabled) ColorMacro();
    LayOut(
        {platform::qt::Fields({{"Label1", "Add macro to file:", cmbFiles}}), txtMacro,
         Buttons({{"OK", "OK", [this] { OK_Click(); }}, {"Cancel", "Cancel", [this] { Cancel_Click(); }}})},
        Size::OfUser);
    ResizeTo(60, 16);
    txtMacro->setFocus();
}

void frmMacroCreate::ColorMacro() {
    const std::string text = txtMacro->Text();
    txtMacro->ApplyFormats(NewMacroFormats(text, app_.State.Keywords));
    txtMacro->SetSelStart(static_cast<std::int32_t>(text.find('\r')) + 2);
}

// Empty if the user gave up. A name that would lead out of the library is asked for again.
std::string frmMacroCreate::AskFileName() {
    std::string name;
    do {
        name =
            app_.Host.Boxes
                .InputBox("Enter the new macro file name without a path or extension.", "New Tesk Macro", "")
                .value_or("");
    } while (name.find_first_of(".\\:") != std::string::npos);
    return name;
}

void frmMacroCreate::OK_Click() {
    const auto index = static_cast<std::size_t>(cmbFiles->currentIndex());
    const std::string name = index < names_.size() ? names_[index] : AskFileName();
    if (name.empty()) return;
    AppendToLibrary(app_.Host.Files, LibraryPath(app_.State.InstallRoot, name), txtMacro->Text());
    accept();
}

}  // namespace aids
