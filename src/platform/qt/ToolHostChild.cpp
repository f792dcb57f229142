#include "platform/qt/ToolHostChild.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <utility>

#include "platform/qt/ProcessGroup.h"

namespace platform::qt {
namespace {

using toolhost::Channel;

// Clear of the numbers that the ends get in the host.
int Lifted(int descriptor) {
    const int lifted = ::fcntl(descriptor, F_DUPFD_CLOEXEC, toolhost::NotesDescriptor + 1);
    ::close(descriptor);
    return lifted;
}

// Our end and the host's.
std::pair<int, int> MakeLine() {
    int ends[2] = {-1, -1};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) return {-1, -1};
    return {Lifted(ends[0]), Lifted(ends[1])};
}

std::pair<int, int> MakeNotes() {
    int ends[2] = {-1, -1};
    if (::pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) return {-1, -1};
    return {Lifted(ends[0]), Lifted(ends[1])};
}

// What a library prints is for no one. Descriptors of ours stay here.
pid_t Spawn(const std::string& program, std::uint64_t memory, int lineEnd, int notesEnd) {
    ChildStart start(ChildStart::Leads::Group);
    ::posix_spawn_file_actions_adddup2(start.Actions(), lineEnd, toolhost::SocketDescriptor);
    ::posix_spawn_file_actions_adddup2(start.Actions(), notesEnd, toolhost::NotesDescriptor);
    for (const int stream : {STDOUT_FILENO, STDERR_FILENO}) {
        ::posix_spawn_file_actions_addopen(start.Actions(), stream, "/dev/null", O_RDWR, 0);
    }
    ::posix_spawn_file_actions_addclosefrom_np(start.Actions(), toolhost::NotesDescriptor + 1);
    pid_t process = -1;
    return start.Run(program, {std::to_string(memory)}, process) == 0 ? process : -1;
}

std::string DescribeStatus(int status) {
    if (WIFEXITED(status)) return "exit code " + std::to_string(WEXITSTATUS(status));
    const int number = WTERMSIG(status);
    const char* name = ::sigdescr_np(number);
    return "signal " + std::to_string(number) + (name == nullptr ? "" : " (" + std::string(name) + ")");
}

}  // namespace

ToolHostChild::ToolHostChild(const std::string& program, std::uint64_t memory)
    : memory_(memory), channel_(-1) {
    const auto [line, lineEnd] = MakeLine();
    const auto [notes, notesEnd] = MakeNotes();
    const base::Descriptor hostLine(lineEnd);
    const base::Descriptor hostNotes(notesEnd);
    line_.Reset(line);
    notes_.Reset(notes);
    channel_ = Channel(line);
    if (lineEnd >= 0 && notesEnd >= 0) process_ = Spawn(program, memory, lineEnd, notesEnd);
}

ToolHostChild::~ToolHostChild() {
    line_.Close();
    if (process_ <= 0 || ending_) return;
    if (!EndsSoon(process_)) ::kill(process_, SIGKILL);
    Reap();
}

bool ToolHostChild::Send(toolhost::FrameKind kind, std::initializer_list<std::string_view> parts) {
    // A host that waits for an answer takes it: one that does not is broken, and must not hold us up.
    return channel_.Send(kind, parts, kind != toolhost::FrameKind::Acknowledge);
}

Channel::State ToolHostChild::Receive(toolhost::Frame& frame, int milliseconds) {
    auto state = channel_.ReceiveSoon(frame);
    if (state != Channel::State::Nothing) return state;
    pollfd wait{.fd = line_.Get(), .events = POLLIN, .revents = 0};
    const bool ready = ::poll(&wait, 1, milliseconds) > 0;
    // A process that a library has started may hold the line open when the host is gone.
    const bool ended = !ready && (process_ <= 0 || HasEnded(process_));
    state = channel_.Receive(frame, false);
    return state == Channel::State::Nothing && ended ? Channel::State::Closed : state;
}

void ToolHostChild::Reap() {
    // A process that the kernel holds can't even be killed; that of a crashed disk is not waited for.
    if (!EndsSoon(process_)) return;
    int status = 0;
    rusage usage{};
    if (::wait4(process_, &status, WNOHANG, &usage) != process_) return;
    ending_ = Ending{status, static_cast<std::uint64_t>(usage.ru_maxrss) * 1024};
}

void ToolHostChild::Stop() {
    if (process_ <= 0 || ending_) return;
    EndProcessGroup(process_);
    Reap();
}

std::string ToolHostChild::End() {
    if (process_ <= 0) return "it could not be started";
    EndsSoon(process_);
    Stop();
    return DescribeEnd();
}

std::string ToolHostChild::DescribeEnd() const {
    if (!ending_) return "for a reason that the system does not tell";
    if (!WasRefusedMemory()) return DescribeStatus(ending_->Status);
    constexpr std::uint64_t megabyte = 1 << 20;
    return "out of memory (it may take " + std::to_string(memory_ / megabyte) + " MB), " +
           DescribeStatus(ending_->Status);
}

// The host notes what C++ libraries are refused; of others it shows by what they had.
bool ToolHostChild::WasRefusedMemory() const {
    char note = 0;
    return ::read(notes_.Get(), &note, 1) == 1 || ending_->InMemory > memory_ / 4 * 3;
}

}  // namespace platform::qt
