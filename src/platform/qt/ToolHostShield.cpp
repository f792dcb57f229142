#include "platform/qt/ToolHostShield.h"

#include <QApplication>
#include <QEvent>
#include <QMainWindow>
#include <algorithm>
#include <array>

namespace platform::qt {
namespace {

constexpr std::array inputEvents = {
    QEvent::MouseButtonPress,
    QEvent::MouseButtonRelease,
    QEvent::MouseButtonDblClick,
    QEvent::MouseMove,
    QEvent::Wheel,
    QEvent::KeyPress,
    QEvent::KeyRelease,
    QEvent::ShortcutOverride,
    QEvent::Shortcut,
    QEvent::InputMethod,
    QEvent::ContextMenu,
    QEvent::TouchBegin,
    QEvent::TouchUpdate,
    QEvent::TouchEnd,
    QEvent::TouchCancel,
    QEvent::TabletPress,
    QEvent::TabletMove,
    QEvent::TabletRelease,
    QEvent::NativeGesture,
    QEvent::DragEnter,
    QEvent::DragMove,
    QEvent::Drop,
    QEvent::Close,
    QEvent::NonClientAreaMouseButtonPress,
    QEvent::NonClientAreaMouseButtonDblClick,
};

// The event comes to the window of the host system or, by a command, to the widget.
bool IsMainWindow(const QObject* receiver) {
    const auto isIt = [&](QWidget* widget) {
        return qobject_cast<QMainWindow*>(widget) != nullptr &&
               (widget == receiver || widget->windowHandle() == receiver);
    };
    const auto windows = QApplication::topLevelWidgets();
    return std::any_of(windows.begin(), windows.end(), isIt);
}

}  // namespace

ToolHostShield::ToolHostShield() : modalBefore_(QGuiApplication::modalWindow()) {
    QCoreApplication::instance()->installEventFilter(this);
}

bool ToolHostShield::eventFilter(QObject* receiver, QEvent* event) {
    if (std::find(inputEvents.begin(), inputEvents.end(), event->type()) == inputEvents.end()) return false;
    const bool isCloseTry = event->type() == QEvent::Close && IsMainWindow(receiver);
    if (!isCloseTry && QGuiApplication::modalWindow() != modalBefore_) return false;
    closeTry_ = closeTry_ || isCloseTry;
    event->ignore();
    return true;
}

}  // namespace platform::qt
