#pragma once

#include "aids/MacroLibrary.h"
#include "platform/qt/TextBox.h"

namespace aids {

// A text of macros in a dialog, in the editor's font. Tab leads on to the next control.
class MacroBox : public platform::qt::TextBox {
    Q_OBJECT

  public:
    MacroBox(const char* name, const session::FontRecord& font);

    // For a text that is not to be typed in: the arguments in bold and blue, and the definition below.
    void ShowMacro(const MacroRecord& macro);

  signals:
    void Clicked();  // the left mouse button was let go

  protected:
    bool focusNextPrevChild(bool next) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
};

}  // namespace aids
