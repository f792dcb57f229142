#include "toolchain/frmErrorMessage.h"

#include <QKeyEvent>

#include "base/Text.h"
#include "platform/qt/Guard.h"
#include "ui_frmErrorMessage.h"

namespace toolchain {
namespace {

QString Shown(const std::string& text) { return QString::fromStdString(base::DisplayUtf8(text)); }

}  // namespace

frmErrorMessage::frmErrorMessage(const ErrorEntry& entry, session::Commands& hall, QWidget* parent)
    : QDialog(parent), hall_(hall), ui_(std::make_unique<Ui::frmErrorMessage>()) {
    ui_->setupUi(this);
    ui_->txtCode->setText(Shown(entry.Code));
    ui_->txtLevel->setText(Shown(entry.Level));
    ui_->txtMessage->setPlainText(Shown(entry.Message));
    ui_->txtDescription->setPlainText(Shown(entry.Description));
    ui_->txtInfo->setPlainText(Shown(entry.Information));
    ui_->OK->setFocus();
    connect(ui_->OK, &QPushButton::clicked, this, &QDialog::accept);
}

frmErrorMessage::~frmErrorMessage() = default;

void frmErrorMessage::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_F1) {
        QDialog::keyPressEvent(event);
        return;
    }
    event->accept();
    platform::qt::Guarded([this] { hall_.ShowHelpTopic("Errors"); });
}

}  // namespace toolchain
