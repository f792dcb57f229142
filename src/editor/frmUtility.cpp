#include "editor/frmUtility.h"

#include <QLineEdit>

#include "base/modLib.h"
#include "platform/qt/Captions.h"

namespace editor {

using platform::qt::Named;

frmUtility::frmUtility(platform::Dialogs& boxes, std::string program, std::string name, QWidget* owner)
    : Form("frmUtility", "Add Utility", owner),
      ProgramPath(std::move(program)),
      ToolName(std::move(name)),
      boxes_(boxes),
      Program(Named("Program", new QLineEdit(platform::qt::Shown(ProgramPath)))),
      ProgramName(Named("ProgramName", new QLineEdit(platform::qt::Shown(ToolName)))) {
    Program->setMinimumWidth(platform::qt::InCharacters(50, 0).width());
    QGridLayout* fields =
        platform::qt::Fields({{"Label1", "Program:", Program}, {"Label2", "Name:", ProgramName}});
    fields->addWidget(Button({"Browse", "&Browse ...", [this] { Browse_Click(); }}), 0, 2);
    LayOut({fields, Buttons({{"OK", "&OK", [this] { OK_Click(); }},
                             {"Cancel", "&Cancel", [this] { Cancel_Click(); }}})});
}

void frmUtility::Browse_Click() {
    const auto choice = boxes_.OpenFile({.Title = "Select Program",
                                         .Filter = "Program Files (*.exe;*.com;*.bat)|*.exe;*.com;*.bat",
                                         .DefaultExtension = ".EXE"});
    if (!choice) return;
    Program->setText(platform::qt::Shown(*choice));
    ProgramName->setText(platform::qt::Shown(base::BareName(*choice)));
}

void frmUtility::Refuse(QLineEdit& field, const char* reason) {
    boxes_.Say(reason);
    field.setFocus();
}

void frmUtility::OK_Click() {
    if (Program->text().isEmpty())
        return Refuse(*Program, "You must select a program file or Cancel to close.");
    if (ProgramName->text().isEmpty())
        return Refuse(*ProgramName,
                      "You must assign a name for the menu or toolbar tip or press Cancel to close.");
    ProgramPath = Program->text().toStdString();
    ToolName = ProgramName->text().toStdString();
    accept();
}

}  // namespace editor
