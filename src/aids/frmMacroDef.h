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

// "Insert Macro Definition": leaves definitions of the library, or the line that includes one of its files,
// on the clipboard, which it empties as it opens. Made anew for each opening and shown modal.
class frmMacroDef : public platform::qt::Form {
  public:
    explicit frmMacroDef(session::App& app, QWidget* owner = nullptr);

  private:
    void LayOutParts();
    void Connect();
    void CheckLibrary();
    void Disable();
    void FillFiles();
    void LoadMacroFile();
    void ShowSelected();
    void Append(std::string (*added)(std::string_view, const MacroRecord&));
    void SelectLine();
    void ChooseInsertion(bool isInsertion);
    void Remove_Click();
    void New_Click();
    bool AskArguments(std::vector<std::string>& names);
    void OK_Click();

    session::App& app_;
    std::vector<std::string> names_;  // of the files in cmbFiles
    MacroTable table_;
    QComboBox* cmbFiles;
    QListWidget* lstMacros;
    MacroBox* txtDefinition;
    MacroBox* txtMacros;
};

}  // namespace aids
