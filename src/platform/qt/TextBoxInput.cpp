#include <QContextMenuEvent>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <algorithm>

#include "platform/qt/Guard.h"
#include "platform/qt/HostClipboard.h"
#include "platform/qt/TextBox.h"
#include "platform/qt/TextBoxKeys.h"

namespace platform::qt {
namespace {

constexpr int processKey = 229;             // virtual key code of what an input method has handled
constexpr std::int32_t surroundings = 512;  // bytes on each side of the caret that an input method may see

}  // namespace

// Keys that edit are the control's; all others go to the menu's shortcuts first.
bool TextBox::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* key = static_cast<QKeyEvent*>(event);
        event->setAccepted(EditCommand(*key).has_value() || TypesText(*key));
        return true;
    }
    bool handled = true;
    Guarded([&] {
        handled = QsciScintillaBase::event(event);
        Settle();
    });
    return handled;
}

bool TextBox::viewportEvent(QEvent* event) {
    bool handled = true;
    Guarded([&] {
        if (event->type() == QEvent::Paint) Settle();
        handled = QsciScintillaBase::viewportEvent(event);
        Settle();
    });
    return handled;
}

void TextBox::keyPressEvent(QKeyEvent* event) {
    Guarded([&] { PressKey(*event); });
}

void TextBox::PressKey(QKeyEvent& event) {
    inside_.reset();
    if (const auto command = EditCommand(event)) {
        Sci(static_cast<unsigned>(*command));
    } else if (!TypesText(event)) {
        return event.ignore();
    } else if (event.text().at(0).isPrint()) {
        QsciScintillaBase::keyPressEvent(&event);
    } else {
        // The base class knows no characters beyond the first 65,536 and drops invisible ones.
        SendScintilla(SCI_REPLACESEL, event.text().toUtf8().constData());
        Sci(SCI_SCROLLCARET);
    }
    event.accept();
}

void TextBox::keyReleaseEvent(QKeyEvent* event) {
    QsciScintillaBase::keyReleaseEvent(event);
    if (!event->isAutoRepeat()) emit KeyReleased(VirtualKeyCode(*event));
}

void TextBox::inputMethodEvent(QInputMethodEvent* event) {
    Guarded([&] {
        QsciScintillaBase::inputMethodEvent(event);
        Settle();
    });
    if (!event->commitString().isEmpty()) emit KeyReleased(processKey);
}

// The caret's line, or the part of it near the caret.
TextBox::Span TextBox::CaretSurroundings() const {
    const long caret = Sci(SCI_GETCURRENTPOS);
    const long line = Sci(SCI_LINEFROMPOSITION, caret);
    const long first = std::max(Sci(SCI_POSITIONFROMLINE, line), caret - surroundings);
    const long last = std::min(Sci(SCI_GETLINEENDPOSITION, line), caret + surroundings);
    return {static_cast<std::int32_t>(first), static_cast<std::int32_t>(last - first)};
}

// The base class hands out the paragraph and the selection whole at every key, however long.
QVariant TextBox::inputMethodQuery(Qt::InputMethodQuery query) const {
    const auto text = [this](std::int32_t start, std::int32_t length) {
        return QString::fromStdString(TextRange(start, length));
    };
    const Span near = CaretSurroundings();
    switch (query) {
        case Qt::ImFont: {
            const CharStyle style = SelStyle();
            QFont font(QString::fromStdString(style.FontName));
            font.setPointSizeF(style.FontSize / 100.0);
            return font;
        }
        case Qt::ImCursorPosition:
            return text(near.Start, static_cast<std::int32_t>(Sci(SCI_GETCURRENTPOS)) - near.Start).size();
        case Qt::ImSurroundingText:
            return text(near.Start, near.Length);
        case Qt::ImCurrentSelection: {
            const Span span = Selection();
            return text(span.Start, std::min(span.Length, surroundings));
        }
        default:
            return QsciScintillaBase::inputMethodQuery(query);
    }
}

// The right button leaves caret and selection as they are.
void TextBox::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::RightButton) {
        setFocus();
        event->accept();
        emit RightButtonPressed(event->globalPosition().toPoint());
        return;
    }
    inside_.reset();
    Guarded([&] { QsciScintillaBase::mousePressEvent(event); });
}

void TextBox::contextMenuEvent(QContextMenuEvent* event) { event->accept(); }

// Dropped files are the window's to open.
void TextBox::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls()) return event->ignore();
    QsciScintillaBase::dragEnterEvent(event);
}

void TextBox::dragMoveEvent(QDragMoveEvent* event) {
    if (event->mimeData()->hasUrls()) return event->ignore();
    QsciScintillaBase::dragMoveEvent(event);
}

void TextBox::dropEvent(QDropEvent* event) {
    if (event->mimeData()->hasUrls()) return event->ignore();
    Guarded([&] { QsciScintillaBase::dropEvent(event); });
}

QByteArray TextBox::fromMimeData(const QMimeData* source, bool& rectangular) const {
    rectangular = false;
    return QByteArray::fromStdString(TextOf(*source));
}

QMimeData* TextBox::toMimeData(const QByteArray& text, bool) const {
    return MakeTextData({text.constData(), static_cast<std::size_t>(text.size())});
}

}  // namespace platform::qt
