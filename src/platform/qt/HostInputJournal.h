#pragma once

#include <QObject>
#include <QPointer>
#include <QWindow>
#include <memory>

#include "platform/Clock.h"
#include "platform/InputJournal.h"

class QInputMethodEvent;
class QKeyEvent;
class QMouseEvent;
class QWheelEvent;

namespace platform::qt {

// The input of all windows as the desktop delivers it to them, shortcuts included. Keys go to the window that
// has the keyboard then, the mouse to what lies at its place on the screen.
class HostInputJournal : public QObject, public InputJournal {
  public:
    explicit HostInputJournal(Clock& time);

    bool Record(std::function<void(const InputEvent&)> take, std::function<void()> onBreak) override;
    bool Play(std::function<std::optional<InputEvent>()> next) override;
    void Stop() override;
    void CentrePointer() override;

    bool eventFilter(QObject* watched, QEvent* event) override;
    bool event(QEvent* event) override;

  private:
    bool Listen(const QWindow& window, const QEvent& event);
    bool ListenToPress(const QWindow& window, const QKeyEvent& key);
    void ListenToMouse(const QWindow& window, const QMouseEvent& mouse);
    void ListenToWheel(const QWindow& window, const QWheelEvent& wheel);
    void ListenToCommit(const QInputMethodEvent& input);
    void Post();
    void Step();
    void Wait();
    void AskForFocus();
    void Inject(const InputEvent& event);
    void InjectMouse(const InputEvent& event);

    Clock& time_;
    std::function<void(const InputEvent&)> take_;
    std::function<void()> onBreak_;
    std::optional<std::pair<int, quint64>> override_;  // the key press that its own event is still to follow
    std::function<std::optional<InputEvent>()> next_;
    std::unique_ptr<Timer> retry_;
    std::optional<Clock::Milliseconds> waiting_;  // since
    QPointer<QWindow> owner_;                     // the window that the last key's stood before, or itself
    QPointer<QWindow> pressed_;                   // the window that the mouse button went down in
};

}  // namespace platform::qt
