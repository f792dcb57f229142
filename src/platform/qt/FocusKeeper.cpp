#include "platform/qt/FocusKeeper.h"

#include <algorithm>

#include "platform/qt/Guard.h"
#include "platform/qt/HostWindows.h"

namespace platform::qt {
namespace {

constexpr int LookInterval = 50;  // ms
constexpr int StartTime = 10000;  // ms from a start to the window
constexpr int FocusTime = 500;    // ms from the window to its focus; what comes later is the user's doing

}  // namespace

FocusKeeper::FocusKeeper() {
    timer_.setInterval(LookInterval);
    On(&timer_, &QTimer::timeout, &timer_, [this] { Look(); });
}

void FocusKeeper::KeepFrom(std::uint32_t process) {
    if (newcomers_.empty()) window_ = HostWindows().Active().Handle;
    newcomers_.push_back({.Process = process, .Patience = QDeadlineTimer(StartTime)});
    timer_.start();
}

void FocusKeeper::Look() {
    const HostWindows windows;
    const std::vector<TopLevelWindow> open = windows.TopLevel();
    const std::uint32_t active = windows.Active().Process;
    std::erase_if(newcomers_, [&](Newcomer& newcomer) { return IsDone(newcomer, open, active); });
    if (newcomers_.empty()) timer_.stop();
}

bool FocusKeeper::IsDone(Newcomer& newcomer, const std::vector<TopLevelWindow>& open,
                         std::uint32_t active) const {
    const bool hasKeys = active == newcomer.Process;
    const bool gaveBack = newcomer.HadKeys && !hasKeys;
    newcomer.HadKeys = hasKeys;
    if (gaveBack || newcomer.Patience.hasExpired()) return true;
    if (!newcomer.IsThere && std::any_of(open.begin(), open.end(), [&](const TopLevelWindow& window) {
            return window.Process == newcomer.Process;
        })) {
        newcomer.IsThere = true;
        newcomer.Patience = QDeadlineTimer(FocusTime);
    }
    if (hasKeys && newcomer.IsThere && window_ != 0) HostWindows().Activate(window_);
    return false;
}

}  // namespace platform::qt
