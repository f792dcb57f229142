#include "platform/qt/HostClipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include "base/Text.h"
#include "platform/qt/Guard.h"

namespace platform::qt {
namespace {

constexpr auto BytesFormat = "application/x-korvane-text";

const QMimeData* Content() { return QGuiApplication::clipboard()->mimeData(); }

}  // namespace

HostClipboard::HostClipboard() {
    On(QGuiApplication::clipboard(), &QClipboard::dataChanged, &listener_, [this] {
        if (OnChange) OnChange();
    });
}

bool HostClipboard::HasText() const { return Content() != nullptr && Content()->hasText(); }

std::string HostClipboard::Text() const {
    if (!HasText()) return "";
    if (Content()->hasFormat(BytesFormat)) return Content()->data(BytesFormat).toStdString();
    return Content()->text().toStdString();
}

void HostClipboard::SetText(const std::string& text) {
    auto* content = new QMimeData;  // the clipboard takes it
    content->setText(QString::fromStdString(text));
    if (!base::IsValidUtf8(text)) content->setData(BytesFormat, QByteArray::fromStdString(text));
    QGuiApplication::clipboard()->setMimeData(content);
}

}  // namespace platform::qt
