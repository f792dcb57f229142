#pragma once

#include "platform/Clock.h"

namespace platform::qt {

// Timers run with the event loop, behind open dialogs and during a tool's call too.
class HostClock : public Clock {
  public:
    Milliseconds Now() const override;
    std::unique_ptr<Timer> Every(Milliseconds interval, std::function<void()> action) override;
};

}  // namespace platform::qt
