#pragma once

#include <string>
#include <vector>

#include "aids/MacroLibrary.h"
#include "platform/qt/Form.h"
#include "session/App.h"

class QComboBox;
class QListWidget;

namespace aids {

class MacroBox;

// "Insert Macro Reference": leaves the call of a macro that the design defines or includes on the clipboard,
// which it empties as it opens. Made anew for each opening and shown modal.
class frmMacroRef : public platform::qt::Form {
  public:
    struct Design {
        std::string Text;
        std::string Path;    // caption of its window
        std::string Folder;  // with final backslash; the included files lie there
    };
    frmMacroRef(session::App& app, const Design& design, const std::vector<std::string>& symbols,
                QWidget* owner = nullptr);

  private:
    void LayOutParts();
    void ReadMacros(const Design& design);
    void ShowMacro();
    void ShowArgument();
    void AssignArgument();
    void OK_Click();

    session::App& app_;
    MacroTable table_;
    QComboBox* cmbMacros;
    MacroBox* txtDefinition;
    QListWidget* lstArgs;
    QComboBox* cmbSymbols;
};

}  // namespace aids
