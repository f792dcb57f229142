#include "platform/toolhost/Server.h"

#include <dlfcn.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <thread>

#include "platform/toolhost/GuardedRecord.h"

namespace platform::toolhost {

void Server::Serve() {
    Frame frame;
    while (channel_.Receive(frame, true) == Channel::State::Ready) Obey(frame);
}

void Server::Leave() {
    if (busy_) ::kill(-::getpid(), SIGKILL);
    ::_exit(0);  // no destructors of libraries: nobody is there to hear them
}

void Server::LeaveWithTheProgram() {
    sigset_t all;
    sigset_t before;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &before);  // signals are for the libraries
    std::thread([this] {
        pollfd line{.fd = descriptor_, .events = POLLRDHUP, .revents = 0};
        while (::poll(&line, 1, -1) < 0 && errno == EINTR) {
        }
        Leave();
    }).detach();
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

void Server::Obey(const Frame& frame) {
    {
        const std::lock_guard lock(line_);
        busy_ = true;
    }
    Unpacker arguments(frame.Payload);
    switch (frame.Kind) {
        case FrameKind::Load: {
            const std::uint32_t module = arguments.Number();
            Load(module, std::string(arguments.Rest()));
            break;
        }
        case FrameKind::Free:
            Free(arguments.Number());
            break;
        case FrameKind::Call:
            Call(arguments);
            break;
        default:
            break;
    }
}

void Server::Answer(FrameKind kind, std::initializer_list<std::string_view> parts) {
    const std::lock_guard lock(line_);
    busy_ = false;
    channel_.Send(kind, parts);
}

void Server::Load(std::uint32_t module, const std::string& path) {
    void* handle = ::dlopen(path.c_str(), RTLD_NOW | RTLD_GLOBAL);
    if (handle != nullptr) modules_[module] = handle;
    Answer(FrameKind::Loaded, {Pack({handle != nullptr ? 1u : 0u})});
}

void Server::Free(std::uint32_t module) {
    const auto found = modules_.find(module);
    if (found != modules_.end()) {
        ::dlclose(found->second);
        modules_.erase(found);
    }
    Answer(FrameKind::Freed, {});
}

void Server::Call(Unpacker& arguments) {
    const auto found = modules_.find(arguments.Number());
    const std::size_t size = arguments.Number();
    const std::string entry(arguments.Text(size));
    void* address = found == modules_.end() ? nullptr : ::dlsym(found->second, entry.c_str());
    if (address == nullptr) {
        Answer(FrameKind::NoEntry, {});
        return;
    }
    const GuardedRecord record(arguments.Rest());
    const auto function = reinterpret_cast<std::int32_t (*)(void*)>(address);
    const std::int32_t result = function(record.Address());
    Answer(FrameKind::Returned,
           {Pack({static_cast<std::uint32_t>(result), record.IsIntact() ? 1u : 0u}), record.Bytes()});
}

bool Server::Hear(Frame& answer) {
    auto state = channel_.ReceiveSoon(answer);
    if (state == Channel::State::Nothing) state = channel_.Receive(answer, true);
    return state == Channel::State::Ready;
}

void Server::Relay(std::uint32_t window, std::uint32_t number, std::string_view first,
                   std::string_view second) {
    const std::lock_guard lock(line_);
    if (!busy_) return;
    const auto sizes = {window, number, static_cast<std::uint32_t>(first.size()),
                        static_cast<std::uint32_t>(second.size())};
    Frame answer;
    if (!channel_.Send(FrameKind::Message, {Pack(sizes), first, second}) || !Hear(answer)) {
        Leave();
    }
}

}  // namespace platform::toolhost
