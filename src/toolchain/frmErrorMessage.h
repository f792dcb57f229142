#pragma once

#include "platform/qt/Form.h"
#include "toolchain/ErrorCodes.h"

namespace toolchain {

// "Compile Message": what the message data says about a line of the message list.
class frmErrorMessage : public platform::qt::Form {
  public:
    frmErrorMessage(const ErrorEntry& entry, QWidget* owner = nullptr);
};

}  // namespace toolchain
