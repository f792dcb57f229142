#pragma once

#include <QElapsedTimer>
#include <map>

#include "platform/Dialogs.h"
#include "platform/ToolLibraries.h"
#include "platform/qt/Form.h"

namespace toolchain {

// "Compilation Results": one for each run of a tool. It can't be closed while OK is disabled.
class frmStatus : public platform::qt::Form {
    Q_OBJECT

  public:
    frmStatus(platform::ToolLibraries& libraries, platform::Dialogs& boxes, QWidget* owner = nullptr);
    ~frmStatus() override;

    platform::WindowHandle Handle() const { return handle_; }  // where libraries send to
    void SetInfo(const std::string& text);
    void EnableOk(bool enabled);

    // A message of the library. A counter whose caption is no number raises error 13, one at the top of the
    // 32-bit range error 6.
    void SubClass1_Message(const platform::ToolMessage& message);

  private:
    void Cancel_Click() override;
    void Show(QLabel& label, const QString& text);
    void CountUp(QLabel& label);

    platform::ToolLibraries& libraries_;
    platform::Dialogs& boxes_;
    platform::WindowHandle handle_;
    QLabel* lblStatus = platform::qt::Label("lblStatus", "Initializing");
    QLabel* lblInfo = platform::qt::Label("lblInfo", "");
    QLabel* lblWarnings = platform::qt::Label("lblWarnings", "0");
    QLabel* lblErrors = platform::qt::Label("lblErrors", "0");
    std::map<QLabel*, QElapsedTimer> repainted_;
};

}  // namespace toolchain
