// Runs the closed libraries for the program that started it, so that they can't harm it.
#include <sys/prctl.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>

#include "platform/toolhost/Library.h"
#include "platform/toolhost/SentTexts.h"

#if defined(__SANITIZE_ADDRESS__)
// A library's crash is its own: it ends this process as it would without the sanitizer.
extern "C" const char* __asan_default_options() {
    return "handle_segv=0:handle_sigbus=0:handle_abort=0:handle_sigfpe=0:handle_sigill=0:detect_leaks=0";
}
#endif

namespace {

platform::toolhost::Library* theLibrary = nullptr;  // for SendMessageA, which is a plain C function

}  // namespace

extern "C" std::int32_t SendMessageA(std::uint32_t handle, std::uint32_t message, std::uintptr_t wparam,
                                     std::intptr_t lparam) {
    const auto [first, second] = platform::toolhost::SentTexts(message, wparam, lparam);
    theLibrary->Relay(handle, message, first, second);
    return 0;
}

// The one argument is the process id of the program.
int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("toolhost is started by Korvane and has no use of its own.\n", stderr);
        return 2;
    }
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != std::atoi(argv[1])) return 0;  // the program ended before the line above
    platform::toolhost::Library library(platform::toolhost::SocketDescriptor);
    theLibrary = &library;
    library.Serve();
    std::_Exit(0);  // no destructors of libraries: nobody is there to hear them
}
