#include "platform/qt/ProcessGroup.h"

#include <poll.h>
#include <sys/wait.h>

#include <cerrno>
#include <csignal>

namespace platform::qt {

bool HasEnded(pid_t child) {
    siginfo_t info{};
    const int result = ::waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOHANG | WNOWAIT);
    return result == 0 ? info.si_pid == child : errno == ECHILD;
}

bool EndsSoon(pid_t child) {
    constexpr int looks = 50;
    constexpr int pause = 10;  // ms
    for (int i = 0; i < looks; ++i) {
        if (HasEnded(child)) return true;
        ::poll(nullptr, 0, pause);
    }
    return HasEnded(child);
}

void EndProcessGroup(pid_t leader) {
    if (leader <= 1) return;  // -1 would mean every process
    ::kill(-leader, SIGTERM);
    EndsSoon(leader);
    ::kill(-leader, SIGKILL);
}

}  // namespace platform::qt
