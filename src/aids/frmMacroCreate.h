#pragma once

#include <string>
#include <vector>

#include "platform/qt/Form.h"
#include "session/App.h"

class QComboBox;

namespace aids {

class MacroBox;

// "Create Tesk Macro": a definition to be filled in, which goes to the end of a file of the library.
class frmMacroCreate : public platform::qt::Form {
  public:
    frmMacroCreate(session::App& app, const std::string& macro, QWidget* owner = nullptr);

  private:
    void ColorMacro();
    std::string AskFileName();
    void OK_Click();

    session::App& app_;
    std::vector<std::string> names_;  // of the files in cmbFiles; the entry behind them is the new file
    QComboBox* cmbFiles;
    MacroBox* txtMacro;
};

}  // namespace aids
