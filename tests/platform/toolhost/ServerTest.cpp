#include "platform/toolhost/Server.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

namespace platform::toolhost {
namespace {

TEST(Server, AMessageBetweenTheCommandsIsDropped) {
    int ends[2] = {-1, -1};
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
    Channel program(ends[0]);
    program.Send(FrameKind::Acknowledge, {});  // or a library that does send would wait for it
    Server server(ends[1]);
    server.Relay(1, 101, "late", "");
    Frame frame;
    EXPECT_EQ(program.Receive(frame, false), Channel::State::Nothing);
    ::close(ends[0]);
    ::close(ends[1]);
}

}  // namespace
}  // namespace platform::toolhost
