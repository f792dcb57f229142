#pragma once

#include <QObject>
#include <QTimer>
#include <concepts>
#include <optional>
#include <string>
#include <utility>

// The edge where the toolkit calls us. Its frames can't be unwound in good order, so no error of ours may
// pass them: whatever it calls runs guarded.
namespace platform::qt {

// The exception under way in words. Never throws.
std::string ErrorText();

// Shows the text in a box at the next turn of the event loop, when nothing is half done.
void ShowErrorSoon(const std::string& text);

bool HasHourglass();
void EndHourglass();

// What the action throws, in words. An hourglass that it leaves behind is taken back.
template <typename Action>
std::optional<std::string> ErrorOf(const Action& action) {
    const bool wasBusy = HasHourglass();
    try {
        action();
        return std::nullopt;
    } catch (...) {
        std::string text = ErrorText();
        if (!wasBusy) EndHourglass();
        return text;
    }
}

// Runs what the toolkit asks for, such as the body of an event handler. False: an error will be shown.
template <typename Action>
bool Guarded(const Action& action) {
    const auto error = ErrorOf(action);
    if (error) ShowErrorSoon(*error);
    return !error;
}

template <typename Action>
class GuardedSlot {
  public:
    explicit GuardedSlot(Action action) : action_(std::move(action)) {}

    template <typename... Arguments>
    requires std::invocable<Action&, Arguments...>
    void operator()(Arguments&&... arguments) {
        Guarded([&] { action_(std::forward<Arguments>(arguments)...); });
    }

  private:
    Action action_;
};

// Connects a signal to an action, which takes as many of the signal's arguments as it wants, while `context`
// stands.
template <typename Sender, typename Signal, typename Action>
QMetaObject::Connection On(const Sender* sender, Signal signal, const QObject* context, Action action) {
    return QObject::connect(sender, signal, context, GuardedSlot<Action>(std::move(action)));
}

// At the next turn of the event loop, if `context` still stands.
template <typename Action>
void Soon(const QObject* context, Action action) {
    QTimer::singleShot(0, context, GuardedSlot<Action>(std::move(action)));
}

}  // namespace platform::qt
