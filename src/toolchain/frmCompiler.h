#pragma once

#include <vector>

#include "platform/qt/Form.h"
#include "session/App.h"
#include "toolchain/CompilerOptions.h"

class QLineEdit;

namespace toolchain {

// "Compiler Options": edits CompilerFlags and LibraryName through the option record, which its owner keeps
// longer than the window. Made anew for each opening and shown modal.
class frmCompiler : public platform::qt::Form {
  public:
    // Reads CompilerFlags into the record and shows it. A string that can't be read is error 13.
    frmCompiler(session::App app, CompilerOptions& options, QWidget* owner = nullptr);

    void OK_Click();
    void cmdApply_Click();  // the showing tab alone; the window stays
    void ChooseLibrary_Click();
    bool ShowCatalog();

  private:
    QTabWidget* MakeTabs();
    QLayout* OutputFiles();
    QLayout* Minimizations();
    QLayout* OptionPage(CompilerTab tab);
    QLayout* LibraryPage();
    QLayout* DevicePage();
    std::vector<platform::qt::Item> AddBoxes(CompilerTab tab, std::string_view frame);
    void ShowOptions();
    CompilerOptions ControlValues() const;
    void Apply(CompilerTab tab);

    struct OptionBox {
        std::int16_t CompilerOptions::*Field;
        QCheckBox* Box;
    };

    session::App app_;
    CompilerOptions& options_;
    std::vector<OptionBox> boxes_;
    QTabWidget* SSTab1;
    QButtonGroup* optMinimization;
    QLineEdit* Library;
    QCheckBox* chkDevInFile;
};

}  // namespace toolchain
