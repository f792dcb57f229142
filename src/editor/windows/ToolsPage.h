#pragma once

#include <QWidget>
#include <array>

#include "editor/CustomTools.h"
#include "editor/Options.h"

class QCheckBox;
class QGroupBox;
class QLayout;
class QListWidget;
class QPushButton;

namespace editor {

// The Tools tab of frmKorvane: where the standard tools appear, and the custom tools.
class ToolsPage : public QWidget {
  public:
    explicit ToolsPage(session::App& app);

    void Read(Options& options) const;  // into StdUtils and CustUtils

  private:
    QLayout* StandardTools();
    QGroupBox* CustomFrame();
    void FillList(int line);
    session::CustomUtility* Chosen();
    void ShowFlags();
    void SayFull();
    void Add_Click();
    void Edit_Click();
    void Macro_Click();
    void Remove_Click();

    struct Boxes {
        QCheckBox* Menu;
        QCheckBox* Toolbar;
    };

    session::App& app_;
    CustomTools tools_;
    std::array<Boxes, 7> standard_;
    QListWidget* lstCustom;
    QPushButton* Edit;
    QPushButton* Remove;
    QCheckBox* MenuCustom;
    QCheckBox* TBCustom;
};

}  // namespace editor
