#pragma once

#include <QWidget>

#include "editor/KeywordEdit.h"
#include "session/App.h"

class QCheckBox;
class QLabel;
class QLayout;
class QLineEdit;
class QListWidget;

namespace editor {

// The Syntax tab of frmKorvane: the keywords, their colours and attributes.
class KeywordPage : public QWidget {
  public:
    explicit KeywordPage(session::App& app);

    const std::vector<session::KeywordRec>& Keywords() const { return edit_.Words; }
    void Defaults();  // as they were when the page was made

  private:
    QLayout* ListRow();
    QLayout* ColorGrid();
    QLayout* AttributeBoxes();
    QLayout* Texts();
    void FillList();
    void ShowWord(int index);
    void ChooseColor(std::int32_t color);
    void ShowSample();
    session::KeywordRec Sample() const;
    void AddWord_Click();
    void DelWord_Click();
    void Apply_Click();
    void EnableHighlight_Click();
    void EnableControls();

    session::App& app_;
    KeywordEdit edit_;
    std::int32_t color_ = 0;  // of Selected
    QCheckBox* EnableHighlight;
    QListWidget* KeywordList;
    QLabel* Selected;
    QCheckBox* Bold;
    QCheckBox* Italic;
    QCheckBox* Underline;
    QLineEdit* txtSample;
    QLineEdit* txtCurrent;
};

}  // namespace editor
