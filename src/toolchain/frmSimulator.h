#pragma once

#include <vector>

#include "platform/qt/Form.h"
#include "session/App.h"
#include "toolchain/SimulatorOptions.h"

namespace toolchain {

// "Simulator Options": edits SimulatorFlags. Made anew for each opening and shown modal.
class frmSimulator : public platform::qt::Form {
  public:
    explicit frmSimulator(session::App app, QWidget* owner = nullptr);

    void OK_Click();

  private:
    session::App app_;
    std::vector<QCheckBox*> boxes_;  // as the rows of the table
};

}  // namespace toolchain
