#include "aids/frmMacroDef.h"

#include <QComboBox>
#include <QListWidget>
#include <QRadioButton>

#include "aids/frmMacroCreate.h"
#include "aids/windows/MacroBox.h"
#include "base/Number.h"
#include "platform/qt/Captions.h"
#include "platform/qt/Guard.h"

namespace aids {

using platform::qt::Column;
using platform::qt::Frame;
using platform::qt::Label;
using platform::qt::LineOf;
using platform::qt::Named;
using platform::qt::On;
using platform::qt::Row;
using platform::qt::Stretch;

namespace {

constexpr std::int32_t grey = 0xC0C0C0;
constexpr std::int32_t white = 0xFFFFFF;
constexpr const char* newTitle = "New Tesk Macro";

}  // namespace

frmMacroDef::frmMacroDef(session::App& app, QWidget* owner)
    : Form("frmMacroDef", "Insert Macro Definition", owner),
      app_(app),
      cmbFiles(Named("cmbFiles", new QComboBox)),
      lstMacros(Named("lstMacros", new QListWidget)),
      txtDefinition(new MacroBox("txtDefinition", app.State.EditorFont)),
      txtMacros(new MacroBox("txtMacros", app.State.EditorFont)) {
    app_.Host.Clip.SetText("");
    cmbFiles->setToolTip("Available macro file. Must be included in the source file");
    lstMacros->setAccessibleName("Macros");
    txtDefinition->ShowMacro({});
    LayOutParts();
    Connect();
    Control<QRadioButton>("optIncludeFile").setChecked(true);
    ChooseInsertion(false);
    CheckLibrary();
}

void frmMacroDef::LayOutParts() {
    QPushButton* add = Button({"Add", "&Add", [this] { Append(AddedMacro); }});
    QPushButton* make = Button({"New", "&New ...", [this] { New_Click(); }});
    QPushButton* remove = Button({"Remove", "&Remove", [this] { Remove_Click(); }});
    add->setToolTip("Add the currently selected macro to the Selected Macros list.");
    make->setToolTip("Create a new macro.");
    remove->setToolTip("Remove the currently selected macro");
    auto* options = platform::qt::RadioButtons(
        {{"optIncludeFile", "Include macro file", "Include the selected macro file in the source file."},
         {"optInsertMacro", "Insert macro definitions",
          "Insert the selected macro definitions into the source file."}},
        this);
    auto* choice = Column({Label("Label1", "File/Name", cmbFiles), cmbFiles, lstMacros, Row({add, make})});
    auto* preview = Column({Label("Label3", "Definition", txtDefinition), txtDefinition});
    auto* selection = Row({choice, preview});
    selection->setStretch(1, 1);
    LayOut(
        {Frame("Frame2", "Macro Selection", selection),
         Frame("Frame3", "Selected Macros", Column({txtMacros, Row({Stretch(), remove})})),
         Frame("Frame1", "Options", Row({options->button(0), options->button(1), Stretch()})),
         Buttons({{"OK", "OK", [this] { OK_Click(); }}, {"Cancel", "Cancel", [this] { Cancel_Click(); }}})},
        Size::OfUser);
    ResizeTo(100, 30);
}

void frmMacroDef::Connect() {
    On(cmbFiles, &QComboBox::currentIndexChanged, this, [this] { LoadMacroFile(); });
    On(lstMacros, &QListWidget::currentRowChanged, this, [this] { ShowSelected(); });
    On(lstMacros, &QListWidget::itemDoubleClicked, this, [this] { Append(AddedHeader); });
    On(txtMacros, &MacroBox::Clicked, this, [this] { SelectLine(); });
    On(&Control<QRadioButton>("optInsertMacro"), &QRadioButton::toggled, this,
       [this](bool on) { ChooseInsertion(on); });
}

void frmMacroDef::CheckLibrary() {
    const std::string folder = app_.State.InstallRoot + "\\MACRO";
    names_ = LibraryNames(app_.Host.Files, app_.State.InstallRoot);
    if (!app_.Host.Files.DirectoryExists(folder)) {
        app_.Host.Boxes.Say("The Macro directory could not be found, unable to load macro files.");
        Disable();
    } else if (names_.empty()) {
        app_.Host.Boxes.Say("No macro files found in " + folder);
        Disable();
    } else {
        FillFiles();
    }
}

void frmMacroDef::Disable() {
    for (const char* frame : {"Frame1", "Frame2", "Frame3"}) Control<QGroupBox>(frame).setEnabled(false);
    Control<QPushButton>("OK").setEnabled(false);
}

void frmMacroDef::FillFiles() {
    names_ = LibraryNames(app_.Host.Files, app_.State.InstallRoot);
    cmbFiles->clear();
    for (const std::string& name : names_) cmbFiles->addItem(LineOf(name));  // which selects the first
    Control<QPushButton>("Remove").setEnabled(false);
}

void frmMacroDef::LoadMacroFile() {
    lstMacros->clear();
    table_ = {};
    txtDefinition->ShowMacro({});
    if (cmbFiles->currentIndex() < 0) return;
    const std::string& name = names_.at(static_cast<std::size_t>(cmbFiles->currentIndex()));
    const auto error = platform::qt::ErrorOf(
        [&] { aids::LoadMacroFile(app_.Host.Files, LibraryPath(app_.State.InstallRoot, name), table_); });
    for (const std::string& macro : table_.Names) lstMacros->addItem(LineOf(macro));
    lstMacros->setCurrentRow(0);
    if (error) platform::qt::ShowErrorSoon(*error);
}

void frmMacroDef::ShowSelected() {
    if (lstMacros->currentRow() < 0) return;
    txtDefinition->ShowMacro(table_.At(lstMacros->currentRow()));
    txtMacros->SetSelLength(0);
    Control<QPushButton>("Remove").setEnabled(false);
}

void frmMacroDef::Append(std::string (*added)(std::string_view, const MacroRecord&)) {
    if (lstMacros->currentRow() < 0) return;
    const std::string more = added(txtMacros->TextView(), table_.At(lstMacros->currentRow()));
    if (!more.empty()) txtMacros->SetText(txtMacros->Text() + more);
}

// The whole line under the caret, with its end.
void frmMacroDef::SelectLine() {
    const std::intptr_t line = txtMacros->SendMessage(platform::EM_LINEFROMCHAR, -1);
    const auto start = static_cast<std::int32_t>(txtMacros->SendMessage(platform::EM_LINEINDEX, line));
    const auto end = txtMacros->TextView().find("\r\n", static_cast<std::size_t>(start));
    txtMacros->SetSelStart(start);
    txtMacros->SetSelLength(end == std::string_view::npos ? txtMacros->TextLength() - start
                                                          : static_cast<std::int32_t>(end) + 2 - start);
    Control<QPushButton>("Remove").setEnabled(true);
}

void frmMacroDef::ChooseInsertion(bool isInsertion) {
    Control<QPushButton>("Add").setEnabled(isInsertion);
    txtMacros->SetPaper(isInsertion ? white : grey);
}

void frmMacroDef::Remove_Click() {
    txtMacros->SendMessage(platform::WM_CUT);
    Control<QPushButton>("Remove").setEnabled(false);
}

void frmMacroDef::New_Click() {
    const std::string name =
        app_.Host.Boxes.InputBox("Enter the name for the Tesk macro.", newTitle, "").value_or("");
    if (name.empty()) return;
    std::vector<std::string> arguments;
    if (!AskArguments(arguments)) return;
    platform::qt::Modal(new frmMacroCreate(app_, NewMacroText(name, arguments), this)).Run();
    FillFiles();
}

// False if the user gave up.
bool frmMacroDef::AskArguments(std::vector<std::string>& names) {
    platform::Dialogs& boxes = app_.Host.Boxes;
    const std::string prompt = "Enter the number of arguments for the macro.";
    std::string answer = boxes.InputBox(prompt, newTitle, "").value_or("");
    while (!answer.empty() && !base::IsNumericText(answer)) {
        boxes.Say("The number of arguments must be numeric.");
        answer = boxes.InputBox(prompt, newTitle, "").value_or("");
    }
    if (answer.empty()) return false;
    const std::int16_t count = base::RoundToInt16(base::LeadingNumber(answer));
    for (int i = 1; i <= count; ++i) {
        const std::string argument = "Enter the name of argument " + std::to_string(i);
        names.push_back(boxes.InputBox(argument, newTitle, "").value_or(""));
        if (names.back().empty()) return false;
    }
    return true;
}

void frmMacroDef::OK_Click() {
    if (Control<QRadioButton>("optIncludeFile").isChecked()) {
        const std::string& name = names_.at(static_cast<std::size_t>(cmbFiles->currentIndex()));
        app_.Host.Clip.SetText("$INCLUDE " + name + ".MAC\r\n");
    } else {
        app_.Host.Clip.SetText(txtMacros->Text() + "\r\n");
    }
    accept();
}

}  // namespace aids
