#pragma once

#include "editor/windows/SearchForm.h"

namespace editor {

// "Find Text": asks for a text to search and enters it in the values. Made anew for each opening and shown
// modal.
class frmFindText : public SearchForm {
  public:
    explicit frmFindText(SearchValues& values, QWidget* owner = nullptr);

    void OK_Click();

  private:
    SearchValues& values_;
};

}  // namespace editor
