#include "platform/qt/ProcessGroup.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace platform::qt {

ChildStart::ChildStart(Leads leads) {
    ::posix_spawnattr_init(&attributes_);
    ::posix_spawn_file_actions_init(&actions_);
    sigset_t all;
    sigset_t none;
    ::sigfillset(&all);
    ::sigemptyset(&none);
    ::posix_spawnattr_setsigdefault(&attributes_, &all);
    ::posix_spawnattr_setsigmask(&attributes_, &none);
    ::posix_spawnattr_setpgroup(&attributes_, 0);
    const int leading = leads == Leads::Session ? POSIX_SPAWN_SETSID : POSIX_SPAWN_SETPGROUP;
    ::posix_spawnattr_setflags(&attributes_,
                               static_cast<short>(POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK | leading));
    ::posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
}

ChildStart::~ChildStart() {
    ::posix_spawn_file_actions_destroy(&actions_);
    ::posix_spawnattr_destroy(&attributes_);
}

int ChildStart::Run(const std::string& program, std::vector<std::string> arguments, pid_t& child) const {
    std::string name = program;
    std::vector<char*> pointers{name.data()};
    for (std::string& argument : arguments) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    return ::posix_spawn(&child, program.c_str(), &actions_, &attributes_, pointers.data(), environ);
}

// By number: the header of the C library is younger than the call and not fit for C++ everywhere.
base::Descriptor DescriptorOf(pid_t child) {
    return base::Descriptor(static_cast<int>(::syscall(SYS_pidfd_open, child, 0)));
}

bool HasEnded(pid_t child) {
    siginfo_t info{};
    const int result = ::waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOHANG | WNOWAIT);
    return result == 0 ? info.si_pid == child : errno == ECHILD;
}

bool EndsSoon(pid_t child) {
    constexpr int looks = 50;
    constexpr int pause = 10;  // ms
    const base::Descriptor end = DescriptorOf(child);
    pollfd wait{.fd = end.Get(), .events = POLLIN, .revents = 0};  // without one, a pause
    for (int i = 0; i < looks && !HasEnded(child); ++i) ::poll(&wait, 1, pause);
    return HasEnded(child);
}

void EndProcessGroup(pid_t leader) {
    if (leader <= 1) return;  // -1 would mean every process
    ::kill(-leader, SIGTERM);
    EndsSoon(leader);
    ::kill(-leader, SIGKILL);
}

}  // namespace platform::qt
