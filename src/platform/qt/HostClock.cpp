#include "platform/qt/HostClock.h"

#include <QTimer>

#include "platform/qt/Guard.h"

namespace platform::qt {
namespace {

class HostTimer : public Timer {
  public:
    HostTimer(Clock::Milliseconds interval, std::function<void()> action) {
        // What fails at every turn is told once.
        const auto run = [action = std::move(action), told = std::optional<std::string>()]() mutable {
            auto error = ErrorOf(action);
            if (error && error != told) ShowErrorSoon(*error);
            told = std::move(error);
        };
        On(&timer_, &QTimer::timeout, &timer_, run);
        timer_.start(interval);
    }

  private:
    QTimer timer_;
};

}  // namespace

Clock::Milliseconds HostClock::Now() const {
    return std::chrono::duration_cast<Milliseconds>(std::chrono::steady_clock::now().time_since_epoch());
}

std::unique_ptr<Timer> HostClock::Every(Milliseconds interval, std::function<void()> action) {
    return std::make_unique<HostTimer>(interval, std::move(action));
}

}  // namespace platform::qt
