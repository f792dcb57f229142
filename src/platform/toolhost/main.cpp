// Runs the closed libraries for the program that started it, so that they can't harm it.
#include <cstdio>
#include <cstdlib>

#include "platform/toolhost/Memory.h"
#include "platform/toolhost/SentTexts.h"
#include "platform/toolhost/Server.h"

#if defined(__SANITIZE_ADDRESS__)
// A library's crash is its own: it ends this process as it would without the sanitizer.
extern "C" const char* __asan_default_options() {
    return "handle_segv=0:handle_sigbus=0:handle_abort=0:handle_sigfpe=0:handle_sigill=0:detect_leaks=0";
}
#endif

namespace {

platform::toolhost::Server* theServer = nullptr;  // for SendMessageA, which is a plain C function

}  // namespace

extern "C" std::int32_t SendMessageA(std::uint32_t handle, std::uint32_t message, std::uintptr_t wparam,
                                     std::intptr_t lparam) {
    const auto [first, second] = platform::toolhost::SentTexts(message, wparam, lparam);
    theServer->Relay(handle, message, first, second);
    return 0;
}

// The one argument is the number of bytes that this process may take.
int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("toolhost is started by Korvane and has no use of its own.\n", stderr);
        return 2;
    }
    platform::toolhost::LimitMemory(std::strtoull(argv[1], nullptr, 10));
    platform::toolhost::Server server(platform::toolhost::SocketDescriptor);
    theServer = &server;
    server.LeaveWithTheProgram();
    server.Serve();
    server.Leave();
}
