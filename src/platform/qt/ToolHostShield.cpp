#include "platform/qt/ToolHostShield.h"

#include <xcb/xcb.h>

#include <QApplication>
#include <QEvent>
#include <QMainWindow>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>

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
    return receiver != nullptr && std::any_of(windows.begin(), windows.end(), isIt);
}

bool IsAtom(xcb_connection_t* connection, xcb_atom_t atom, std::string_view name) {
    const auto cookie = xcb_get_atom_name(connection, atom);
    const std::unique_ptr<xcb_get_atom_name_reply_t, decltype(&std::free)> reply(
        xcb_get_atom_name_reply(connection, cookie, nullptr), &std::free);
    return reply != nullptr && name == std::string_view(xcb_get_atom_name_name(reply.get()), reply->name_len);
}

// The window manager's request to close the main window.
bool IsCloseRequest(const xcb_generic_event_t& event) {
    constexpr int sent = 0x80;  // the flag of an event that another program sends
    if ((event.response_type & ~sent) != XCB_CLIENT_MESSAGE) return false;
    const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 != nullptr && message.format == 32 && IsMainWindow(QWidget::find(message.window)) &&
           IsAtom(x11->connection(), message.data.data32[0], "WM_DELETE_WINDOW");
}

}  // namespace

ToolHostShield::ToolHostShield() : modalBefore_(QGuiApplication::modalWindow()) {
    ++up;
    QCoreApplication::instance()->installEventFilter(this);
    QCoreApplication::instance()->installNativeEventFilter(this);
}

// The toolkit drops the request where a modal window, such as that of a run, stands before the main window.
bool ToolHostShield::nativeEventFilter(const QByteArray& type, void* event, qintptr*) {
    if (type == "xcb_generic_event_t" && IsCloseRequest(*static_cast<xcb_generic_event_t*>(event)))
        closeTry_ = true;
    return false;
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
