#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <QLabel>
#include <map>
#include <memory>

#include "platform/Dialogs.h"
#include "platform/ToolLibraries.h"

namespace Ui {
class frmStatus;
}

namespace toolchain {

// "Compilation Results": one for each run of a tool. It can't be closed while OK is disabled.
class frmStatus : public QDialog {
    Q_OBJECT

  public:
    frmStatus(platform::ToolLibraries& libraries, platform::Dialogs& boxes, QWidget* parent = nullptr);
    ~frmStatus() override;

    platform::WindowHandle Handle() const { return handle_; }  // where libraries send to
    void SetInfo(const std::string& text);
    void EnableOk(bool enabled);

    // A message of the library. A counter whose caption is no number raises error 13, one at the top of the
    // 32-bit range error 6.
    void SubClass1_Message(const platform::ToolMessage& message);

    void reject() override;

  private:
    void Show(QLabel& label, const QString& text);
    void CountUp(QLabel& label);

    std::unique_ptr<Ui::frmStatus> ui_;
    platform::ToolLibraries& libraries_;
    platform::Dialogs& boxes_;
    platform::WindowHandle handle_;
    std::map<QLabel*, QElapsedTimer> repainted_;
};

}  // namespace toolchain
