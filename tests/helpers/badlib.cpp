// A tool library that does what the option text of its run record orders, good or bad.
#include <unistd.h>

#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <stdexcept>
#include <string>
#include <thread>

extern "C" std::int32_t SendMessageA(std::uint32_t handle, std::uint32_t message, std::uintptr_t wparam,
                                     std::intptr_t lparam);

namespace {

constexpr std::size_t optionsOffset = 268;
constexpr std::size_t recordSize = 2060;

struct Run {
    char* Record;
    std::uint32_t Status;
    std::uint32_t Messages;
    std::string Argument;  // behind the order's word
    long Number;

    void Add(const char* line) const {
        SendMessageA(Messages, 384, 0, reinterpret_cast<std::intptr_t>(line));
    }
    void Tell(std::uint32_t number, const char* text) const {
        SendMessageA(Status, number, reinterpret_cast<std::uintptr_t>(text), 0);
    }
};

void Report(const Run& run) {
    run.Tell(101, "Fitting");
    run.Tell(102, "dropped");
    run.Tell(103, "pin 3");
    for (const std::uint32_t number : {104u, 105u, 104u, 104u, 106u}) SendMessageA(run.Status, number, 7, 7);
    run.Add("[0012ta] bad symbol");
}

void Flood(const Run& run) {
    for (long i = 0; i < run.Number; ++i) run.Add(("[0012ta] line " + std::to_string(i)).c_str());
}

void Box(const Run& run) {
    SendMessageA(run.Status, 384, reinterpret_cast<std::uintptr_t>("A"),
                 reinterpret_cast<std::intptr_t>("B"));
}

void OtherThread(const Run& run) {
    std::thread([&] { run.Add("from a thread"); }).join();
}

void Fork(const Run&) {
    if (::fork() == 0)
        ::sleep(600);  // a process that holds every descriptor of the host, longer than a test may take
    std::_Exit(4);
}

[[noreturn]] void Hang() {
    for (;;) ::pause();
}

// With a process of its own that is as deaf; tells its number.
[[noreturn]] void HangOn(const Run& run) {
    std::signal(SIGTERM, SIG_IGN);
    const pid_t child = ::fork();
    if (child != 0) run.Tell(101, std::to_string(child).c_str());
    Hang();
}

void Await(const Run& run) {
    const auto isThere = [&] { return ::access(run.Argument.c_str(), F_OK) == 0; };
    while (!isThere()) ::usleep(1000);
    run.Tell(101, "there");
    while (isThere()) ::usleep(1000);
}

constexpr std::size_t bite = 1 << 20;
void* volatile eaten;

[[noreturn]] void EatWithNew() {
    for (;;) eaten = new char[bite];
}

[[noreturn]] void EatWithMalloc() {
    for (;;) {
        eaten = std::malloc(bite);
        std::memset(eaten, 1, bite);
    }
}

void EatAndReport(const Run& run) {
    try {
        EatWithNew();
    } catch (const std::bad_alloc&) {
        run.Add("too large");
    }
}

void Obey(const std::string& order, const Run& run) {
    if (order == "report") Report(run);
    if (order == "flood") Flood(run);
    if (order == "box") Box(run);
    if (order == "thread") OtherThread(run);
    if (order == "fork") Fork(run);
    if (order == "hang") {
        for (long i = 0; i < run.Number; ++i) run.Tell(101, "before");
        Hang();
    }
    if (order == "deaf") HangOn(run);
    if (order == "await") Await(run);
    if (order == "chatter")
        for (;;) run.Tell(101, "on and on");
    if (order == "new") EatWithNew();
    if (order == "malloc") EatWithMalloc();
    if (order == "catch") EatAndReport(run);
    if (order == "slow") ::usleep(static_cast<useconds_t>(run.Number) * 1000);
    if (order == "bytes") run.Add("[0012ta] \xFF\x80 \xC3");
    if (order == "huge") run.Add(std::string(1'000'000, 'x').c_str());
    if (order == "junk") SendMessageA(run.Messages, 384, 5, 0);
    if (order == "stranger") SendMessageA(12345, 101, 0, 0);
    if (order == "number") SendMessageA(run.Messages, 999, 0xDEAD0000, 0xDEAD0000);
    if (order == "print") (void)!::write(STDOUT_FILENO, "noise\n", 6);
    if (order == "crash") *reinterpret_cast<volatile int*>(run.Record - run.Record) = 1;
    if (order == "throw") throw std::runtime_error("out of the library");
    if (order == "exit") std::exit(static_cast<int>(run.Number));
    if (order == "behind") std::memset(run.Record, 'z', recordSize + 1);
    if (order == "before") run.Record[-1] = 'z';
    if (order == "write") run.Record[recordSize - 1] = 'w';
}

}  // namespace

extern "C" std::int32_t TeskkVB(void* address) {
    Run run{.Record = static_cast<char*>(address), .Status = 0, .Messages = 0, .Argument = {}, .Number = 0};
    std::memcpy(&run.Status, run.Record, 4);
    std::memcpy(&run.Messages, run.Record + 4, 4);
    const std::string options = run.Record + optionsOffset;
    const auto blank = options.find(' ');
    if (blank != options.npos) run.Argument = options.substr(blank + 1);
    run.Number = std::atol(run.Argument.c_str());
    Obey(options.substr(0, blank), run);
    return -5;
}
