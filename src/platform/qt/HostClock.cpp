#include "platform/qt/HostClock.h"

#include <QTimer>

namespace platform::qt {
namespace {

class HostTimer : public Timer {
  public:
    HostTimer(Clock::Milliseconds interval, std::function<void()> action) {
        QObject::connect(&timer_, &QTimer::timeout, &timer_, std::move(action));
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
