#pragma once

#include <vector>

#include "editor/FindText.h"
#include "platform/qt/Form.h"

class QComboBox;

namespace editor {

// What the dialogs for find and replace share: the text and the options of a search. Not all of them have an
// effect; see the commands in FindText.h.
class SearchForm : public platform::qt::Form {
  protected:
    using Form::Form;

    // The frames with the options; `more` is a box of the form's own behind the others, or null.
    std::vector<platform::qt::Item> OptionFrames(QCheckBox* more = nullptr);
    SearchEntry Entry() const;  // from the controls and Combo1
};

// A field for text to search or to put in; it offers none of those before.
QComboBox* SearchCombo(const char* name);

}  // namespace editor
