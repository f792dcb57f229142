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

QMimeData* MakeTextData(std::string_view text) {
    auto* data = new QMimeData;
    const auto size = static_cast<qsizetype>(text.size());
    data->setText(QString::fromUtf8(text.data(), size));
    if (!base::IsValidUtf8(text)) data->setData(BytesFormat, QByteArray(text.data(), size));
    return data;
}

std::string TextOf(const QMimeData& data) {
    if (data.hasFormat(BytesFormat)) return data.data(BytesFormat).toStdString();
    return data.text().toStdString();
}

HostClipboard::HostClipboard() {
    On(QGuiApplication::clipboard(), &QClipboard::dataChanged, &listener_, [this] {
        if (OnChange) OnChange();
    });
}

bool HostClipboard::HasText() const { return Content() != nullptr && Content()->hasText(); }

std::string HostClipboard::Text() const {
    if (!HasText()) return "";
    return TextOf(*Content());
}

void HostClipboard::SetText(const std::string& text) {
    QClipboard& clipboard = *QGuiApplication::clipboard();
    if (text.empty()) return clipboard.clear();  // an empty text would lie there and be pasted
    clipboard.setMimeData(MakeTextData(text));   // which it takes
}

}  // namespace platform::qt
