#include "platform/toolhost/Protocol.h"

#include <sched.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>

namespace platform::toolhost {
namespace {

constexpr std::size_t headerSize = 8;  // bytes: kind, size of the payload

}  // namespace

std::string Pack(std::initializer_list<std::uint32_t> numbers) {
    std::string bytes;
    for (const std::uint32_t number : numbers) {
        bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
    }
    return bytes;
}

std::uint32_t Unpacker::Number() {
    std::uint32_t number = 0;
    const std::string_view bytes = Text(sizeof number);
    if (bytes.size() == sizeof number) std::memcpy(&number, bytes.data(), sizeof number);
    return number;
}

std::string_view Unpacker::Text(std::size_t size) {
    const std::string_view text = rest_.substr(0, size);
    rest_.remove_prefix(text.size());
    return text;
}

bool Channel::Send(FrameKind kind, std::initializer_list<std::string_view> parts, bool wait) {
    std::size_t size = 0;
    for (const std::string_view part : parts) size += part.size();
    out_ = Pack({static_cast<std::uint32_t>(kind), static_cast<std::uint32_t>(size)});
    for (const std::string_view part : parts) out_ += part;
    std::string_view rest = out_;
    while (!rest.empty()) {
        const auto sent =
            ::send(descriptor_, rest.data(), rest.size(), MSG_NOSIGNAL | (wait ? 0 : MSG_DONTWAIT));
        if (sent < 0 && errno == EINTR) continue;
        if (sent <= 0) return false;
        rest.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
}

bool Channel::Take(Frame& frame, bool& broken) {
    const std::string_view bytes = std::string_view(in_).substr(taken_);
    if (bytes.size() < headerSize) return false;
    Unpacker header(bytes);
    frame.Kind = static_cast<FrameKind>(header.Number());
    const std::size_t size = header.Number();
    broken = size > MaxPayload;
    if (broken || header.Rest().size() < size) return false;
    frame.Payload = header.Text(size);
    taken_ += headerSize + size;
    if (taken_ == in_.size()) {
        in_.clear();
        taken_ = 0;
    }
    return true;
}

Channel::State Channel::Receive(Frame& frame, bool wait) {
    std::array<char, 65536> buffer;
    for (;;) {
        bool broken = false;
        if (Take(frame, broken)) return State::Ready;
        if (broken) return State::Closed;
        const auto got = ::recv(descriptor_, buffer.data(), buffer.size(), wait ? 0 : MSG_DONTWAIT);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) return State::Nothing;
        if (got <= 0) return State::Closed;
        in_.erase(0, taken_);
        taken_ = 0;
        in_.append(buffer.data(), static_cast<std::size_t>(got));
    }
}

Channel::State Channel::ReceiveSoon(Frame& frame) {
    constexpr auto patience = std::chrono::microseconds(100);
    const auto from = std::chrono::steady_clock::now();
    for (;;) {
        const State state = Receive(frame, false);
        if (state != State::Nothing || std::chrono::steady_clock::now() - from > patience) return state;
        ::sched_yield();  // the other end may need this core
    }
}

}  // namespace platform::toolhost
