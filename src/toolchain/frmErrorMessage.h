#pragma once

#include <QDialog>
#include <memory>

#include "session/Commands.h"
#include "toolchain/ErrorCodes.h"

namespace Ui {
class frmErrorMessage;
}

namespace toolchain {

// "Compile Message": what the message data says about a line of the message list.
class frmErrorMessage : public QDialog {
    Q_OBJECT

  public:
    frmErrorMessage(const ErrorEntry& entry, session::Commands& hall, QWidget* parent = nullptr);
    ~frmErrorMessage() override;

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    session::Commands& hall_;
    std::unique_ptr<Ui::frmErrorMessage> ui_;
};

}  // namespace toolchain
