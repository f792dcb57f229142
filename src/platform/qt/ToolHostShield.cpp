#include "platform/qt/ToolHostShield.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>
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

}  // namespace

ToolHostShield::ToolHostShield() : modalBefore_(QGuiApplication::modalWindow()) {
    QCoreApplication::instance()->installEventFilter(this);
}

void ToolHostShield::PaintWindows() {
    if (QCoreApplication::instance() == nullptr) return;
    const ToolHostShield shield;
    QCoreApplication::processEvents();
}

bool ToolHostShield::eventFilter(QObject*, QEvent* event) {
    if (std::find(inputEvents.begin(), inputEvents.end(), event->type()) == inputEvents.end()) return false;
    if (QGuiApplication::modalWindow() != modalBefore_) return false;
    event->ignore();
    return true;
}

}  // namespace platform::qt
