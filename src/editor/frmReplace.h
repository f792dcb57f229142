#pragma once

#include "editor/windows/SearchForm.h"

namespace editor {

// "Replace Text": asks for a text to search and what replaces it, and enters both in the values. Made anew
// for each opening and shown modal. Its own close control ends it and leaves the values alone.
class frmReplace : public SearchForm {
  public:
    explicit frmReplace(SearchValues& values, QWidget* owner = nullptr);

    void OK_Click();
    void ChangeAll_Click();

  protected:
    void Cancel_Click() override;
    void closeEvent(QCloseEvent* event) override;

  private:
    SearchValues& values_;
};

}  // namespace editor
