#pragma once

#include <string>
#include <vector>

#include "platform/qt/Form.h"
#include "project/NewDesign.h"
#include "session/App.h"

class QLineEdit;

namespace project {

// "Design Properties": the header of a new design. OK asks for the counts of pins and opens a document with
// the skeleton. Made anew for each opening and shown modal.
class frmNewDesign : public platform::qt::Form, private NewDesignDoors {
  public:
    explicit frmNewDesign(session::App& app, QWidget* owner = nullptr);

    void OK_Click();

  private:
    QLayout* Fields();
    DesignFields ControlValues() const;

    void SetDialogVisible(bool visible) override { setVisible(visible); }
    void ShowProject() override { app_.Hall.Project->ShowProject(); }
    void OpenDocument() override { app_.Hall.Editor->OpenDocument(); }
    void HighlightSyntax(session::Document& document) override {
        app_.Hall.Editor->HighlightSyntax(document);
    }
    void UpdateMru(const std::string& path) override { app_.Hall.Editor->UpdateMru(path); }

    session::App& app_;
    std::vector<QLineEdit*> boxes_;  // in the order of the table
};

}  // namespace project
