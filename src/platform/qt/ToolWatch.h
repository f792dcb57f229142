#pragma once

#include <QDialog>
#include <QEventLoop>
#include <QPointer>
#include <optional>

#include "platform/Clock.h"
#include "platform/qt/ToolHostShield.h"

namespace platform::qt {

// The wait for a tool, as long as this lives: windows paint, timers run, what the user does is thrown away. A
// tool that gives no sign of life for ten seconds is asked about in a box of its own: to stop it, or to wait,
// which asks again after a silent minute. A try to close the main window asks at once.
class ToolWatch {
  public:
    explicit ToolWatch(const Clock& clock);
    ~ToolWatch();  // the box goes, and what was typed up to now
    ToolWatch(const ToolWatch&) = delete;
    ToolWatch& operator=(const ToolWatch&) = delete;

    void Heard();                         // the tool gave a sign of life
    Clock::Milliseconds Silence() const;  // since then, or since the user chose to wait
    // Lets windows and timers have their turn. False: the user wants the tool stopped.
    bool GoOn(QEventLoop::ProcessEventsFlags how = QEventLoop::AllEvents);

  private:
    bool IsOpen() const { return box_ != nullptr && box_->isVisible(); }
    void Ask();
    void Answer(int result);

    const Clock& clock_;
    ToolHostShield shield_;
    QPointer<QDialog> box_;  // its parent may take it along
    Clock::Milliseconds patience_;
    Clock::Milliseconds quietSince_;
    std::optional<Clock::Milliseconds> heard_;
    bool talks_ = false;  // the tool did when the box was opened
    bool stop_ = false;
};

}  // namespace platform::qt
