#pragma once

#include <string>
#include <vector>

#include "platform/qt/Form.h"
#include "project/NewDesign.h"

class QLineEdit;

namespace project {

// "Design Properties": the header of a new design. OK asks for the counts of pins and opens a document with
// the skeleton. Made anew for each opening and shown modal.
class frmNewDesign : public platform::qt::Form {
  public:
    explicit frmNewDesign(session::App& app, QWidget* owner = nullptr);

    void OK_Click();

  private:
    QLayout* Fields();
    DesignFields ControlValues() const;

    session::App& app_;
    std::vector<QLineEdit*> boxes_;  // in the order of the table
};

}  // namespace project
