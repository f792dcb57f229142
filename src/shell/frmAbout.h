#pragma once

#include "platform/Host.h"
#include "platform/qt/Form.h"

namespace shell {

// What the program is, with its version, and the way to the machine's system information.
class frmAbout : public platform::qt::Form {
  public:
    frmAbout(platform::Host& host, QWidget* owner);
};

}  // namespace shell
