#include "platform/qt/ToolHostChild.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstring>
#include <utility>

namespace platform::qt {
namespace {

using toolhost::Channel;

// Our end and the host's.
std::pair<int, int> MakeLine() {
    int ends[2] = {-1, -1};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) return {-1, -1};
    return {ends[0], ends[1]};
}

// Standard streams to nowhere: what a library prints is for no one. Descriptors of ours stay here.
void SetDescriptors(posix_spawn_file_actions_t& actions, int hostEnd) {
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, hostEnd, toolhost::SocketDescriptor);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        ::posix_spawn_file_actions_addopen(&actions, stream, "/dev/null", O_RDWR, 0);
    }
    ::posix_spawn_file_actions_addclosefrom_np(&actions, toolhost::SocketDescriptor + 1);
}

void SetSignals(posix_spawnattr_t& attributes) {
    sigset_t all;
    sigset_t none;
    ::sigfillset(&all);
    ::sigemptyset(&none);
    ::posix_spawnattr_init(&attributes);
    ::posix_spawnattr_setsigdefault(&attributes, &all);
    ::posix_spawnattr_setsigmask(&attributes, &none);
    ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
}

pid_t Spawn(const std::string& program, int hostEnd) {
    posix_spawn_file_actions_t actions;
    posix_spawnattr_t attributes;
    SetDescriptors(actions, hostEnd);
    SetSignals(attributes);
    std::string name = program;
    std::string parent = std::to_string(::getpid());
    std::array<char*, 3> arguments = {name.data(), parent.data(), nullptr};
    pid_t process = -1;
    const int error =
        ::posix_spawn(&process, program.c_str(), &actions, &attributes, arguments.data(), environ);
    ::posix_spawn_file_actions_destroy(&actions);
    ::posix_spawnattr_destroy(&attributes);
    return error == 0 ? process : -1;
}

std::string DescribeEnd(int status) {
    if (WIFEXITED(status)) return "exit code " + std::to_string(WEXITSTATUS(status));
    const int number = WTERMSIG(status);
    const char* name = ::sigdescr_np(number);
    return "signal " + std::to_string(number) + (name == nullptr ? "" : " (" + std::string(name) + ")");
}

}  // namespace

ToolHostChild::ToolHostChild(const std::string& program) : channel_(-1) {
    const auto [ours, theirs] = MakeLine();
    line_ = ours;
    channel_ = Channel(ours);
    if (ours < 0) return;
    process_ = Spawn(program, theirs);
    ::close(theirs);
}

ToolHostChild::~ToolHostChild() { End(); }

bool ToolHostChild::Send(toolhost::FrameKind kind, std::initializer_list<std::string_view> parts) {
    // A host that waits for an answer takes it: one that does not is broken, and must not hold us up.
    return channel_.Send(kind, parts, kind != toolhost::FrameKind::Acknowledge);
}

Channel::State ToolHostChild::Receive(toolhost::Frame& frame, int milliseconds) {
    auto state = channel_.ReceiveSoon(frame);
    if (state != Channel::State::Nothing) return state;
    pollfd wait{.fd = line_, .events = POLLIN, .revents = 0};
    const bool ready = ::poll(&wait, 1, milliseconds) > 0;
    // A process that a library has started may hold the line open when the host is gone.
    const bool ended = !ready && HasEnded();
    state = channel_.Receive(frame, false);
    return state == Channel::State::Nothing && ended ? Channel::State::Closed : state;
}

bool ToolHostChild::HasEnded() {
    if (process_ <= 0 || status_) return true;
    int status = 0;
    const pid_t ended = ::waitpid(process_, &status, WNOHANG);
    if (ended == process_) status_ = status;
    return status_.has_value() || ended < 0;
}

std::string ToolHostChild::End() {
    constexpr int patience = 50;  // times 10 ms for an orderly end
    if (line_ >= 0) ::close(line_);
    line_ = -1;
    channel_ = Channel(-1);
    for (int i = 0; i < patience && !HasEnded(); ++i) ::usleep(10'000);
    if (process_ > 0 && !status_) {
        int status = 0;
        ::kill(process_, SIGKILL);
        if (::waitpid(process_, &status, 0) == process_) status_ = status;
    }
    if (process_ <= 0) return "it could not be started";
    return status_ ? DescribeEnd(*status_) : "for a reason that the system does not tell";
}

}  // namespace platform::qt
