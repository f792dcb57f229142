#pragma once

#include "editor/Options.h"
#include "platform/qt/Form.h"

class QComboBox;
class QLineEdit;

namespace editor {

class KeywordPage;
class ToolsPage;

// "KORVANE Settings": edits copies of the settings, which OK puts into the shared state. Made anew for each
// opening and shown modal.
class frmKorvane : public platform::qt::Form {
  public:
    explicit frmKorvane(session::App& app, QWidget* owner = nullptr);

  private:
    QLayout* General();
    QLayout* Fonts();
    QGroupBox* FontFrame(const char* caption, const char* description, const char* button,
                         session::FontRecord& font);
    void Browse_Click();
    void OK_Click();

    session::App& app_;
    Options options_;  // the fonts; the rest is read from the controls
    QLineEdit* txtWorking;
    QComboBox* Schematic;
    QCheckBox* AutoArrange;
    QCheckBox* MacroSymTable;
    ToolsPage* tools_;
    KeywordPage* keywords_;
};

}  // namespace editor
