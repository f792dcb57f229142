#include "launcher/HandOver.h"

#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

#include <csignal>

#include "base/PosixFile.h"
#include "base/RunTimeError.h"

namespace launcher {
namespace {

bool Connect(const base::Descriptor& socket, const std::string& name) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (name.size() >= sizeof address.sun_path) return false;
    name.copy(address.sun_path, name.size());
    return ::connect(socket.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

}  // namespace

Answer HandOver(const std::string& runTimeFolder, const std::string& path,
                std::chrono::milliseconds patience) {
    const base::Descriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    if (!Connect(socket, runTimeFolder + "/korvane.socket")) return Answer::Nobody;
    std::signal(SIGPIPE, SIG_IGN);
    timeval limit{};
    limit.tv_sec = static_cast<time_t>(patience.count() / 1000);
    limit.tv_usec = static_cast<suseconds_t>(patience.count() % 1000 * 1000);
    ::setsockopt(socket.Get(), SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
    try {
        base::WriteBytes(socket, path, path + '\n');
    } catch (const base::RunTimeError&) {
        return Answer::Refused;
    }
    char answer = '0';
    return ::recv(socket.Get(), &answer, 1, 0) == 1 && answer == '1' ? Answer::Taken : Answer::Refused;
}

}  // namespace launcher
