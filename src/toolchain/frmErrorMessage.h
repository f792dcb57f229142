#pragma once

#include "platform/qt/Form.h"
#include "session/Commands.h"
#include "toolchain/ErrorCodes.h"

namespace toolchain {

// "Compile Message": what the message data says about a line of the message list.
class frmErrorMessage : public platform::qt::Form {
  public:
    frmErrorMessage(const ErrorEntry& entry, session::Commands& hall, QWidget* owner = nullptr);

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    session::Commands& hall_;
};

}  // namespace toolchain
