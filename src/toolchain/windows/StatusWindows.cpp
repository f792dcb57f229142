#include "toolchain/windows/StatusWindows.h"

namespace toolchain {

void StatusWindows::CreateStatus() {
    if (!status_) status_ = std::make_unique<frmStatus>(app_.Host.Libraries, app_.Host.Boxes, owner_);
}

void StatusWindows::UnloadStatus() { status_.reset(); }
void StatusWindows::SetInfo(const std::string& text) { status_->SetInfo(text); }
void StatusWindows::EnableOk(bool enabled) { status_->EnableOk(enabled); }

void StatusWindows::ShowStatusModeless() {
    status_->setModal(false);
    status_->show();
    status_->raise();
    status_->repaint();
}

void StatusWindows::ShowStatusModal() {
    const QPoint place = status_->pos();
    status_->hide();
    status_->move(place);  // shown again, it would be centred anew
    status_->exec();
    status_.reset();
}

platform::WindowHandle StatusWindows::StatusHandle() { return status_->Handle(); }
platform::WindowHandle StatusWindows::MessagesHandle() { return messages_().Handle(); }

}  // namespace toolchain
