#include "platform/qt/Captions.h"

#include <QTextDocument>

#include "base/Text.h"

namespace platform::qt {

QString Shown(std::string_view text) { return QString::fromStdString(base::DisplayUtf8(text)); }

QString CaptionOf(std::string_view text) {
    QString caption = Shown(text).replace("&", "&&");
    for (QChar& c : caption)
        if (c.category() == QChar::Other_Control) c = ' ';
    return caption;
}

QString LineOf(std::string_view text) { return QString::fromStdString(base::DisplayUtf8(text)); }

QString TipOf(std::string_view text) {
    // A tip is guessed to be plain or formatted; formatted is the one that is never guessed wrong.
    return text.empty() ? QString() : Qt::convertFromPlainText(Shown(text));
}

}  // namespace platform::qt
