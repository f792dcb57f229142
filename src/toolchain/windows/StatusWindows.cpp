#include "toolchain/windows/StatusWindows.h"

#include <QEventLoop>

namespace toolchain {

void StatusWindows::CreateStatus() {
    if (!status_) status_ = std::make_unique<frmStatus>(app_.Host.Libraries, app_.Host.Boxes, owner_);
}

void StatusWindows::UnloadStatus() { status_.reset(); }
void StatusWindows::SetInfo(const std::string& text) { status_->SetInfo(text); }
void StatusWindows::EnableOk(bool enabled) { status_->EnableOk(enabled); }

// Modal from the first: while a library works no window takes input anyway, and a window manager may lose one
// that is hidden and shown again at once.
void StatusWindows::ShowStatusModeless() {
    status_->setModal(true);
    status_->show();
    status_->raise();
    status_->repaint();
}

void StatusWindows::ShowStatusModal() {
    QEventLoop acknowledged;
    QObject::connect(status_.get(), &QDialog::finished, &acknowledged, &QEventLoop::quit);
    if (status_->isVisible()) acknowledged.exec();
    status_.reset();
}

void StatusWindows::AddMessages(const std::vector<std::string>& lines) {
    frmMessage& messages = messages_();
    for (const std::string& line : lines) messages.AddLine(line);
}

platform::WindowHandle StatusWindows::StatusHandle() { return status_->Handle(); }
platform::WindowHandle StatusWindows::MessagesHandle() { return messages_().Handle(); }

}  // namespace toolchain
