#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/Dialogs.h"
#include "platform/qt/Form.h"
#include "session/ToolChain.h"

namespace devices {

// "Export Files": the outputs of a device-independent compile, none of them checked when it opens.
class frmExport : public platform::qt::Form {
  public:
    std::string CompilerFlags;  // what OK chose: the tokens of the checked outputs, and no other

    frmExport(const std::vector<session::OutputFrame>& frames, platform::Dialogs& boxes, QWidget* owner);

  private:
    QGroupBox* AddFrame(const session::OutputFrame& frame);
    void OK_Click();

    platform::Dialogs& boxes_;
    std::vector<std::pair<std::string, QCheckBox*>> outputs_;  // by token
};

}  // namespace devices
