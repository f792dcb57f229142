#include "net/Child.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <iterator>
#include <string_view>

#include "base/PosixFile.h"
#include "base/RunTimeError.h"

namespace net {
namespace {

constexpr std::size_t MaxTold = 1u << 20;
constexpr rlim_t MaxMemory = rlim_t{4} << 30;
constexpr rlim_t MaxFile = rlim_t{256} << 20;
constexpr int CannotStart = 127;

void Limit(int what, rlim_t most) {
    struct rlimit limit {};
    if (::getrlimit(what, &limit) != 0) return;
    limit.rlim_cur = std::min(limit.rlim_max, most);
    ::setrlimit(what, &limit);
}

// In the child, which shares nothing with a thread: does not come back.
[[noreturn]] void Become(const std::vector<std::string>& command, const std::string& folder,
                         const std::string& output) {
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);  // whoever stops the front end stops it, too
    const auto lead = [](int stream, const char* path, int flags) {
        const int file = ::open(path, flags, 0600);
        if (file < 0 || ::dup2(file, stream) < 0) ::_exit(CannotStart);
        if (file != stream) ::close(file);
    };
    if (::chdir(folder.c_str()) != 0) ::_exit(CannotStart);
    lead(STDIN_FILENO, "/dev/null", O_RDONLY);
    lead(STDOUT_FILENO, output.c_str(), O_WRONLY | O_CREAT | O_TRUNC);
    lead(STDERR_FILENO, "errors", O_WRONLY | O_CREAT | O_TRUNC);
    ::setenv("LC_ALL", "C", 1);
    std::vector<char*> words;
    for (const std::string& word : command) words.push_back(const_cast<char*>(word.c_str()));
    words.push_back(nullptr);
    Limit(RLIMIT_AS, MaxMemory);  // of the program alone: what comes before it takes memory as well
    Limit(RLIMIT_FSIZE, MaxFile);
    Limit(RLIMIT_CORE, 0);
    ::execv(words[0], words.data());
    ::_exit(CannotStart);
}

// The beginning of what a child wrote.
std::string Told(const std::string& file) {
    try {
        base::Descriptor from;
        struct stat status {};
        base::OpenRegular(file, from, status);
        std::string text(MaxTold, '\0');
        const ssize_t got = ::read(from.Get(), text.data(), text.size());
        text.resize(got < 0 ? 0 : static_cast<std::size_t>(got));
        return text;
    } catch (const base::RunTimeError&) {
        return "";
    }
}

// False if the time passes first.
bool WaitFor(pid_t child, int seconds) {
    const base::Descriptor end(static_cast<int>(::syscall(SYS_pidfd_open, child, 0)));
    if (end.Get() < 0) return true;  // an old system: it waits without an end
    struct pollfd ready {
        end.Get(), POLLIN, 0
    };
    int got = 0;
    do got = ::poll(&ready, 1, seconds * 1000);
    while (got < 0 && errno == EINTR);
    return got != 0;
}

volatile std::sig_atomic_t group = 0;  // of the child that runs
volatile std::sig_atomic_t isStopped = 0;

// Whoever stops the front end while it waits ends the child and all that it started; the front end itself
// goes on to clear up behind it.
class StopScope {
  public:
    explicit StopScope(pid_t child) {
        group = child;
        isStopped = 0;
        struct sigaction stop {};
        stop.sa_handler = [](int) {
            isStopped = 1;
            ::kill(-group, SIGKILL);
        };
        for (std::size_t i = 0; i < std::size(signals); ++i) ::sigaction(signals[i], &stop, &before_[i]);
    }
    ~StopScope() {
        for (std::size_t i = 0; i < std::size(signals); ++i) ::sigaction(signals[i], &before_[i], nullptr);
    }
    StopScope(const StopScope&) = delete;
    StopScope& operator=(const StopScope&) = delete;

  private:
    static constexpr int signals[] = {SIGTERM, SIGINT, SIGHUP};
    struct sigaction before_[std::size(signals)]{};
};

}  // namespace

std::string FindProgram(const std::string& name) {
    const char* path = std::getenv("PATH");
    std::string_view rest = path != nullptr ? path : "/usr/bin:/bin";
    while (!rest.empty()) {
        const std::size_t cut = std::min(rest.find(':'), rest.size());
        const std::string file = std::string(rest.substr(0, cut)) + "/" + name;
        if (cut > 0 && ::access(file.c_str(), X_OK) == 0) return file;
        rest.remove_prefix(std::min(cut + 1, rest.size()));
    }
    return "";
}

ChildEnd RunChild(const std::vector<std::string>& command, const std::string& folder, int seconds,
                  const std::string& output) {
    ChildEnd end;
    const std::string out = output.empty() ? "output" : output;
    const pid_t child = ::fork();
    if (child < 0) return {ChildEnd::How::NotStarted, errno, "", ""};
    if (child == 0) Become(command, folder, out);
    ::setpgid(child, child);
    const StopScope scope(child);
    const bool inTime = WaitFor(child, seconds);
    ::kill(-child, SIGKILL);
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    end.Code = WIFSIGNALED(status) ? WTERMSIG(status) : WEXITSTATUS(status);
    if (isStopped != 0)
        end.Kind = ChildEnd::How::Stopped;
    else if (!inTime)
        end.Kind = ChildEnd::How::TookTooLong;
    else if (WIFSIGNALED(status))
        end.Kind = ChildEnd::How::Killed;
    else if (end.Code == CannotStart)
        end.Kind = ChildEnd::How::NotStarted;
    if (output.empty()) end.Output = Told(folder + "/" + out);
    end.Errors = Told(folder + "/errors");
    return end;
}

}  // namespace net
