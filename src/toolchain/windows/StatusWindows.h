#pragma once

#include <functional>
#include <memory>

#include "session/App.h"
#include "toolchain/RunWindows.h"
#include "toolchain/frmMessage.h"
#include "toolchain/frmStatus.h"

namespace toolchain {

// The windows of a run for real.
class StatusWindows : public RunWindows {
  public:
    // `messages` gives frmMessage, made if needed; `owner` is the window that frmStatus stays above.
    StatusWindows(session::App& app, std::function<frmMessage&()> messages, QWidget* owner)
        : app_(app), messages_(std::move(messages)), owner_(owner) {}

    void CreateStatus() override;
    void UnloadStatus() override;
    void SetInfo(const std::string& text) override;
    void EnableOk(bool enabled) override;
    void ShowStatusModeless() override;
    void ShowStatusModal() override;
    void AddMessages(const std::vector<std::string>& lines) override;
    platform::WindowHandle StatusHandle() override;
    platform::WindowHandle MessagesHandle() override;

  private:
    session::App& app_;
    std::function<frmMessage&()> messages_;
    QWidget* owner_;
    std::unique_ptr<frmStatus> status_;
};

}  // namespace toolchain
