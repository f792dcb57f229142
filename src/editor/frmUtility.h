#pragma once

#include <string>

#include "platform/Dialogs.h"
#include "platform/qt/Form.h"

class QLineEdit;

namespace editor {

// "Add Utility": the program and the name of one custom tool.
class frmUtility : public platform::qt::Form {
  public:
    frmUtility(platform::Dialogs& boxes, std::string program, std::string name, QWidget* owner = nullptr);

    std::string ProgramPath;
    std::string ToolName;

  private:
    void Browse_Click();
    void OK_Click();
    void Refuse(QLineEdit& field, const char* reason);

    platform::Dialogs& boxes_;
    QLineEdit* Program;
    QLineEdit* ProgramName;
};

}  // namespace editor
