#include "platform/qt/HostInputJournal.h"

#include <QApplication>
#include <QCursor>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScreen>
#include <QWheelEvent>
#include <QWidget>
#include <algorithm>
#include <utility>

#include "platform/qt/Guard.h"

// What the toolkit's plug-ins for the desktop call, and its test library: the way of real input, shortcuts
// and popups included.
QT_BEGIN_NAMESPACE
Q_GUI_EXPORT void qt_handleKeyEvent(QWindow* window, QEvent::Type type, int key,
                                    Qt::KeyboardModifiers modifiers, const QString& text, bool autoRepeat,
                                    ushort count);
Q_GUI_EXPORT void qt_handleMouseEvent(QWindow* window, const QPointF& local, const QPointF& global,
                                      Qt::MouseButtons state, Qt::MouseButton button, QEvent::Type type,
                                      Qt::KeyboardModifiers modifiers, int timestamp);
QT_END_NAMESPACE

namespace platform::qt {
namespace {

enum Message : std::uint32_t {
    WM_KEYDOWN = 0x100,
    WM_KEYUP = 0x101,
    WM_CHAR = 0x102,  // of an input method
    WM_MOUSEMOVE = 0x200,
    WM_MOUSEWHEEL = 0x20A,
    WM_MOUSEHWHEEL = 0x20E,
};

struct ButtonMessages {
    Qt::MouseButton Button;
    std::uint32_t Down;
    std::uint32_t Up;
};
constexpr ButtonMessages buttonMessages[] = {
    {Qt::LeftButton, 0x201, 0x202}, {Qt::RightButton, 0x204, 0x205}, {Qt::MiddleButton, 0x207, 0x208}};

// ParamH: from bit 25 on the modifiers as the toolkit has them. Below, of a key: its character and whether it
// repeats; of the mouse: the buttons that are down; of the wheel: how far it turns.
constexpr std::uint32_t modifierBits = 0xFE000000;
constexpr std::uint32_t repeatBit = 1U << 21;
constexpr std::uint32_t characterBits = repeatBit - 1;
constexpr std::uint32_t buttonBits = 0x1F;

constexpr std::chrono::milliseconds retryInterval{10};
constexpr std::chrono::milliseconds slowFocus{500};  // of a desktop that hands the keyboard on
constexpr std::chrono::milliseconds patience{5000};  // of a playback that no window takes
constexpr int keysymBreak = 0xFF6B;

const QEvent::Type stepEvent = static_cast<QEvent::Type>(QEvent::registerEventType());

std::uint32_t Bits(Qt::KeyboardModifiers modifiers) {
    return static_cast<std::uint32_t>(modifiers.toInt()) & modifierBits;
}
Qt::KeyboardModifiers Modifiers(const InputEvent& event) {
    return Qt::KeyboardModifiers::fromInt(static_cast<int>(event.ParamH & modifierBits));
}

// ParamL of the mouse: 16 bits each, across and down.
std::uint32_t Packed(const QPoint& at) {
    return (static_cast<std::uint32_t>(at.x()) & 0xFFFF) | static_cast<std::uint32_t>(at.y()) << 16;
}
QPoint Place(std::uint32_t packed) {
    return {static_cast<std::int16_t>(packed), static_cast<std::int16_t>(packed >> 16)};
}

InputEvent Made(const QWindow& window, const QInputEvent& event, std::uint32_t message, std::uint32_t paramL,
                std::uint32_t paramH) {
    return {message, paramL, paramH | Bits(event.modifiers()), static_cast<std::uint32_t>(event.timestamp()),
            static_cast<std::uint32_t>(window.winId())};
}

InputEvent MadeOfKey(const QWindow& window, const QKeyEvent& key, std::uint32_t message) {
    const auto text = key.text().toUcs4();
    const std::uint32_t character = text.isEmpty() ? 0 : text.front() & characterBits;
    return Made(window, key, message, static_cast<std::uint32_t>(key.key()),
                character | (key.isAutoRepeat() ? repeatBit : 0));
}

bool IsBreak(const QKeyEvent& key) {
    if (key.key() == Qt::Key_Cancel) return true;
    const bool isPause = key.key() == Qt::Key_Pause || key.nativeVirtualKey() == keysymBreak;
    return isPause && key.modifiers().testFlag(Qt::ControlModifier);
}

// The window that has the keyboard takes input: no dialog stands before it that is about to get it.
bool IsReady() {
    const QWindow* focus = QGuiApplication::focusWindow();
    if (focus == nullptr || !focus->isVisible()) return false;
    const QWidget* modal = QApplication::activeModalWidget();
    if (modal == nullptr || QApplication::activePopupWidget() != nullptr) return true;
    const QWindow* dialog = modal->windowHandle();
    return dialog != nullptr && (dialog == focus || dialog->isAncestorOf(focus));
}

QWindow* WindowAt(const QPoint& at) {
    if (const QWidget* popup = QApplication::activePopupWidget()) return popup->windowHandle();
    return QGuiApplication::topLevelAt(at);
}

}  // namespace

HostInputJournal::HostInputJournal(Clock& time) : time_(time) { qApp->installEventFilter(this); }

bool HostInputJournal::Record(std::function<void(const InputEvent&)> take, std::function<void()> onBreak) {
    take_ = std::move(take);
    onBreak_ = std::move(onBreak);
    override_.reset();
    return true;
}

bool HostInputJournal::Play(std::function<std::optional<InputEvent>()> next) {
    if (next_ != nullptr) return false;
    next_ = std::move(next);
    waiting_.reset();
    Post();
    return true;
}

void HostInputJournal::Stop() {
    take_ = nullptr;
    onBreak_ = nullptr;
    next_ = nullptr;
    retry_.reset();
}

void HostInputJournal::CentrePointer() {
    if (const QScreen* screen = QGuiApplication::primaryScreen())
        QCursor::setPos(screen->geometry().center());
}

bool HostInputJournal::eventFilter(QObject* watched, QEvent* event) {
    if (take_ == nullptr && !override_) return false;
    bool isOurs = false;
    Guarded([&] {
        if (event->type() == QEvent::InputMethod && watched == QGuiApplication::focusObject())
            ListenToCommit(*static_cast<QInputMethodEvent*>(event));
        else if (watched->isWindowType())
            isOurs = Listen(*static_cast<QWindow*>(watched), *event);
    });
    return isOurs;
}

bool HostInputJournal::Listen(const QWindow& window, const QEvent& event) {
    switch (event.type()) {
        case QEvent::ShortcutOverride:  // which alone tells of the keys of a shortcut
        case QEvent::KeyPress:
            return ListenToPress(window, static_cast<const QKeyEvent&>(event));
        case QEvent::KeyRelease:
            override_.reset();
            if (take_) take_(MadeOfKey(window, static_cast<const QKeyEvent&>(event), WM_KEYUP));
            return false;
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseMove:
            if (take_) ListenToMouse(window, static_cast<const QMouseEvent&>(event));
            return false;
        case QEvent::Wheel:
            if (take_) ListenToWheel(window, static_cast<const QWheelEvent&>(event));
            return false;
        default:
            return false;
    }
}

// True for the key that ended the recording: it means nothing else.
bool HostInputJournal::ListenToPress(const QWindow& window, const QKeyEvent& key) {
    const std::pair<int, quint64> press{key.key(), key.timestamp()};
    const bool isTaken = key.type() == QEvent::KeyPress && override_ == press;
    override_.reset();
    if (isTaken) return IsBreak(key);
    if (key.type() == QEvent::ShortcutOverride) override_ = press;
    if (take_ == nullptr) return false;
    if (!IsBreak(key)) {
        take_(MadeOfKey(window, key, WM_KEYDOWN));
        return false;
    }
    take_ = nullptr;
    std::exchange(onBreak_, nullptr)();
    return key.type() == QEvent::KeyPress;
}

void HostInputJournal::ListenToMouse(const QWindow& window, const QMouseEvent& mouse) {
    std::uint32_t message = WM_MOUSEMOVE;
    if (mouse.type() != QEvent::MouseMove) {
        const auto row =
            std::find_if(std::begin(buttonMessages), std::end(buttonMessages),
                         [&](const ButtonMessages& each) { return each.Button == mouse.button(); });
        if (row == std::end(buttonMessages)) return;
        message = mouse.type() == QEvent::MouseButtonRelease ? row->Up : row->Down;
    }
    const auto buttons = static_cast<std::uint32_t>(mouse.buttons().toInt()) & buttonBits;
    take_(Made(window, mouse, message, Packed(mouse.globalPosition().toPoint()), buttons));
}

void HostInputJournal::ListenToWheel(const QWindow& window, const QWheelEvent& wheel) {
    const QPoint turn = wheel.angleDelta();
    const bool isAcross = turn.y() == 0;
    const auto delta = static_cast<std::uint32_t>(isAcross ? turn.x() : turn.y()) & 0xFFFF;
    take_(Made(window, wheel, isAcross ? WM_MOUSEHWHEEL : WM_MOUSEWHEEL,
               Packed(wheel.globalPosition().toPoint()), delta));
}

void HostInputJournal::ListenToCommit(const QInputMethodEvent& input) {
    const QWindow* window = QGuiApplication::focusWindow();
    if (window == nullptr || take_ == nullptr) return;
    for (const char32_t character : input.commitString().toUcs4()) {
        take_({.Message = WM_CHAR,
               .ParamH = static_cast<std::uint32_t>(character) & characterBits,
               .hWnd = static_cast<std::uint32_t>(window->winId())});
    }
}

// Behind all that the program has put off: it has dealt with one event when the next one comes.
void HostInputJournal::Post() {
    QCoreApplication::postEvent(this, new QEvent(stepEvent), Qt::LowEventPriority);
}

bool HostInputJournal::event(QEvent* event) {
    if (event->type() != stepEvent) return QObject::event(event);
    Guarded([this] { Step(); });
    return true;
}

void HostInputJournal::Step() {
    if (next_ == nullptr) return;
    if (!IsReady()) return Wait();
    waiting_.reset();
    const std::optional<InputEvent> event = next_();
    if (!event) {
        next_ = nullptr;
        return;
    }
    Post();  // before: a dialog that the event opens has an event loop of its own
    Inject(*event);
}

// The keyboard of a dialog that has gone goes to the one before, or to the window that all stand before.
void HostInputJournal::AskForFocus() {
    QWindow* window = QGuiApplication::modalWindow();
    if (window == nullptr) window = owner_;
    if (window != nullptr) window->requestActivate();
}

void HostInputJournal::Wait() {
    if (!waiting_) waiting_ = time_.Now();
    if (time_.Now() - *waiting_ > slowFocus) AskForFocus();
    if (time_.Now() - *waiting_ > patience) {
        next_ = nullptr;
        return;
    }
    retry_ = time_.Every(retryInterval, [this] {
        retry_.reset();
        Post();
    });
}

void HostInputJournal::Inject(const InputEvent& event) {
    if (event.Message >= WM_MOUSEMOVE) return InjectMouse(event);
    QWindow* window = owner_ = QGuiApplication::focusWindow();
    while (owner_->transientParent() != nullptr) owner_ = owner_->transientParent();
    const char32_t character = event.ParamH & characterBits;
    const QString text = character == 0 ? QString() : QString::fromUcs4(&character, 1);
    const bool repeats = (event.ParamH & repeatBit) != 0;
    const auto send = [&](QEvent::Type type) {
        qt_handleKeyEvent(window, type, static_cast<int>(event.ParamL), Modifiers(event), text, repeats, 1);
    };
    if (event.Message == WM_KEYUP) return send(QEvent::KeyRelease);
    send(QEvent::KeyPress);
}

void HostInputJournal::InjectMouse(const InputEvent& event) {
    const QPoint at = Place(event.ParamL);
    QWindow* window = pressed_ != nullptr && pressed_->isVisible() ? pressed_.data() : WindowAt(at);
    if (window == nullptr) return;
    const QPointF local = window->mapFromGlobal(QPointF(at));
    if (event.Message == WM_MOUSEWHEEL || event.Message == WM_MOUSEHWHEEL) {
        const auto turn = static_cast<std::int16_t>(event.ParamH);
        QWheelEvent wheel(local, at, {}, event.Message == WM_MOUSEWHEEL ? QPoint(0, turn) : QPoint(turn, 0),
                          {}, Modifiers(event), Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(window, &wheel);
        return;
    }
    const auto buttons = Qt::MouseButtons::fromInt(static_cast<int>(event.ParamH & buttonBits));
    pressed_ = buttons ? window : nullptr;
    const auto send = [&](Qt::MouseButton button, QEvent::Type type) {
        qt_handleMouseEvent(window, local, at, buttons, button, type, Modifiers(event),
                            static_cast<int>(event.Time));
    };
    for (const ButtonMessages& row : buttonMessages) {
        if (row.Down == event.Message) return send(row.Button, QEvent::MouseButtonPress);
        if (row.Up == event.Message) return send(row.Button, QEvent::MouseButtonRelease);
    }
    send(Qt::NoButton, QEvent::MouseMove);
}

}  // namespace platform::qt
