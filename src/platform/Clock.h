#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace platform {

// A call that comes again and again until this goes.
class Timer {
  public:
    virtual ~Timer() = default;
};

// Time, and calls that come with it: a test moves both.
class Clock {
  public:
    using Milliseconds = std::chrono::milliseconds;

    virtual ~Clock() = default;

    // Since some moment in the past; never goes back, whatever the user makes of the date.
    virtual Milliseconds Now() const = 0;

    // Calls `action` on the user-interface thread, first after one interval. It may end its own timer.
    virtual std::unique_ptr<Timer> Every(Milliseconds interval, std::function<void()> action) = 0;
};

}  // namespace platform
