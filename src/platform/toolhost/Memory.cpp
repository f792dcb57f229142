#include "platform/toolhost/Memory.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <new>

#include "platform/toolhost/Protocol.h"

#if defined(__SANITIZE_ADDRESS__)
#define KORVANE_WATCHED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KORVANE_WATCHED 1
#endif
#endif

namespace platform::toolhost {
namespace {

[[noreturn]] void Refuse() {
    (void)!::write(NotesDescriptor, "m", 1);
    throw std::bad_alloc();
}

void BeFirstToGo() {
    const int file = ::open("/proc/self/oom_score_adj", O_WRONLY | O_CLOEXEC);
    if (file < 0) return;
    (void)!::write(file, "1000", 4);
    ::close(file);
}

}  // namespace

void LimitMemory([[maybe_unused]] std::uint64_t bytes) {
    BeFirstToGo();
    std::set_new_handler(Refuse);
#if !defined(KORVANE_WATCHED)  // the sanitizer reserves far more than it takes
    const rlimit limit{bytes, bytes};
    ::setrlimit(RLIMIT_DATA, &limit);
#endif
}

}  // namespace platform::toolhost
