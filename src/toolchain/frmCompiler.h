#pragma once

#include <QDialog>
#include <array>
#include <vector>

#include "session/App.h"
#include "toolchain/CompilerOptions.h"

class QButtonGroup;
class QCheckBox;
class QLineEdit;
class QTabWidget;

namespace toolchain {

// "Compiler Options": edits CompilerFlags and LibraryName through the option record, which its owner keeps
// longer than the window. Made anew for each opening and shown modal.
class frmCompiler : public QDialog {
  public:
    // Reads CompilerFlags into the record and shows it. A string that can't be read is error 13.
    frmCompiler(session::App app, CompilerOptions& options, QWidget* parent = nullptr);

    void OK_Click();
    void Cancel_Click();
    void cmdApply_Click();  // the showing tab alone; the window stays
    void ChooseLibrary_Click();
    bool ShowCatalog();

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void BuildTabs();
    QWidget* BuildOutputFiles();
    QWidget* BuildMinimization();
    QWidget* BuildBoxes(CompilerTab tab);
    QWidget* BuildLibrary();
    QWidget* BuildDevice();
    QWidget* BuildButtons();
    QCheckBox* AddBox(const CompilerOption& option);
    std::vector<QCheckBox*> AddBoxes(CompilerTab tab, const char* frame);
    void ShowOptions();
    CompilerOptions ControlValues() const;
    void Apply(CompilerTab tab);

    struct OptionBox {
        std::int16_t CompilerOptions::*Field;
        QCheckBox* Box;
    };

    session::App app_;
    CompilerOptions& options_;
    QTabWidget* tabs_ = nullptr;
    std::vector<OptionBox> boxes_;
    QButtonGroup* minimization_ = nullptr;
    QLineEdit* library_ = nullptr;
    QCheckBox* devInFile_ = nullptr;
};

}  // namespace toolchain
