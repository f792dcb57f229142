#include "aids/frmMacroRef.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>

#include "aids/MacroSources.h"
#include "aids/windows/MacroBox.h"
#include "platform/qt/Captions.h"
#include "platform/qt/Guard.h"

namespace aids {

using platform::qt::Column;
using platform::qt::Fields;
using platform::qt::Frame;
using platform::qt::Label;
using platform::qt::LineOf;
using platform::qt::Named;
using platform::qt::On;

frmMacroRef::frmMacroRef(session::App& app, const Design& design, const std::vector<std::string>& symbols,
                         QWidget* owner)
    : Form("frmMacroRef", "Insert Macro Reference", owner),
      app_(app),
      cmbMacros(Named("cmbMacros", new QComboBox)),
      txtDefinition(new MacroBox("txtDefinition", app.State.EditorFont)),
      lstArgs(Named("lstArgs", new QListWidget)),
      cmbSymbols(Named("cmbSymbols", new QComboBox)) {
    app_.Host.Clip.SetText("");
    txtDefinition->ShowMacro({});
    cmbSymbols->setEditable(true);
    cmbSymbols->setInsertPolicy(QComboBox::NoInsert);
    cmbSymbols->setCompleter(nullptr);  // what is typed stays as it is
    for (const std::string& symbol : symbols) cmbSymbols->addItem(LineOf(symbol));
    cmbSymbols->setCurrentIndex(-1);
    LayOutParts();
    ReadMacros(design);
    On(cmbMacros, &QComboBox::currentIndexChanged, this, [this] { ShowMacro(); });
    On(lstArgs, &QListWidget::currentRowChanged, this, [this] { ShowArgument(); });
    On(cmbSymbols, &QComboBox::editTextChanged, this, [this] { AssignArgument(); });
}

void frmMacroRef::LayOutParts() {
    auto* selection = Column({Fields({{"Label1", "Defined Macros:", cmbMacros}}), txtDefinition});
    auto* list = Column({Label("Label2", "Argument List", lstArgs), lstArgs});
    auto* variable = Column({Label("Label3", "Variable", cmbSymbols), cmbSymbols, platform::qt::Stretch()});
    auto* arguments = platform::qt::Row({list, variable});
    for (int column : {0, 1}) arguments->setStretch(column, 1);
    LayOut(
        {Frame("Frame2", "Select Tesk Macro", selection), Frame("Frame1", "Assign Arguments", arguments),
         Buttons({{"OK", "OK", [this] { OK_Click(); }}, {"Cancel", "Cancel", [this] { Cancel_Click(); }}})},
        Size::OfUser);
    ResizeTo(66, 24);
}

void frmMacroRef::ReadMacros(const Design& design) {
    MacroSources sources(app_.Host.Files, app_.Host.Boxes, design.Folder, table_);
    const bool isWhole = platform::qt::Guarded([&] { sources.ReadDesign(design.Text); });
    for (const std::string& name : table_.Names) cmbMacros->addItem(LineOf(name));
    cmbMacros->setCurrentIndex(-1);
    if (!table_.Names.empty() || !isWhole) return;
    app_.Host.Boxes.Say("The source file " + design.Path +
                        " contains no macro definitions.  Tesk Macros must be defined within the source file "
                        "before they can be referenced.  \r\n\r\nSelect Edit-Insert Macro Definition to "
                        "define a Tesk macro.");
}

void frmMacroRef::ShowMacro() {
    const MacroRecord& macro = table_.At(cmbMacros->currentIndex());
    txtDefinition->ShowMacro(macro);
    lstArgs->clear();
    for (const std::string& entry : ArgumentEntries(macro.Args)) lstArgs->addItem(LineOf(entry));
}

void frmMacroRef::ShowArgument() {
    if (const QListWidgetItem* entry = lstArgs->currentItem())
        cmbSymbols->setEditText(QString::fromStdString(EntryValue(entry->text().toStdString())));
}

void frmMacroRef::AssignArgument() {
    if (QListWidgetItem* entry = lstArgs->currentItem())
        entry->setText(QString::fromStdString(EntryHead(entry->text().toStdString())) +
                       cmbSymbols->currentText());
}

void frmMacroRef::OK_Click() {
    app_.Host.Clip.SetText("");
    if (cmbMacros->count() > 0) {
        std::vector<std::string> entries;
        for (int i = 0; i < lstArgs->count(); ++i) entries.push_back(lstArgs->item(i)->text().toStdString());
        app_.Host.Clip.SetText(ReferenceText(table_.At(cmbMacros->currentIndex()).Name, entries));
    }
    accept();
}

}  // namespace aids
