#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "base/CommandLine.h"
#include "launcher/Folders.h"
#include "launcher/HandOver.h"
#include "launcher/UserTree.h"

// korvane: keeps the user's own installation, starts the program there, and hands files over to it, since its
// own command line has no effect.

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using launcher::Answer;

enum Exit : int { exitDone = 0, exitFailed = 1, exitUsage = 2 };

constexpr const char* usage = "usage: korvane [--where | --help | --version] [FILE...]\n";
constexpr const char* version = "korvane " KORVANE_VERSION "\n";
constexpr const char* help =
    R"(usage: korvane [OPTION] [FILE...]

Starts the desktop environment for programmable logic and opens the files in
it. If it runs already, its window comes forward and opens them. The first
start makes an installation of your own in your data folder; later ones bring
what is new. A file there that you have changed stays as it is, and the new
one is put beside it as NAME.new. The examples lie in your documents.

  --where     print the folders: the installation, your own one, the examples
  --help      print this
  --version   print the version

Exit codes: 0 done, 1 a file that is not there or your own installation could
not be made, 2 a wrong call.
)";

constexpr auto startPatience = 30s;
constexpr auto startPause = 50ms;
constexpr auto answerPatience = 10s;

bool HasDisplay() {
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        if (std::getenv(name) != nullptr) return true;
    return false;
}

// On the standard error stream, and in a box where nobody would read that.
int Fail(const launcher::Folders& folders, const std::string& sentence) {
    std::fprintf(stderr, "korvane: %s\n", sentence.c_str());
    if (!HasDisplay() || ::isatty(STDERR_FILENO) == 1) return exitFailed;
    const std::string box = folders.Installation + "/Korvane/tellbox";
    ::execl(box.c_str(), box.c_str(), sentence.c_str(), nullptr);
    return exitFailed;
}

bool HandOverAll(const launcher::Folders& folders, const std::vector<std::string>& files) {
    for (const std::string& file : files)
        if (launcher::HandOver(folders.RunTime, file, answerPatience) != Answer::Taken) return false;
    return true;
}

// Waits for the program that takes this process' place, and hands the files over to it. A grandchild: nobody
// has to wait for its end.
void HandOverLater(const launcher::Folders& folders, const std::vector<std::string>& files) {
    const pid_t child = ::fork();
    if (child > 0) {
        int status = 0;
        ::waitpid(child, &status, 0);
    }
    if (child != 0 || ::fork() != 0) {
        if (child == 0) ::_exit(exitDone);
        return;
    }
    const auto end = std::chrono::steady_clock::now() + startPatience;
    Answer first;
    while ((first = launcher::HandOver(folders.RunTime, files[0], answerPatience)) == Answer::Nobody) {
        if (std::chrono::steady_clock::now() > end) ::_exit(exitFailed);
        std::this_thread::sleep_for(startPause);
    }
    const bool isDone = first == Answer::Taken && HandOverAll(folders, {files.begin() + 1, files.end()});
    ::_exit(isDone ? exitDone : exitFailed);
}

// The program goes by the name that it is started under: that is the link in the user's tree.
int StartProgram(const launcher::Folders& folders) {
    const std::string program = folders.Program();
    ::execl(program.c_str(), program.c_str(), nullptr);
    return Fail(folders, program + " can't be started: " + std::strerror(errno) + ".");
}

void Tell(const launcher::Folders& folders, const launcher::Upkeep& upkeep) {
    if (upkeep.IsOfNewerVersion)
        std::fprintf(stderr, "korvane: %s was made by a newer version and stays as it is.\n",
                     folders.Tree.c_str());
    for (const std::string& file : upkeep.Beside)
        std::fprintf(stderr, "korvane: %s is yours and stays; the new one is %s.new\n", file.c_str(),
                     file.c_str());
}

int Run(const launcher::Folders& folders, const std::vector<std::string>& files) {
    std::error_code error;
    for (const std::string& file : files) {
        if (!fs::is_regular_file(file, error)) return Fail(folders, "There is no file " + file + ".");
        if (file.find('\n') != file.npos) return Fail(folders, "A name with a line end can't be opened.");
    }
    if (!files.empty()) {
        const Answer first = launcher::HandOver(folders.RunTime, files[0], answerPatience);
        if (first == Answer::Taken && HandOverAll(folders, {files.begin() + 1, files.end()})) return exitDone;
        if (first != Answer::Nobody) return Fail(folders, "Korvane runs, but does not answer.");
    }
    if (!fs::exists(folders.Installation + "/Korvane/Korvane", error))
        return Fail(folders, "There is no installation of Korvane in " + folders.Installation + ".");
    if (!HasDisplay()) return Fail(folders, "There is no display for a window.");
    try {
        Tell(folders, launcher::KeepUp(folders));
    } catch (const launcher::TreeError& failure) {
        if (!failure.HasTree) return Fail(folders, failure.what());
        std::fprintf(stderr, "korvane: %s\n", failure.what());
    }
    if (!files.empty()) HandOverLater(folders, files);
    return StartProgram(folders);
}

int Print(const std::string& text) { return base::WriteStandardOutput(text) ? exitDone : exitFailed; }

std::string Where(const launcher::Folders& folders) {
    return "installation  " + folders.Installation + "\nyour own      " + folders.Tree + "\nexamples      " +
           folders.Examples + "\n";
}

}  // namespace

int main(int count, char** values) {
    const launcher::Folders folders = launcher::FindFolders();
    std::vector<std::string> files;
    bool isOptions = true;
    for (int i = 1; i < count; ++i) {
        const std::string value = values[i];
        if (isOptions && value.starts_with('-')) {
            if (value == "--help") return Print(help);
            if (value == "--version") return Print(version);
            if (value == "--where") return Print(Where(folders));
            if (value != "--") return std::fputs(usage, stderr), exitUsage;
            isOptions = false;
        } else {
            files.push_back(fs::absolute(value).lexically_normal().string());
        }
    }
    return Run(folders, files);
}
