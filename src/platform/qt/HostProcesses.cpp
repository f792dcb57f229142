#include "platform/qt/HostProcesses.h"

#include <sys/wait.h>

#include <QDesktopServices>
#include <QSocketNotifier>
#include <QStandardPaths>
#include <QUrl>
#include <cerrno>
#include <csignal>
#include <optional>
#include <utility>

#include "base/PosixFile.h"
#include "base/RunTimeError.h"
#include "base/Text.h"
#include "platform/PathMap.h"
#include "platform/ToolLibraries.h"
#include "platform/qt/Guard.h"
#include "platform/qt/ProcessGroup.h"
#include "platform/qt/ToolWatch.h"

namespace platform::qt {
namespace {

constexpr std::size_t MaxLineLength = 32767;  // of a command line, in bytes
constexpr int ReapInterval = 500;             // ms
constexpr int PulseInterval = 500;            // ms between two looks whether the user loses patience
constexpr int LookInterval = 20;              // ms, where the end does not wake us
constexpr auto Blanks = " \t";

std::optional<std::string> FindProgram(const std::string& name, const FileSystem& files) {
    for (const char* extension : {"", ".EXE"})
        if (files.FileExists(name + extension)) return files.ToHostPath(name + extension);
    return std::nullopt;
}

std::optional<std::string> FindCommand(std::string_view name) {
    if (name.find_first_of("\\/:") != std::string_view::npos) return std::nullopt;
    const QString found =
        QStandardPaths::findExecutable(QString::fromUtf8(name.data(), qsizetype(name.size())));
    if (found.isEmpty()) return std::nullopt;
    return found.toStdString();
}

// The program of a line; `rest` becomes what follows it.
std::optional<std::string> TakeProgram(std::string_view line, const FileSystem& files,
                                       std::string_view& rest) {
    const bool quoted = line[0] == '"';
    std::size_t end = quoted ? line.find('"', 1) : line.find_first_of(Blanks);
    const std::string_view first =
        quoted ? line.substr(1, end == line.npos ? end : end - 1) : line.substr(0, end);
    rest = end == line.npos ? "" : line.substr(end + 1);
    if (auto program = FindProgram(std::string(first), files)) return program;
    while (!quoted && end != line.npos) {
        end = line.find_first_of(Blanks, line.find_first_not_of(Blanks, end));
        if (auto program = FindProgram(std::string(line.substr(0, end)), files)) {
            rest = end == line.npos ? "" : line.substr(end);
            return program;
        }
    }
    return FindCommand(first);
}

std::vector<std::string> Tokens(std::string_view text) {
    std::vector<std::string> tokens;
    bool inToken = false;
    bool inQuotes = false;
    for (const char c : text) {
        const bool isBlank = !inQuotes && (c == ' ' || c == '\t');
        if (!isBlank && !inToken) tokens.emplace_back();
        inToken = !isBlank;
        if (c == '"')
            inQuotes = !inQuotes;
        else if (!isBlank)
            tokens.back() += c;
    }
    return tokens;
}

// Wakes the event loop when a child ends, and now and then before that.
class Awakening {
  public:
    explicit Awakening(pid_t child) : end_(DescriptorOf(child)) {
        pulse_.start(end_.Get() < 0 ? LookInterval : PulseInterval);
        if (end_.Get() >= 0) notifier_.emplace(end_.Get(), QSocketNotifier::Read);
    }

  private:
    base::Descriptor end_;
    std::optional<QSocketNotifier> notifier_;
    QTimer pulse_;
};

}  // namespace

CommandLine ReadCommandLine(std::string_view line, const FileSystem& files) {
    const auto start = line.find_first_not_of(Blanks);
    if (start == line.npos || line.size() > MaxLineLength || line.find('\0') != line.npos)
        throw base::RunTimeError(base::errInvalidCall);
    std::string_view rest;
    const auto program = TakeProgram(line.substr(start), files, rest);
    if (!program) throw base::RunTimeError(base::errFileNotFound);
    CommandLine result{*program, Tokens(rest)};
    for (std::string& argument : result.Arguments)
        if (PathMap::IsDrivePath(argument)) argument = files.ToHostPath(argument);
    return result;
}

HostProcesses::HostProcesses(const FileSystem& files, const Clock& clock) : files_(files), clock_(clock) {
    struct sigaction action {};
    // Inherited from some launchers; it would take the children's ends from us.
    if (::sigaction(SIGCHLD, nullptr, &action) == 0 && action.sa_handler == SIG_IGN)
        std::signal(SIGCHLD, SIG_DFL);
    reaper_.setInterval(ReapInterval);
    On(&reaper_, &QTimer::timeout, &reaper_, [this] { Reap(); });
}

Processes::Id HostProcesses::StartBehind(const std::string& commandLine) {
    const Id process = Start(commandLine);
    focus_.KeepFrom(process);
    return process;
}

Processes::Id HostProcesses::Start(const std::string& commandLine) {
    CommandLine line = ReadCommandLine(commandLine, files_);
    pid_t process = 0;
    const int failed =
        ChildStart(ChildStart::Leads::Session).Run(line.Program, std::move(line.Arguments), process);
    if (failed != 0) base::RaiseErrno(failed, line.Program);
    running_.insert(static_cast<Id>(process));
    reaper_.start();
    return static_cast<Id>(process);
}

void HostProcesses::ShellExecute(const std::string&, const std::string& file, const std::string&,
                                 const std::string&) {
    const QString path = QString::fromStdString(files_.ToHostPath(file));
    if (QDesktopServices::openUrl(QUrl::fromLocalFile(path))) return;
    throw base::RunTimeError(base::errPathFileAccess, "The desktop has no program that opens " + file);
}

void HostProcesses::Wait(Id process) {
    if (!IsRunning(process)) return;
    ToolWatch watch(clock_);
    const Awakening awakening(static_cast<pid_t>(process));
    while (IsRunning(process)) {
        if (watch.GoOn(QEventLoop::WaitForMoreEvents)) continue;
        Stop(process);
        throw base::RunTimeError(errToolEnded, "it was stopped");
    }
}

// As the leader of a session it leads a group too.
void HostProcesses::Stop(Id process) {
    EndProcessGroup(static_cast<pid_t>(process));
    EndsSoon(static_cast<pid_t>(process));
    IsRunning(process);
}

bool HostProcesses::IsRunning(Id process) const {
    if (!running_.contains(process)) return false;
    const pid_t ended = ::waitpid(static_cast<pid_t>(process), nullptr, WNOHANG);
    if (ended == 0 || (ended < 0 && errno == EINTR)) return true;
    running_.erase(process);
    return false;
}

void HostProcesses::Reap() {
    const std::set<Id> known = running_;
    for (const Id process : known) IsRunning(process);
    if (running_.empty()) reaper_.stop();
}

}  // namespace platform::qt
